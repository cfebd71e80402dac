#pragma once

#include "grid/model/grid_model.h"

#include <string>

namespace talvix::grid {

/// The data rows in display order, one line each, columns by position. Dates stand as
/// "2003-12-31 14:05:00", numbers in plain form with a point; texts that would be read back as
/// something else are quoted, Empty is nothing at all.
std::u16string SaveRows(GridModel& model, std::u16string_view separator);

/// Appends a row for every line. Fields become numbers or dates where the column is of that type
/// and the field can be read so, else texts. A line with more fields than columns raises Failure,
/// and then no row has been added.
void LoadRows(GridModel& model, std::u16string_view text, std::u16string_view separator);

} // namespace talvix::grid
