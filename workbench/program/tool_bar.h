#pragma once

#include <windows.h>

namespace talvix::workbench {

/// The bar below the menu, with the system's own pictures and a tip for each button.
HWND MakeToolBar(HWND parent, int dpi);
/// Follows what can be done at the moment.
void EnableTool(HWND bar, int command, bool enabled);

} // namespace talvix::workbench
