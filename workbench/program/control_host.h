#pragma once

#include <windows.h>
#include <unknwn.h>

namespace talvix::workbench {

/// A window of the system's own control container (AtlAxWin). Failure when the system has none.
HWND CreateControlHost(HWND parent);
/// Puts a control into the container; it gets its window there.
void AttachControl(IUnknown* control, HWND host);

} // namespace talvix::workbench
