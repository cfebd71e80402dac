#pragma once

#include "core/attachment.h"

namespace talvix {

/// Has the user enter a new document and adds it: a file, copied into the project folder or linked
/// where it lies, or an Internet link.
void NewDMSItem(Attachment& attachment);
/// The same, but only for a project with a folder.
void btnNewDocument_Click(Attachment& attachment);
/// Has the user change the current document, when it is the only one selected or none is. A file
/// keeps its place.
void btnChangeDocument_Click(Attachment& attachment);

} // namespace talvix
