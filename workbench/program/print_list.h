#pragma once

#include "automation/culture.h"
#include "workbench/host/project.h"

#include <windows.h>

namespace talvix::workbench {

/// A sheet of paper: its printable size and resolution in dots.
struct Sheet {
    SIZE size;
    int dpi;
};

/// Draws the document list on sheets, with the project, captions and page numbers on each.
class ListPrinter {
public:
    ListPrinter(const host::Project& project, const Culture& culture);
    /// Draws as many rows as fit, from `first`; the row that the next sheet begins with. A row
    /// taller than a sheet is cut at its end.
    std::size_t DrawSheet(HDC dc, const Sheet& sheet, std::size_t first, int number) const;
    std::size_t Rows() const { return project_.documents.size(); }

private:
    const host::Project& project_;
    const Culture& culture_;
};

/// Asks for a printer and prints the list; nothing when cancelled. Failure (German) when it cannot
/// be printed.
void PrintList(HWND owner, const host::Project& project, const Culture& culture);

} // namespace talvix::workbench
