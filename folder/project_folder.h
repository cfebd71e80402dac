#pragma once

#include "core/attachment.h"

#include <string>

namespace talvix {

/// The item's user property that holds the project folder.
inline constexpr const char16_t* kFolderProperty = u"Speicherort Dokumente";

/// The project folder without surrounding blanks. Where none is stored it is derived by the rules
/// and the user is asked, but not in a silent import, whose flag this uses up. "" when there is
/// none in the end.
std::u16string GetProjectFolder(Attachment& attachment);

bool ProjectFolderExists(Attachment& attachment);

} // namespace talvix
