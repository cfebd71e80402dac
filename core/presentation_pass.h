#pragma once

#include "automation/trace.h"
#include "core/listed_folders.h"
#include "platform/platform.h"

#include <map>
#include <optional>
#include <string>

namespace talvix {

/// What one pass over the rows asks the system only once: the setting for file icons, icon and type
/// name per class of file, and network roots that do not answer.
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
    /// Place of the small icon in the system image list, from 0.
    std::int32_t IconIndex(std::u16string_view path);
    std::u16string TypeName(std::u16string_view path);

private:
    /// What files of one class have in common; nothing is remembered of a class with own icons.
    struct FileClass {
        bool hasOwnIcon = false;
        std::optional<std::int32_t> icon;
        std::optional<std::u16string> typeName;
    };
    FileClass& ClassOf(std::u16string_view path);

    Platform& platform_;
    Trace& trace_;
    std::optional<bool> iconsDisabled_;
    std::map<std::u16string, FileClass> classes_;
    /// The same by the extension as it is written, which is found without upper-casing it.
    std::map<std::u16string, FileClass*, std::less<>> spellings_;
    std::map<std::u16string, bool> rootAnswers_;
    ListedFolders listed_;
    std::u16string expectedPath_;
    std::optional<FileFacts> expected_;
};

} // namespace talvix
