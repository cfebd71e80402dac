// 100,000 rows in a window: painting, scrolling, selecting, finding, beside the system's list view
// and the bare drawing.
#include "automation/text.h"
#include "bench/bench.h"
#include "bench/shown.h"
#include "platform/win32/device_context.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <cstdio>

namespace talvix::bench {

namespace {

/// The texts of one page and nothing else, onto a picture that is then shown.
double DrawTextsBare(HWND window, const std::vector<Row>& rows) {
    RECT client{};
    GetClientRect(window, &client);
    const double start = Now();
    const ScreenDc screen(window);
    const OwnedMemoryDc memory(CreateCompatibleDC(screen.Get()));
    const OwnedBitmap bitmap(CreateCompatibleBitmap(screen.Get(), client.right, client.bottom));
    const Chosen chosen(memory.Get(), bitmap.Get());
    const Chosen font(memory.Get(), GetStockObject(DEFAULT_GUI_FONT));
    constexpr int kLine = 19;
    for (int line = 0; line * kLine < client.bottom; ++line) {
        for (int column = 0; column < kColumns; ++column) {
            RECT cell{column * 120 + 4, line * kLine, column * 120 + 116, (line + 1) * kLine};
            const std::u16string& text = rows[static_cast<std::size_t>(line)].cells[column];
            DrawTextW(memory.Get(), Wide(text), static_cast<int>(text.size()), &cell,
                      DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        }
    }
    BitBlt(screen.Get(), 0, 0, client.right, client.bottom, memory.Get(), 0, 0, SRCCOPY);
    GdiFlush();
    return Since(start);
}

/// What moving the picture by three lines costs when nothing is drawn afterwards.
double ScrollBare(const GridInWindow& shown, int& way) {
    way = -way;
    RECT client{};
    GetClientRect(shown.window, &client);
    const double start = Now();
    ScrollWindowEx(shown.window, 0, way * 57, &client, &client, nullptr, nullptr, SW_INVALIDATE);
    ValidateRect(shown.window, nullptr);
    GdiFlush();
    return Since(start);
}

/// The grid draws while it answers the message: nothing may wait to be drawn afterwards.
double ScrollThree(const GridInWindow& shown, int& way) {
    way = -way;
    const double start = Now();
    SendMessageW(shown.window, WM_MOUSEWHEEL, MAKEWPARAM(0, way * WHEEL_DELTA), 0);
    GdiFlush();
    const double seconds = Since(start);
    Require(GetUpdateRect(shown.window, nullptr, FALSE) == FALSE,
            "the rows that were scrolled into sight are drawn");
    return seconds;
}

double SelectAll(const GridInWindow& shown, std::int32_t count) {
    const Late selection = shown.grid[u"Selection"];
    selection.Call(u"Clear");
    constexpr int kTimes = 200;
    const double start = Now();
    for (int time = 0; time < kTimes; ++time) {
        selection.Call(u"Add", 1, count);
        selection.Call(u"Clear");
    }
    return (Since(start)) / kTimes;
}

constexpr int kFinds = 50;

double FindInGrid(const GridInWindow& shown) {
    const double start = Now();
    for (int find = 1; find <= kFinds; ++find) {
        shown.grid.Call(u"Find", u"ID", DecimalText(find * 1999));
    }
    return Since(start);
}

double FindInList(const ListInWindow& shown) {
    const double start = Now();
    for (int find = 1; find <= kFinds; ++find) {
        const std::u16string text = DecimalText(find * 1999);
        LVFINDINFOW wanted{};
        wanted.flags = LVFI_STRING;
        wanted.psz = Wide(text);
        SendMessageW(shown.list, LVM_FINDITEMW, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(&wanted));
    }
    return Since(start);
}

void ComparePainting(const std::vector<Row>& rows, const GridInWindow& grid,
                     const ListInWindow& list) {
    Compare(
        {"repaint-list", "page repaint / list view's", 1 / 8.0}, [&] { return grid.Repaint(); },
        [&] { return list.Repaint(); }, 20);
    Compare(
        {"repaint-text", "page repaint / drawing the bare texts", 1.5},
        [&] { return grid.Repaint(); }, [&] { return DrawTextsBare(grid.window, rows); }, 20);
    Compare(
        {"text-list", "drawing the bare texts of a page / list view's repaint", 0},
        [&] { return DrawTextsBare(grid.window, rows); }, [&] { return list.Repaint(); }, 20);
    int way = 1;
    Compare(
        {"scroll", "scrolling by three rows / page repaint", 0.2},
        [&] { return ScrollThree(grid, way); }, [&] { return grid.Repaint(); }, 20);
    Compare(
        {"scroll-bare", "`ScrollWindowEx` alone / page repaint", 0},
        [&] { return ScrollBare(grid, way); }, [&] { return grid.Repaint(); }, 20);
}

} // namespace

int PaintBench() {
    InitCommonControls();
    const std::vector<Row> rows = MakeRows();
    ComparePainting(rows, GridInWindow(rows), ListInWindow(rows));
    return 0;
}

int ViewBench() {
    InitCommonControls();
    const std::vector<Row> rows = MakeRows();
    const GridInWindow grid(rows);
    const ListInWindow list(rows);
    CompareSorting(rows, grid, list);
    CompareGrouping(rows, grid);
    ComparePainting(rows, grid, list);
    Compare(
        {"select-all", "selecting all of 100,000 / the first 10", 1.5},
        [&] { return SelectAll(grid, kRows); }, [&] { return SelectAll(grid, 10); }, 10);
    Compare(
        {"find", "50 finds by ID / list view's", 1 / 20.0}, [&] { return FindInGrid(grid); },
        [&] { return FindInList(list); });
    return 0;
}

} // namespace talvix::bench
