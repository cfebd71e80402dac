#pragma once

#include "core/attachment.h"

namespace talvix {

/// Commands of the grid's context menu. Those of the columns follow from kFirstColumn on.
namespace menu_command {
inline constexpr std::int32_t kOpen = 1;
inline constexpr std::int32_t kDelete = 2;
inline constexpr std::int32_t kProperties = 3;
inline constexpr std::int32_t kChange = 4;
inline constexpr std::int32_t kReadFolder = 5;
inline constexpr std::int32_t kView = 6;
inline constexpr std::int32_t kFirstColumn = 7;
inline constexpr std::int32_t kLastColumn = 19;
} // namespace menu_command

/// Builds the menu anew; a former one goes.
void BuildContextMenu(Attachment& attachment);
/// Brings the check marks of the entries 4 to 16 up to date.
void UpdateCheckMarks(Attachment& attachment);
/// Carries out what was chosen; 0 is nothing.
void DispatchCommand(Attachment& attachment, std::int32_t command);

} // namespace talvix
