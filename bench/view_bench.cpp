// 100,000 rows in a window: sorting, grouping, painting, scrolling, finding; beside them the
// system's list view and tree view, and the bare work. All hold the same texts.
#include "automation/late.h"
#include "automation/text.h"
#include "bench/bench.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/device_context.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "workbench/program/control_host.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <random>

namespace talvix::bench {

namespace {

constexpr int kRows = 100000;
constexpr int kWidth = 900;
constexpr int kHeight = 600;
constexpr const char16_t* kKeys[] = {u"ID",     u"Subject", u"Type", u"Creator",
                                     u"Status", u"Date",    u"Path"};
constexpr int kColumns = 7;
constexpr int kSubject = 1;
constexpr int kDate = 5;

struct Row {
    std::u16string cells[kColumns];
    double date = 0;
};

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

struct GridInWindow {
    explicit GridInWindow(const std::vector<Row>& rows)
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
    GridInWindow(const GridInWindow&) = delete;
    GridInWindow& operator=(const GridInWindow&) = delete;
    ~GridInWindow() { DestroyWindow(frame); }

    /// Brings what has changed to the screen.
    void ShowNow() const {
        MSG message{};
        while (PeekMessageW(&message, window, WM_APP, 0xBFFF, PM_REMOVE) != FALSE) {
            DispatchMessageW(&message);
        }
        UpdateWindow(window);
        GdiFlush();
    }
    double Repaint() const {
        const double start = Now();
        InvalidateRect(window, nullptr, FALSE);
        UpdateWindow(window);
        GdiFlush();
        return Now() - start;
    }
    HWND frame;
    HWND window = nullptr;
    Late grid;
};

struct ListInWindow {
    explicit ListInWindow(const std::vector<Row>& rows) {
        list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | WS_VISIBLE | LVS_REPORT, 0, 0,
                               kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
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
    ListInWindow(const ListInWindow&) = delete;
    ListInWindow& operator=(const ListInWindow&) = delete;
    ~ListInWindow() { DestroyWindow(list); }

    double Sort(PFNLVCOMPARE compare, LPARAM way) const {
        const double start = Now();
        SendMessageW(list, LVM_SORTITEMS, static_cast<WPARAM>(way),
                     reinterpret_cast<LPARAM>(compare));
        return Now() - start;
    }
    double Repaint() const {
        const double start = Now();
        InvalidateRect(list, nullptr, FALSE);
        UpdateWindow(list);
        GdiFlush();
        return Now() - start;
    }
    HWND list;
};

int CompareTexts(const std::u16string& left, const std::u16string& right) {
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, Wide(left),
                          static_cast<int>(left.size()), Wide(right),
                          static_cast<int>(right.size())) -
           CSTR_EQUAL;
}

int CALLBACK BySubject(LPARAM left, LPARAM right, LPARAM way) {
    return static_cast<int>(way) *
           CompareTexts(reinterpret_cast<const Row*>(left)->cells[kSubject],
                        reinterpret_cast<const Row*>(right)->cells[kSubject]);
}

int CALLBACK ByDate(LPARAM left, LPARAM right, LPARAM way) {
    const double difference =
        reinterpret_cast<const Row*>(left)->date - reinterpret_cast<const Row*>(right)->date;
    return static_cast<int>(way) * (difference < 0 ? -1 : difference > 0 ? 1 : 0);
}

double SortKeysBare(const std::vector<Row>& rows) {
    const double start = Now();
    std::vector<std::pair<std::string, const Row*>> keys;
    keys.reserve(rows.size());
    for (const Row& row : rows) {
        char key[400];
        const int length =
            LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | NORM_IGNORECASE,
                         Wide(row.cells[kSubject]), static_cast<int>(row.cells[kSubject].size()),
                         reinterpret_cast<wchar_t*>(key), sizeof key);
        keys.emplace_back(std::string(key, static_cast<std::size_t>(length)), &row);
    }
    std::stable_sort(keys.begin(), keys.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    return Now() - start;
}

double SortGrid(const GridInWindow& shown, const char16_t* column, int& order) {
    order = 1 - order;
    const double start = Now();
    shown.grid.Call(u"Sort", column, order);
    return Now() - start;
}

double GroupGrid(const GridInWindow& shown, int columns) {
    static constexpr const char16_t* keys[] = {u"Type", u"Creator", u"Status"};
    const double start = Now();
    shown.grid.Set(u"Redraw", false);
    for (int level = 0; level < columns; ++level) {
        shown.grid[u"Groups"].Call(u"Add", keys[level]);
    }
    shown.grid.Set(u"Redraw", true);
    shown.ShowNow();
    const double time = Now() - start;
    shown.grid[u"Groups"].Call(u"Clear");
    shown.ShowNow();
    return time;
}

double GroupVector(const std::vector<Row>& rows, int columns) {
    const double start = Now();
    std::vector<const Row*> order;
    order.reserve(rows.size());
    for (const Row& row : rows) {
        order.push_back(&row);
    }
    std::stable_sort(order.begin(), order.end(), [&](const Row* left, const Row* right) {
        for (int level = 0; level < columns; ++level) {
            const int compared = CompareTexts(left->cells[2 + level], right->cells[2 + level]);
            if (compared != 0) {
                return compared < 0;
            }
        }
        return false;
    });
    return Now() - start;
}

double FillTree(const std::vector<Row>& rows) {
    HWND tree = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP | WS_VISIBLE | TVS_HASBUTTONS, 0, 0,
                                kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
    const double start = Now();
    SendMessageW(tree, WM_SETREDRAW, FALSE, 0);
    std::vector<std::pair<std::u16string, HTREEITEM>> groups;
    const auto insert = [&](HTREEITEM parent, const std::u16string& text) {
        TVINSERTSTRUCTW item{};
        item.hParent = parent;
        item.hInsertAfter = TVI_LAST;
        item.item.mask = TVIF_TEXT;
        item.item.pszText = const_cast<wchar_t*>(Wide(text));
        return reinterpret_cast<HTREEITEM>(
            SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    };
    for (const Row& row : rows) {
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&](const auto& each) { return each.first == row.cells[2]; });
        if (group == groups.end()) {
            groups.emplace_back(row.cells[2], insert(TVI_ROOT, row.cells[2]));
            group = groups.end() - 1;
        }
        insert(group->second, row.cells[kSubject]);
    }
    SendMessageW(tree, WM_SETREDRAW, TRUE, 0);
    UpdateWindow(tree);
    const double time = Now() - start;
    DestroyWindow(tree);
    return time;
}

/// The texts of one page and nothing else, onto a picture that is then shown.
double DrawTextsBare(HWND window, const std::vector<Row>& rows) {
    RECT client{};
    GetClientRect(window, &client);
    const double start = Now();
    const ScreenDc screen(window);
    const OwnedMemoryDc memory(CreateCompatibleDC(screen.Get()));
    const OwnedBitmap bitmap(CreateCompatibleBitmap(screen.Get(), client.right, client.bottom));
    const Chosen chosen(memory.Get(), bitmap.Get());
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
    return Now() - start;
}

double ScrollThree(const GridInWindow& shown, int& way) {
    way = -way;
    const double start = Now();
    SendMessageW(shown.window, WM_MOUSEWHEEL, MAKEWPARAM(0, way * WHEEL_DELTA), 0);
    UpdateWindow(shown.window);
    GdiFlush();
    return Now() - start;
}

double ToggleGroup(const GridInWindow& shown) {
    const Late row = shown.grid(u"Rows", 1);
    const bool open = row.Call(u"Expanded") == Value(true);
    const double start = Now();
    row.Set(u"Expanded", !open);
    shown.ShowNow();
    return Now() - start;
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
    return (Now() - start) / kTimes;
}

constexpr int kFinds = 50;

double FindInGrid(const GridInWindow& shown) {
    const double start = Now();
    for (int find = 1; find <= kFinds; ++find) {
        shown.grid.Call(u"Find", u"ID", DecimalText(find * 1999));
    }
    return Now() - start;
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
    return Now() - start;
}

void CompareSorting(const std::vector<Row>& rows, const GridInWindow& grid,
                    const ListInWindow& list) {
    int order = 0;
    LPARAM way = 1;
    const auto turn = [&] { return way = -way; };
    Compare(
        "text sort / list view's sort with the same comparison",
        [&] { return SortGrid(grid, u"Subject", order); },
        [&] { return list.Sort(BySubject, turn()); }, 5);
    Compare(
        "text sort / making and sorting bare sort keys",
        [&] { return SortGrid(grid, u"Subject", order); }, [&] { return SortKeysBare(rows); }, 5);
    Compare(
        "date sort / list view's sort", [&] { return SortGrid(grid, u"Date", order); },
        [&] { return list.Sort(ByDate, turn()); }, 5);
}

void CompareGrouping(const std::vector<Row>& rows, const GridInWindow& grid) {
    for (int columns = 1; columns <= 3; ++columns) {
        const std::string what =
            "grouping by " + std::to_string(columns) + " to a painted page / vector's stable sort";
        Compare(
            what.c_str(), [&] { return GroupGrid(grid, columns); },
            [&] { return GroupVector(rows, columns); }, 5);
    }
    Compare(
        "grouping by 1 to a painted page / filling the tree view",
        [&] { return GroupGrid(grid, 1); }, [&] { return FillTree(rows); }, 3);
    grid.grid[u"Groups"].Call(u"Add", u"Type");
    grid.ShowNow();
    Compare(
        "opening or closing a group / page repaint", [&] { return ToggleGroup(grid); },
        [&] { return grid.Repaint(); }, 20);
    grid.grid[u"Groups"].Call(u"Clear");
    grid.ShowNow();
}

} // namespace

int ViewBench() {
    InitCommonControls();
    const std::vector<Row> rows = MakeRows();
    const GridInWindow grid(rows);
    const ListInWindow list(rows);
    CompareSorting(rows, grid, list);
    CompareGrouping(rows, grid);
    Compare(
        "page repaint / list view's", [&] { return grid.Repaint(); },
        [&] { return list.Repaint(); }, 20);
    Compare(
        "page repaint / bare text drawing", [&] { return grid.Repaint(); },
        [&] { return DrawTextsBare(grid.window, rows); }, 20);
    int way = 1;
    Compare(
        "scrolling by three rows / page repaint", [&] { return ScrollThree(grid, way); },
        [&] { return grid.Repaint(); }, 20);
    Compare(
        "select all of 100,000 / of the first 10", [&] { return SelectAll(grid, kRows); },
        [&] { return SelectAll(grid, 10); }, 10);
    Compare(
        "50 finds by ID / list view's", [&] { return FindInGrid(grid); },
        [&] { return FindInList(list); }, 5);
    return 0;
}

} // namespace talvix::bench
