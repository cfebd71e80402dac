#include "grid/control/client_area.h"
#include "grid/control/grid_window.h"
#include "platform/win32/device_context.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace talvix::grid {

namespace {

constexpr UINT kBarsFollow = 20; // milliseconds

} // namespace

std::int32_t GridWindow::PageLines() const {
    return model_->layout.LinesIn(ClientOf(window_).bottom);
}

void GridWindow::ScrollTo(std::int32_t number) {
    const std::vector<std::int32_t>& shown = model_->rows.ShownNumbers();
    const auto found = std::lower_bound(shown.begin(), shown.end(), number);
    if (window_ == nullptr || found == shown.end()) {
        return;
    }
    const auto line = static_cast<std::int32_t>(found - shown.begin());
    std::int32_t& first = model_->layout.firstLine;
    first = std::clamp(first, std::max(0, line - PageLines() + 1), line);
    Refresh();
}

void GridWindow::UpdateScrollBars() {
    if (window_ == nullptr) {
        return;
    }
    Layout& layout = model_->layout;
    const auto lines = static_cast<std::int32_t>(model_->rows.ShownNumbers().size());
    layout.firstLine = std::clamp(layout.firstLine, 0, std::max(0, lines - PageLines()));
    ShowScrollBar(SB_VERT, lines, PageLines(), layout.firstLine);
    const std::int32_t width = ClientOf(window_).right;
    layout.scrollX = std::clamp(layout.scrollX, 0, std::max(0, layout.TotalWidth() - width));
    ShowScrollBar(SB_HORZ, layout.TotalWidth(), width, layout.scrollX);
}

/// Tells the system only what has changed. Painting a bar takes as long as a page of rows, and so
/// it follows once a burst of scrolling pauses.
void GridWindow::ShowScrollBar(int bar, std::int32_t count, std::int32_t page, std::int32_t place) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(0, count - 1);
    info.nPage = static_cast<UINT>(page);
    info.nPos = place;
    SCROLLINFO& told = told_[bar == SB_VERT ? 1 : 0];
    if (told.nMax != info.nMax || told.nPage != info.nPage || told.nPos != info.nPos) {
        told = info;
        SetScrollInfo(window_, bar, &info, FALSE);
        if (!staleBars_[0] && !staleBars_[1]) {
            SetTimer(window_, kPaintBars, kBarsFollow, nullptr);
        }
        staleBars_[bar == SB_VERT ? 1 : 0] = true;
        barsMove_ = true;
    }
}

void GridWindow::PaintScrollBars() {
    if (std::exchange(barsMove_, false)) {
        return; // until the next tick
    }
    KillTimer(window_, kPaintBars);
    for (const int bar : {SB_HORZ, SB_VERT}) {
        const std::size_t place = bar == SB_VERT ? 1 : 0;
        if (std::exchange(staleBars_[place], false)) {
            SetScrollInfo(window_, bar, &told_[place], TRUE);
        }
    }
}

void GridWindow::ScrollBy(bool vertical, std::int32_t amount) {
    Layout& layout = model_->layout;
    std::int32_t& place = vertical ? layout.firstLine : layout.scrollX;
    const std::int32_t before = place;
    place = std::max(0, place + amount);
    tips_.Hide();
    UpdateScrollBars();
    const std::int32_t lines = place - before;
    if (!vertical || !model_->Redraw() || std::abs(lines) >= PageLines()) {
        InvalidateRect(window_, nullptr, FALSE);
    } else if (lines != 0) {
        MoveRows(lines);
    }
}

/// Moves what is on the screen and draws what comes into sight. Drawing at once, instead of asking
/// for it, saves the time that the system takes to care for what is to be drawn. Where something
/// waits to be drawn, it has moved too: Paint sees to that.
void GridWindow::MoveRows(std::int32_t lines) {
    const Layout& layout = model_->layout;
    const RECT client = ClientOf(window_);
    const RECT rows{client.left, layout.RowsTop(), client.right, client.bottom};
    const ScreenDc screen(window_);
    RECT bare{};
    if (ScrollDC(screen.Get(), 0, -lines * layout.metrics.rowHeight, &rows, &rows, nullptr,
                 &bare) == FALSE) {
        InvalidateRect(window_, nullptr, FALSE);
        return;
    }
    hasMoved_ = true;
    painter_.DrawBuffered(screen.Get(), {client.right, client.bottom}, bare, hasFocus_);
}

void GridWindow::OnScroll(bool vertical, WPARAM wParam) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window_, vertical ? SB_VERT : SB_HORZ, &info);
    const std::int32_t step = vertical ? 1 : model_->layout.Scaled(20);
    const auto page = static_cast<std::int32_t>(info.nPage);
    switch (LOWORD(wParam)) {
    case SB_LINEUP:
        return ScrollBy(vertical, -step);
    case SB_LINEDOWN:
        return ScrollBy(vertical, step);
    case SB_PAGEUP:
        return ScrollBy(vertical, -page);
    case SB_PAGEDOWN:
        return ScrollBy(vertical, page);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return ScrollBy(vertical, info.nTrackPos - info.nPos);
    case SB_TOP:
        return ScrollBy(vertical, -info.nPos);
    case SB_BOTTOM:
        return ScrollBy(vertical, info.nMax);
    default:
        return;
    }
}

/// Three lines for each notch; finer wheels add up.
void GridWindow::TurnWheel(int amount) {
    wheelRest_ += amount;
    const int lines = wheelRest_ * 3 / WHEEL_DELTA;
    wheelRest_ -= lines * WHEEL_DELTA / 3;
    ScrollBy(true, -lines);
}

} // namespace talvix::grid
