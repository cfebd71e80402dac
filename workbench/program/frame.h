#pragma once

#include <windows.h>

namespace talvix::workbench {

inline constexpr const char16_t* kProgram = u"Talvix Workbench";
/// Comes to the program's window after a user's action in a grid.
inline constexpr UINT kGridChanged = WM_APP + 1;

/// Registers the class of the program's window, with its icon.
void RegisterFrame(const wchar_t* name, WNDPROC procedure);
/// The font of the system's messages; the caller deletes it.
HFONT MessageFont();
/// As large as is pleasant, but never larger than the screen.
SIZE FirstSize(int dpi);
/// Shows the window where the user left it last; false when that is not known or not on a screen
/// any more.
bool RestorePlace(HWND window);
void RememberPlace(HWND window);
/// Seconds of a steady clock.
double Now();

} // namespace talvix::workbench
