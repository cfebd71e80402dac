#pragma once

#include "core/attachment.h"

#include <string>
#include <string_view>

namespace talvix {

class ItemDialog;

/// Fills the dialog's action list from the host's actions grid and chooses the action of that
/// number; "Keiner" for "-1" and "". Nothing while somebody else has the dialog.
void FillActionCombo(Attachment& attachment, std::u16string_view selectedId);
/// The same for who has the dialog.
void FillActions(Attachment& attachment, ItemDialog& dialog, std::u16string_view selectedId);

/// The number of the chosen action, "-1" for none.
std::u16string SelectedActionNumber(Attachment& attachment);

/// The number in an entry's text, "-1" for "Keiner" and for what is no entry.
std::u16string ActionNumberIn(std::u16string_view entry);

} // namespace talvix
