#pragma once

#include "core/attachment.h"

#include <string_view>

namespace talvix {

/// Shows the project folder in the system's file manager; nothing without one.
void btnOpenFolder_Click(Attachment& attachment);
/// Has the user choose the project folder and creates its sub-folders.
void btnDMSSetStore_Click(Attachment& attachment);
/// Asks, then forgets the project folder. Nothing on disk changes.
void btnDMSDeletetStore_Click(Attachment& attachment);

/// Creates a folder and every missing parent. False at the first one that cannot be created; those
/// created before stay.
bool MkDirs(Files& files, Trace& trace, std::u16string_view pathIn);

/// Offers to create the project folder that is not there.
void CreateProjectFolderOnRequest(Attachment& attachment);

} // namespace talvix
