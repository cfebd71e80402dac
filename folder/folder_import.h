#pragma once

#include "core/attachment.h"

namespace talvix {

/// Adds every file of the project folder and its sub-folders that the list does not hold yet, by
/// its full path, and has the list persisted when any was added. Pending events run once per
/// sub-folder; a set `stopImport` ends the import after the current file.
void ImportProjectFolder(Attachment& attachment);

/// True when a row holds `path` as its "PhysicalStore1", compared without case.
bool IsFileInList(Attachment& attachment, std::u16string_view path);

} // namespace talvix
