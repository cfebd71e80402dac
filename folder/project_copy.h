#pragma once

#include "core/attachment.h"

#include <optional>
#include <string>

namespace talvix {

/// Where a document has been placed.
struct PlacedDocument {
    std::u16string path;     ///< in network form
    bool isNumbered = false; ///< the first name was taken
};

/// Copies a file with the shell's own dialogs. 0 for success; another number when it failed or the
/// user ended it.
std::int16_t CopyFileShell(Shell& shell, std::u16string_view source, std::u16string_view target);

/// Puts a copy of `source` into `folder` under `name` or the next free number of it. Nothing that
/// is there is ever replaced, and under the final name there is a whole document or none. Nothing
/// when the copy failed.
std::optional<PlacedDocument> PlaceCopy(Attachment& attachment, const std::u16string& source,
                                        const std::u16string& folder, const std::u16string& name);

/// True for the name of a copy that is on its way to its final name.
bool IsUnfinishedCopy(std::u16string_view name);

} // namespace talvix
