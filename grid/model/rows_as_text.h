#pragma once

#include "grid/model/grid_model.h"

#include <string>
#include <vector>

namespace talvix::grid {

/// The data rows in display order, one line each, columns by position. Dates stand as
/// "2003-12-31 14:05:00", numbers in plain form with a point; texts that would be read back as
/// something else are quoted, Empty is nothing at all.
std::u16string SaveRows(GridModel& model, std::u16string_view separator);

/// Appends a row for every line. Fields become numbers or dates where the column is of that type
/// and the field can be read so, else texts. A line with more fields than columns raises Failure,
/// and then no row has been added.
void LoadRows(GridModel& model, std::u16string_view text, std::u16string_view separator);

/// The selected data rows as a table that spreadsheets take: a line of captions, then the visible
/// columns as they are shown, fields between tabs. "" when no data row is selected.
std::u16string SelectedRowsAsText(GridModel& model);
/// What stands in the file column of the selected data rows; nothing without a file column.
std::vector<std::u16string> SelectedFiles(GridModel& model);

} // namespace talvix::grid
