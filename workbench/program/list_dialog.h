#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace talvix::workbench {

/// A dialog with a table to look at or to choose from.
struct ListDialog {
    struct Column {
        std::u16string caption;
        int width; ///< at 96 dpi
    };
    std::u16string title;
    std::u16string hint; ///< one or two lines above the table
    std::vector<Column> columns;
    std::vector<std::vector<std::u16string>> rows;
    /// The last one closes the dialog, and so do Escape and the close box. Those before it stand in
    /// the order of their use; the first is the default.
    std::vector<std::u16string> buttons;
    bool needsSelection = false; ///< the first button wants exactly one selected row
};

struct ListAnswer {
    std::size_t button = 0;
    std::optional<std::size_t> row; ///< selected, the first of several
};

/// Shows the dialog until a button is pressed. A table of 100,000 rows opens as fast as one of ten.
ListAnswer ShowListDialog(HWND owner, const ListDialog& dialog);

} // namespace talvix::workbench
