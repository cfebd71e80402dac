#pragma once

#include "core/attachment.h"
#include "core/document_record.h"

#include <optional>

namespace talvix {

/// An Outlook item to be filed, and what is to be done with it.
struct ItemFiling {
    Value item; ///< Nothing, Empty, Null or Missing for none
    std::int32_t operation = -1;
    bool writeToBody = false;
    std::u16string subfolder;
};

/// Appends one document row; the list is not persisted then. With an Outlook item, that item is
/// filed instead. Nothing is added while the project has no folder.
void AddDMSItem(Attachment& attachment, const DocumentRecord& record, const ItemFiling& filing);

/// Puts the rows that were added into the grid's order and shows the last one. Nothing is raised.
void PlaceNewRow(Trace& trace, const Grid& grid);

/// Adds a file that lies in its final place. A date of 0 becomes the current date and time; without
/// an action's number the row gets that of the action which the dialog's list shows.
void AddFile(Attachment& attachment, std::u16string_view physicalStore1,
             std::u16string_view subject, std::u16string_view status,
             std::u16string_view longDescription, Date creationDate = {},
             Date modificationDate = {}, const std::optional<std::u16string>& action = {});

} // namespace talvix
