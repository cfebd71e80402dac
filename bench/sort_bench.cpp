// Sorting and grouping 100,000 rows, beside the system's list view and tree view and the bare work.
#include "bench/bench.h"
#include "bench/shown.h"
#include "platform/win32/wide.h"

#include <algorithm>

namespace talvix::bench {

namespace {

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
    return Since(start);
}

double SortPacked(const std::vector<Row>& rows) {
    const double start = Now();
    std::vector<std::pair<double, const Row*>> packed;
    packed.reserve(rows.size());
    for (const Row& row : rows) {
        packed.emplace_back(row.date, &row);
    }
    std::stable_sort(packed.begin(), packed.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    return Since(start);
}

double SortGrid(const GridInWindow& shown, const char16_t* column, int& order) {
    order = 1 - order;
    const double start = Now();
    shown.grid.Call(u"Sort", column, order);
    return Since(start);
}

double GroupGrid(const GridInWindow& shown, int columns) {
    static constexpr const char16_t* keys[] = {u"Type", u"Creator", u"Status"};
    shown.ShowNow(); // what the peer's window has uncovered
    const double start = Now();
    shown.grid.Set(u"Redraw", false);
    for (int level = 0; level < columns; ++level) {
        shown.grid[u"Groups"].Call(u"Add", keys[level]);
    }
    shown.grid.Set(u"Redraw", true);
    shown.ShowNow();
    const double time = Since(start);
    shown.grid[u"Groups"].Call(u"Clear");
    shown.ShowNow();
    return time;
}

struct Grouped {
    std::vector<const Row*> order;
    double seconds = 0;
};

Grouped GroupVector(const std::vector<Row>& rows, int columns) {
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
    const double seconds = Since(start);
    return {std::move(order), seconds};
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
    const double time = Since(start);
    DestroyWindow(tree);
    return time;
}

double ToggleGroup(const GridInWindow& shown) {
    const Late row = shown.grid(u"Rows", 1);
    const bool open = row.Call(u"Expanded") == Value(true);
    const double start = Now();
    row.Set(u"Expanded", !open);
    shown.ShowNow();
    return Since(start);
}

void RequireSameOrder(const GridInWindow& grid, const ListInWindow& list) {
    grid.grid.Call(u"Sort", u"Subject", 0);
    list.Sort(BySubject, 1);
    const std::vector<Value> subjects = grid.Column(kSubject);
    const std::vector<const Row*> byText = list.Order();
    grid.grid.Call(u"Sort", u"Date", 0);
    list.Sort(ByDate, 1);
    const std::vector<Value> dates = grid.Column(kDate);
    const std::vector<const Row*> byDate = list.Order();
    Require(subjects.size() == byText.size() && dates.size() == byDate.size(), "sorting");
    for (std::size_t at = 0; at < subjects.size(); ++at) {
        Require(CompareTexts(std::get<std::u16string>(subjects[at].Content()),
                             byText[at]->cells[kSubject]) == 0,
                "text sort");
        Require(dates[at] == Value(Date{byDate[at]->date}), "date sort");
    }
}

void RequireSameGroups(const std::vector<Row>& rows, const GridInWindow& grid) {
    for (const int column : {kType, kType + 1, kType + 2}) {
        grid.grid[u"Groups"].Call(u"Add", kKeys[column]);
    }
    const Grouped grouped = GroupVector(rows, 3);
    for (const int column : {kType, kType + 1, kType + 2}) {
        const std::vector<Value> cells = grid.Column(column);
        Require(cells.size() == grouped.order.size(), "grouping");
        for (std::size_t at = 0; at < cells.size(); ++at) {
            Require(cells[at] == Value(grouped.order[at]->cells[column]), "grouping");
        }
    }
    grid.grid[u"Groups"].Call(u"Clear");
}

} // namespace

void CompareSorting(const std::vector<Row>& rows, const GridInWindow& grid,
                    const ListInWindow& list) {
    RequireSameOrder(grid, list);
    int order = 0;
    LPARAM way = 1;
    const auto turn = [&] { return way = -way; };
    Compare(
        {"text-sort-list", "text sort of 100,000 / list view's with the same comparison", 1 / 6.0},
        [&] { return SortGrid(grid, u"Subject", order); },
        [&] { return list.Sort(BySubject, turn()); });
    Compare(
        {"text-sort-keys", "text sort of 100,000 / making and sorting bare sort keys", 1.2},
        [&] { return SortGrid(grid, u"Subject", order); }, [&] { return SortKeysBare(rows); });
    Compare(
        {"date-sort-list", "date sort of 100,000 / list view's", 1 / 20.0},
        [&] { return SortGrid(grid, u"Date", order); }, [&] { return list.Sort(ByDate, turn()); });
    Compare(
        {"date-sort-packed", "date sort of 100,000 / sorting packed numbers", 3},
        [&] { return SortGrid(grid, u"Date", order); }, [&] { return SortPacked(rows); });
}

void CompareGrouping(const std::vector<Row>& rows, const GridInWindow& grid) {
    RequireSameGroups(rows, grid);
    for (int columns = 1; columns <= 3; ++columns) {
        const std::string id = "group-vector-" + std::to_string(columns);
        Compare(
            {id,
             "grouping by " + std::to_string(columns) +
                 " to a painted page / vector's stable sort by the same columns",
             0.5},
            [&] { return GroupGrid(grid, columns); },
            [&] { return GroupVector(rows, columns).seconds; });
    }
    Compare(
        {"group-tree", "grouping by 1 to a painted page / filling the tree view", 1 / 20.0},
        [&] { return GroupGrid(grid, 1); }, [&] { return FillTree(rows); });
    grid.grid[u"Groups"].Call(u"Add", u"Type");
    grid.ShowNow();
    Compare(
        {"toggle-group", "opening or closing a group / page repaint", 1.5},
        [&] { return ToggleGroup(grid); }, [&] { return grid.Repaint(); }, 20);
    grid.grid[u"Groups"].Call(u"Clear");
    grid.ShowNow();
}

} // namespace talvix::bench
