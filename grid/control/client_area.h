#pragma once

#include <windows.h>

namespace talvix::grid {

/// The inside of a window, in its own pixels; empty for a window that is gone.
inline RECT ClientOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client;
}

} // namespace talvix::grid
