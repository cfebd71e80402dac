#pragma once

#include "grid/control/grid_painter.h"

#include <windows.h>

namespace talvix::grid {

/// Shows the whole text of a cell or heading that is cut, over the place where it stands.
class GridTips {
public:
    explicit GridTips(GridPainter& painter) : painter_(painter) {}

    /// Makes the tip's window; without one (a system that has no such class) there are no tips.
    void Create(HWND owner);
    /// The mouse is over a point of the owner.
    void MouseMove(POINT point);
    /// Tells the tip's window of a message of the mouse to the owner.
    void Relay(UINT message, WPARAM wParam, LPARAM lParam);
    /// Takes the tip away, such as when the rows move below it.
    void Hide();
    /// What the tip's window asks its owner; nothing for other notifications.
    std::optional<LRESULT> Notify(const NMHDR& notification);

private:
    void Announce(const RECT& place);

    GridPainter& painter_;
    HWND owner_ = nullptr;
    HWND window_ = nullptr; ///< goes with its owner
    std::optional<GridPainter::CutText> cut_;
};

} // namespace talvix::grid
