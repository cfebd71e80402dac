#pragma once

#include <windows.h>

#include <string>

namespace talvix::workbench {

/// Asks for a project file to open or to save; "" when cancelled.
std::u16string AskForProjectFile(HWND owner, bool toSave);

} // namespace talvix::workbench
