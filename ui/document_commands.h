#pragma once

#include "core/attachment.h"

namespace talvix {

/// Stands for all selected rows where a document's number is asked for.
inline constexpr std::int32_t kSelectedDocuments = -1;

/// Opens the document of that number, or all selected ones: more than five only after a question.
/// Files that are not there are passed over.
void OpenDocument(Attachment& attachment, std::int32_t id);

/// Asks, then takes the selected documents out of the list and has it persisted. Nothing on disk
/// changes.
void DeleteDMSItem(Attachment& attachment);

/// Hands the list as XML to the export library.
void btnExportDocuments_Click(Attachment& attachment);

/// Shows the properties sheet of the current row's file; nothing for other kinds of documents.
void ShowFileProperties(Attachment& attachment);

} // namespace talvix
