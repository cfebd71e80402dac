#pragma once

#include "automation/culture.h"
#include "workbench/host/project.h"

#include <string>
#include <vector>

namespace talvix::host {

/// The document list for a table calculation: fields divided by ";", quoted where they hold one,
/// lines ended by CR LF, a heading first. Fields that a program would take for a formula get a
/// leading apostrophe.
std::u16string ListAsCsv(const Project& project, const Culture& culture);

/// The columns of a printed list, with the share of its width that each gets.
struct PrintColumn {
    std::u16string caption;
    int share;
};
std::vector<PrintColumn> PrintColumns();
/// A document's texts in these columns.
std::vector<std::u16string> PrintedRow(const Document& document, const Culture& culture);

/// The document list as a printable page.
std::u16string ListAsHtml(const Project& project, const Culture& culture);

} // namespace talvix::host
