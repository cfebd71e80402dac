#pragma once

#include "automation/late_object.h"

#include <windows.h>

namespace talvix::workbench {

/// Posts a message to a window after every user's action in a grid.
class GridWatch : public EventSink {
public:
    GridWatch(HWND window, UINT message) : window_(window), message_(message) {}
    void OnEvent(std::u16string_view, std::span<Value>) override {
        PostMessageW(window_, message_, 0, 0);
    }

private:
    HWND window_;
    UINT message_;
};

} // namespace talvix::workbench
