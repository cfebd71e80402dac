#pragma once

#include "platform/win32/owned.h"
#include "workbench/host/project.h"

#include <string>
#include <string_view>
#include <vector>

namespace talvix::workbench {

/// An earlier version of a project file.
struct ProjectVersion {
    std::u16string path;
    std::u16string savedAt; ///< local time, "2026-11-21 09:30:05"
};

/// The earlier versions that are kept beside a project file, the newest first.
std::vector<ProjectVersion> VersionsOf(std::u16string_view projectPath);

/// Where an open project is kept: its file, claimed for one writer at a time. The claim is a hidden
/// file beside it ("NAME.~offen") that the system takes away with its program, however that ends.
class ProjectPlace {
public:
    /// A project that has no file yet.
    ProjectPlace() = default;
    /// Claims a file for writing, whether it is there or not. Failure with kClaimed as its number
    /// and a German text that names who has it, when somebody else does.
    static ProjectPlace Claim(std::u16string_view path);
    /// A file that is only read.
    static ProjectPlace ForReading(std::u16string_view path);

    static constexpr std::int32_t kClaimed =
        static_cast<std::int32_t>(0x80070021); ///< lock violation

    const std::u16string& Path() const { return path_; } ///< "" without a file
    bool MayWrite() const { return static_cast<bool>(claim_); }

    /// Writes the whole project into a temporary file beside its own, flushed, keeps what stood in
    /// the file as an earlier version, and puts the new one in its place in one step. On Failure
    /// (German) the file is as it was.
    void Save(const host::Project& project) const;

    static constexpr std::size_t kMostVersions = 30;

private:
    std::u16string path_;
    OwnedFile claim_;
};

} // namespace talvix::workbench
