#pragma once

#include "grid/model/grid_model.h"

#include <windows.h>

namespace talvix::grid {

/// The menu of a column's heading: sorting, grouping, fitting widths. It asks hosts by the same
/// events as the mouse does.
void ShowHeaderMenu(GridModel& model, HWND owner, std::size_t column);

} // namespace talvix::grid
