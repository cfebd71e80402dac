#include "grid/control/header_menu.h"

#include "platform/win32/popup_menu.h"

#include <algorithm>
#include <numeric>

namespace talvix::grid {

namespace {

enum Command : std::int32_t { kAscending = 1, kDescending, kGroup, kUngroup, kFit, kFitAll };

std::optional<std::size_t> GroupPlace(const GridModel& model, std::size_t column) {
    const std::vector<Grouping>& groups = model.rows.Groups();
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [&](const Grouping& group) { return group.column == column; });
    return found == groups.end() ? std::nullopt
                                 : std::optional<std::size_t>(found - groups.begin());
}

std::int32_t Ask(GridModel& model, HWND owner, std::size_t column) {
    CPopupMenu menu;
    menu.AddEntry(kAscending, u"Aufsteigend sortieren", true);
    menu.AddEntry(kDescending, u"Absteigend sortieren", true);
    menu.AddSeparator(100);
    if (GroupPlace(model, column)) {
        menu.AddEntry(kUngroup, u"Gruppierung aufheben", true);
    } else {
        menu.AddEntry(kGroup, u"Nach dieser Spalte gruppieren", true);
    }
    menu.AddSeparator(101);
    menu.AddEntry(kFit, u"Optimale Breite", true);
    menu.AddEntry(kFitAll, u"Optimale Breite für alle Spalten", true);
    const auto sorting = model.rows.Sorting();
    menu.SetChecked(kAscending, sorting && sorting->column == column && !sorting->descending);
    menu.SetChecked(kDescending, sorting && sorting->column == column && sorting->descending);
    return menu.Show(reinterpret_cast<LONG_PTR>(owner), kReturnCommand, kAtMouse, kAtMouse);
}

void FitAll(GridModel& model) {
    std::vector<std::size_t> all(model.columns.Count());
    std::iota(all.begin(), all.end(), std::size_t{0});
    model.FitColumns(all);
}

} // namespace

void ShowHeaderMenu(GridModel& model, HWND owner, std::size_t column) {
    const std::int32_t command = Ask(model, owner, column);
    if (column >= model.columns.Count()) {
        return; // columns cannot go, but nothing is taken for granted after a menu
    }
    switch (command) {
    case kAscending:
    case kDescending:
        model.SortByUser(column, command == kDescending);
        break;
    case kGroup:
        model.GroupByUser(column, model.rows.Groups().size());
        break;
    case kUngroup:
        if (const auto place = GroupPlace(model, column)) {
            model.UngroupByUser(*place);
        }
        break;
    case kFit:
        model.FitColumns({&column, 1});
        break;
    case kFitAll:
        FitAll(model);
        break;
    default:
        break;
    }
}

} // namespace talvix::grid
