#pragma once

#include "core/attachment.h"

namespace talvix {

/// Finds the grid on the form page "Dokumente", connects `sink` to its events and sets up its
/// columns and options. Without the page or the grid, the grid held so far stays and no step
/// succeeds. A second set-up leaves fifteen columns and one connection.
void SetUpGrid(Attachment& attachment, std::shared_ptr<EventSink> sink, Subscription& events);
/// Gives the grid the system image list of small icons.
void AssignImageList(Attachment& attachment);
/// Brings the whole grid up to date.
void RefreshGrid(Attachment& attachment);
/// Assigns the image list once more on the one combination that needs it: an Outlook before
/// version 10 on "Windows 2000".
void CheckVersion(Attachment& attachment);

} // namespace talvix
