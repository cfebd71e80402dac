#pragma once

#include <windows.h>

namespace talvix::workbench {

/// Registers the class of the program's window, with its icon.
void RegisterFrame(const wchar_t* name, WNDPROC procedure);
/// The font of the system's messages; the caller deletes it.
HFONT MessageFont();
/// As large as is pleasant, but never larger than the screen.
SIZE FirstSize(int dpi);
/// Seconds of a steady clock.
double Now();

} // namespace talvix::workbench
