#pragma once

#include "automation/late.h"

#include <optional>
#include <string>
#include <vector>

namespace talvix::workbench {

/// "1 Dokument", "12 Dokumente".
std::u16string DocumentsText(std::size_t count);

/// How many documents are selected in a grid, group headings apart, as a text for the status bar; a
/// large selection in a grouped list is not counted to its end.
std::u16string SelectionText(const Late& grid);

/// One column's texts of the selected documents, in the shown order; empty ones are left out.
std::vector<std::u16string> SelectedTexts(const Late& grid, std::u16string_view column);

} // namespace talvix::workbench
