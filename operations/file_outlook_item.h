#pragma once

#include "operations/add_document.h"

namespace talvix {

/// Turns an Outlook item or its attachments into files of the project folder, as the filing's
/// operation says, and adds their rows.
void FileOutlookItem(Attachment& attachment, const DocumentRecord& record,
                     const ItemFiling& filing);

} // namespace talvix
