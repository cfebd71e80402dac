#pragma once

#include "grid/model/grid_model.h"

namespace talvix::grid {

/// The layout that a user makes: order, widths and visibility of the columns, sorting and groups.
std::u16string SaveLayout(const GridModel& model);
/// Gives the grid a saved layout. Columns that the layout does not name keep their state behind
/// those that it names; columns that the grid does not have are passed over. A text that is no
/// layout raises Failure and changes nothing.
void LoadLayout(GridModel& model, std::u16string_view text);

/// Everything that a container keeps of a grid: switches, columns with their design, layout.
std::u16string SaveState(const GridModel& model);
/// Columns that are missing are added. A text that is no state raises Failure and changes nothing.
void LoadState(GridModel& model, std::u16string_view text);

} // namespace talvix::grid
