#pragma once

#include "core/attachment.h"

#include <optional>
#include <string>

namespace talvix {

/// A file that is to become a document of the project folder.
struct DocumentCopy {
    std::u16string source;
    std::u16string subject; ///< "" for the name that the file gets
    std::u16string status;
    std::u16string longDescription;
    std::u16string fileName; ///< "" for the source's own name
    Date creationDate;
    Date modificationDate;
    std::u16string subFolder; ///< below the project folder; "" or "\" for the folder itself
    std::optional<std::u16string> action{}; ///< its number; nothing for the one that is chosen
};

/// Copies the file into the project folder under a free name and adds its row. A copy that fails or
/// is ended by the user adds nothing.
void CopyToProjectFolder(Attachment& attachment, const DocumentCopy& copy);

} // namespace talvix
