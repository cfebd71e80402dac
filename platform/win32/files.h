#pragma once

#include "platform/files.h"

namespace talvix {

class Win32Files : public Files {
public:
    std::optional<FileFacts> Query(std::u16string_view path) override;
    std::u16string FullPath(std::u16string_view path) override;
    FolderListing List(std::u16string_view folder) override;
    void CreateFolder(std::u16string_view path) override;
    Renamed Rename(std::u16string_view from, std::u16string_view to) override;
    void Remove(std::u16string_view path) override;
    std::u16string TemporaryFolder() override;
    std::u16string CurrentFolder() override;
};

/// The path in the form that Windows takes beyond 260 characters, where it is that long and
/// absolute; else the path itself.
std::u16string ExtendedPath(std::u16string_view path);

} // namespace talvix
