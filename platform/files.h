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
};

/// Names without path, in the order in which the file system lists them.
struct FolderListing {
    std::vector<std::u16string> files;
    std::vector<std::u16string> folders;
};

/// The file system.
class Files {
public:
    virtual ~Files() = default;

    /// Existence, kind and length in one query; nothing for a path that leads nowhere, cannot be
    /// reached, is empty or holds wildcards.
    virtual std::optional<FileFacts> Query(std::u16string_view path) = 0;
    /// Everything that lies directly in a folder. Failure when the folder cannot be listed.
    virtual FolderListing List(std::u16string_view folder) = 0;
};

} // namespace talvix
