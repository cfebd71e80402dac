#pragma once

#include "automation/late.h"

#include <string>

namespace talvix::workbench {

/// Gives the grid the layout that the user left behind last time; the grid's layout then, to be
/// compared with at the end. A remembered text that is no layout is passed over.
std::u16string RestoreLayout(const Late& grid);
/// Remembers the grid's layout for the user, where it is another than `restored`.
void RememberLayout(const Late& grid, const std::u16string& restored);

} // namespace talvix::workbench
