#pragma once

#include "platform/files.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace talvix {

/// Folders of which several files were missing in one pass. The search for a name that a folder
/// does not hold, or holds in other case, goes through all of it on many file systems; the folder's
/// list answers for all of them at once.
class ListedFolders {
public:
    explicit ListedFolders(Files& files) : files_(files) {}

    struct Answer {
        std::optional<FileFacts> facts; ///< nothing for a missing file
    };
    /// What the list of the path's folder says; nothing where only the system can tell: folders
    /// that were not listed, links, and names that systems take in other forms than they are
    /// written (other than ASCII, short names, closing dots and blanks).
    std::optional<Answer> Ask(std::u16string_view path) const;
    /// A file was missing. The fourth one of a folder has the folder listed.
    void NoteMissing(std::u16string_view path);

private:
    struct Folder {
        int missing = 0;
        bool isListed = false;
        std::unordered_map<std::u16string, std::optional<FileFacts>>
            names; ///< by the name in small letters
    };
    void List(std::u16string_view folder, Folder& into);

    Files& files_;
    std::unordered_map<std::u16string, Folder> folders_; ///< by the path in small ASCII letters
};

} // namespace talvix
