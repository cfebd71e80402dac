#pragma once

#include "grid/control/accessible_events.h"
#include "grid/control/grid_input.h"
#include "grid/control/grid_painter.h"
#include "grid/control/grid_tips.h"
#include "grid/model/grid_objects.h"
#include "platform/win32/drop_target.h"

#include <windows.h>
#include <unknwn.h>

#include <array>
#include <functional>
#include <optional>

namespace talvix::grid {

/// The control's window: shows the grid, scrolls it and takes a user's hands.
class GridWindow : public GridView {
public:
    explicit GridWindow(SharedGrid model);
    ~GridWindow() override;
    GridWindow(const GridWindow&) = delete;
    GridWindow& operator=(const GridWindow&) = delete;

    /// `owner` is kept alive while a message is handled.
    void SetOwner(IUnknown* owner) { owner_ = owner; }
    /// `onFocus` is called when the window gets the keyboard focus.
    bool Create(HWND parent, const RECT& place, std::function<void()> onFocus);
    void Destroy();
    /// An inert window shows the grid and leaves mouse and keyboard alone.
    void SetInert(bool inert) { inert_ = inert; }
    void Move(const RECT& place);
    void Focus();
    HRESULT Get(HWND* window) const;
    /// Handles a key that moves within the grid; false for keys that are the container's.
    bool TakesKey(const MSG& message);
    /// Draws the grid as it stands into a rectangle of a device context.
    void DrawTo(HDC dc, const RECT& place);

    void Refresh() override;
    void ScrollTo(std::int32_t number) override;
    std::int32_t BestWidth(std::size_t column) override { return painter_.BestWidth(column); }
    std::int64_t Window() const override { return reinterpret_cast<LONG_PTR>(window_); }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleRequest(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleKeyboard(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    void RightButtonUp(POINT point);
    void OpenContextMenu(LPARAM screenPoint);
    void TurnWheel(int amount);
    void Paint();
    void UpdateScrollBars();
    void ShowScrollBar(int bar, std::int32_t count, std::int32_t page, std::int32_t place);
    void PaintScrollBars();
    void MoveRows(std::int32_t lines);
    void ScrollBy(bool vertical, std::int32_t amount);
    void OnScroll(bool vertical, WPARAM wParam);
    std::int32_t PageLines() const;

    SharedGrid model_;
    GridPainter painter_;
    GridTips tips_{painter_};
    AccessibleEvents accessible_{model_};
    GridInput input_;
    std::optional<DropRegistration> drop_;
    HWND window_ = nullptr;
    IUnknown* owner_ = nullptr;
    std::function<void()> onFocus_;
    std::uint32_t menus_ = 0;                 ///< menus that were opened over this window
    static constexpr UINT_PTR kPaintBars = 1; ///< timer
    std::array<SCROLLINFO, 2> told_{};        ///< of the horizontal and the vertical scroll bar
    std::array<bool, 2> staleBars_{};         ///< whose picture is older than what was told
    bool barsMove_ = false;                   ///< told since the timer's last tick
    bool hasMoved_ = false;                   ///< the rows on the screen, since the last painting
    bool hasFocus_ = false;
    bool inert_ = false;
    bool refreshPosted_ = false;
    int wheelRest_ = 0;
};

} // namespace talvix::grid
