#pragma once

#include "core/attachment.h"

#include <string>

namespace talvix {

/// The item's user property that holds the project folder.
inline constexpr const char16_t* kFolderProperty = u"Speicherort Dokumente";

/// The project folder without surrounding blanks, "" when none is stored. The silent flag of an
/// import is cleared when no folder is stored.
std::u16string GetProjectFolder(Attachment& attachment);

} // namespace talvix
