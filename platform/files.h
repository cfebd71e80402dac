#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace talvix {

struct FileFacts {
    bool isFolder = false;
    std::int64_t length = 0; ///< bytes; 0 for folders
    bool operator==(const FileFacts&) const = default;
};

struct ListedFile {
    std::u16string name; ///< without path
    /// What the folder's list says of the file; nothing for a link, whose list entry tells of the
    /// link itself.
    std::optional<FileFacts> facts;
    bool operator==(const ListedFile&) const = default;
};

/// What lies in a folder, in the order in which the file system lists it.
struct FolderListing {
    std::vector<ListedFile> files;
    std::vector<std::u16string> folders;
    bool isWhole = true; ///< false when the file system stopped before the end
};

enum class Renamed { Done, Taken };

/// The file system.
class Files {
public:
    virtual ~Files() = default;

    /// Existence, kind and length in one query; nothing for a path that leads nowhere, cannot be
    /// reached, is empty or holds wildcards. Paths that begin with "\\?\" are taken as well.
    virtual std::optional<FileFacts> Query(std::u16string_view path) = 0;
    /// The one form that all forms of a path have in common: absolute, with "\" for "/", each "."
    /// and ".." resolved, no doubled "\", no dots or blanks at its end, and no closing "\" but a
    /// drive's. Upper and lower case stay. "" for "". Nothing need be there.
    virtual std::u16string FullPath(std::u16string_view path) = 0;
    /// Everything that lies directly in a folder. Failure when the folder cannot be listed.
    virtual FolderListing List(std::u16string_view folder) = 0;
    /// Creates one folder, not its parents. Failure when it is there already or cannot be created.
    virtual void CreateFolder(std::u16string_view path) = 0;
    /// Gives a file another name without ever replacing anything: Taken when the name is in use, by
    /// a folder too. Failure for every other reason.
    virtual Renamed Rename(std::u16string_view from, std::u16string_view to) = 0;
    /// Removes a file. Failure when it cannot be removed or is not there.
    virtual void Remove(std::u16string_view path) = 0;
    /// The folder for temporary files, without a closing "\\".
    virtual std::u16string TemporaryFolder() = 0;
    /// The process's current folder.
    virtual std::u16string CurrentFolder() = 0;
};

} // namespace talvix
