#pragma once

#include "grid/model/grid_model.h"
#include "platform/win32/com/com_ptr.h"

#include <windows.h>

#include <objidl.h>
#include <string>
#include <vector>

namespace talvix::grid {

/// Rows on their way out of the grid: as a table of text, and as the files that they stand for.
struct RowData {
    std::u16string text;
    std::vector<std::u16string> files; ///< paths that are there, in full
    bool IsEmpty() const { return text.empty() && files.empty(); }
};

/// The selected rows of a grid, with those of their files that are there.
RowData SelectedData(GridModel& model);
/// Puts rows onto the clipboard; false when somebody else holds it.
bool CopyToClipboard(HWND owner, const RowData& rows);
/// Rows as data for a drop.
ComPtr<IDataObject> MakeDataObject(const RowData& rows);
/// Lets the user drag rows to another window, which may copy them and nothing else.
void DragOut(const RowData& rows);

} // namespace talvix::grid
