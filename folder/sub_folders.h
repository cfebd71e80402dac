#pragma once

#include "core/attachment.h"

#include <string>
#include <vector>

namespace talvix {

/// True when the setting "DOCUMENTS/SUB_ACTIVE" reads exactly "True".
bool SubFoldersActive(Attachment& attachment);

/// The entries of the setting "DOCUMENTS/SUB_LIST" as they stand between its commas; none without
/// the setting.
std::vector<std::u16string> GetSubFolderList(Attachment& attachment);

/// Creates every missing level of `path`, which gets a closing "\". Levels that cannot be created
/// are passed over.
void CreateSubFolder(Files& files, Trace& trace, std::u16string& path);

} // namespace talvix
