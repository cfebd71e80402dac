#pragma once

#include "automation/trace.h"
#include "core/listed_folders.h"
#include "platform/platform.h"

#include <map>
#include <optional>
#include <string>

namespace talvix {

/// What one pass over the rows asks the system only once: the setting for file icons and network
/// roots that do not answer. Icon and type name are asked once per class of file.
class PresentationPass {
public:
    PresentationPass(Platform& platform, Trace& trace)
        : platform_(platform), trace_(trace), listed_(platform.files) {}

    bool FileIconsDisabled();
    /// The file's existence and length; nothing for a missing file, and for every path below a
    /// network root that did not answer once in this pass.
    std::optional<FileFacts> Query(std::u16string_view path);
    /// Tells what the list of its folder says of a file that is about to be presented: the next
    /// query of this path is answered from it.
    void Expect(std::u16string_view path, const FileFacts& facts);
    /// Place of the small icon of a file that is there, in the system image list from 0.
    std::int32_t IconIndex(std::u16string_view path);
    /// The type of a file that is there.
    std::u16string TypeName(std::u16string_view path);

private:
    Platform& platform_;
    Trace& trace_;
    std::optional<bool> iconsDisabled_;
    std::map<std::u16string, bool> rootAnswers_;
    ListedFolders listed_;
    std::u16string expectedPath_;
    std::optional<FileFacts> expected_;
};

} // namespace talvix
