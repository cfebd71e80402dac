#include "bench/shown.h"

#include "automation/text.h"
#include "bench/bench.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/wide.h"
#include "workbench/program/control_host.h"

#include <random>

namespace talvix::bench {

std::vector<Row> MakeRows() {
    std::mt19937 random(4711);
    std::vector<Row> rows(kRows);
    for (int number = 0; number < kRows; ++number) {
        Row& row = rows[static_cast<std::size_t>(number)];
        const std::u16string part = DecimalText(static_cast<long long>(random() % 1000000));
        row.cells[0] = DecimalText(number);
        row.cells[1] = u"Bericht Bauabschnitt " + part + u".doc";
        row.cells[2] = u"Dokumentart " + DecimalText(static_cast<long long>(random() % 20));
        row.cells[3] = u"Bearbeiter " + DecimalText(static_cast<long long>(random() % 40));
        row.cells[4] = random() % 3 == 0 ? u"offen" : u"erledigt";
        row.date = 36000 + static_cast<double>(random() % 8000000) / 1000;
        row.cells[5] = u"31.12.2003 14:05:00";
        row.cells[6] = u"\\\\server\\daten\\4711\\Bericht Bauabschnitt " + part + u".doc";
    }
    return rows;
}

int CompareTexts(const std::u16string& left, const std::u16string& right) {
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, Wide(left),
                          static_cast<int>(left.size()), Wide(right),
                          static_cast<int>(right.size())) -
           CSTR_EQUAL;
}

GridInWindow::GridInWindow(const std::vector<Row>& rows)
    : frame(workbench::CreateControlHost(GetDesktopWindow())) {
    SetWindowPos(frame, HWND_TOP, 0, 0, kWidth, kHeight, SWP_SHOWWINDOW);
    const ComPtr<IDispatch> control = Create(u"TalvixGrid.Grid");
    workbench::AttachControl(control.Get(), frame);
    grid = Late(WrapDispatch(control.Get()));
    for (const auto* key : kKeys) {
        grid[u"Columns"](u"Add", key).Set(u"Width", 120);
    }
    grid(u"Columns", u"Date").Set(u"DataType", 7);
    grid.Set(u"Redraw", false);
    const Late all = grid[u"Rows"];
    for (const Row& row : rows) {
        const Late added = all[u"Add"];
        for (int column = 0; column < kColumns; ++column) {
            added.SetAt(u"Value", kKeys[column],
                        column == kDate ? Value(Date{row.date}) : Value(row.cells[column]));
        }
    }
    grid.Set(u"Redraw", true);
    window = GetWindow(frame, GW_CHILD);
    ShowNow();
}

void GridInWindow::ShowNow() const {
    MSG message{};
    while (PeekMessageW(&message, window, WM_APP, 0xBFFF, PM_REMOVE) != FALSE) {
        DispatchMessageW(&message);
    }
    UpdateWindow(window);
    GdiFlush();
}

double GridInWindow::Repaint() const {
    const double start = Now();
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
    GdiFlush();
    return Since(start);
}

std::vector<Value> GridInWindow::Column(int column) const {
    std::vector<Value> cells;
    const Late all = grid[u"Rows"];
    const Value counted = all.Call(u"Count");
    const std::int32_t count = std::get<std::int32_t>(counted.Content());
    for (std::int32_t number = 1; number <= count; ++number) {
        const Late row = all(u"Item", number);
        if (row.Call(u"IsGroup") == Value(false)) {
            cells.push_back(row.Call(u"Value", kKeys[column]));
        }
    }
    return cells;
}

ListInWindow::ListInWindow(const std::vector<Row>& rows) {
    list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | WS_VISIBLE | LVS_REPORT, 0, 0, kWidth,
                           kHeight, nullptr, nullptr, nullptr, nullptr);
    for (int column = 0; column < kColumns; ++column) {
        LVCOLUMNW design{};
        design.mask = LVCF_WIDTH;
        design.cx = 120;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&design));
    }
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_SETITEMCOUNT, kRows, 0);
    for (int number = 0; number < kRows; ++number) {
        const Row& row = rows[static_cast<std::size_t>(number)];
        for (int column = 0; column < kColumns; ++column) {
            LVITEMW item{};
            item.mask = LVIF_TEXT | (column == 0 ? LVIF_PARAM : 0);
            item.iItem = number;
            item.iSubItem = column;
            item.pszText = const_cast<wchar_t*>(Wide(row.cells[column]));
            item.lParam = reinterpret_cast<LPARAM>(&row);
            SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                         reinterpret_cast<LPARAM>(&item));
        }
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    UpdateWindow(list);
}

double ListInWindow::Sort(PFNLVCOMPARE compare, LPARAM way) const {
    const double start = Now();
    SendMessageW(list, LVM_SORTITEMS, static_cast<WPARAM>(way), reinterpret_cast<LPARAM>(compare));
    return Since(start);
}

double ListInWindow::Repaint() const {
    const double start = Now();
    InvalidateRect(list, nullptr, FALSE);
    UpdateWindow(list);
    GdiFlush();
    return Since(start);
}

std::vector<const Row*> ListInWindow::Order() const {
    std::vector<const Row*> order;
    for (int number = 0; number < kRows; ++number) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = number;
        SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        order.push_back(reinterpret_cast<const Row*>(item.lParam));
    }
    return order;
}

} // namespace talvix::bench
