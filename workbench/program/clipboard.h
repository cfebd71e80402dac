#pragma once

#include <windows.h>

#include <string>

namespace talvix::workbench {

/// Puts a text onto the clipboard; false when somebody else holds it.
bool CopyText(HWND owner, const std::u16string& text);

} // namespace talvix::workbench
