#include "grid/model/grid_model.h"

#include "automation/coercion.h"
#include "automation/text.h"
#include "grid/model/shown_text.h"

#include <algorithm>
#include <array>

namespace talvix::grid {

Column& GridModel::AddColumn(std::u16string_view key) {
    rows.ReachColumns(columns.Count() + 1);
    Column& column = columns.Add(key);
    Changed();
    return column;
}

void GridModel::SetRedraw(bool on) {
    redraw_ = on;
    if (!on) {
        return;
    }
    if (placementWaits_) {
        placementWaits_ = false;
        rows.Place();
    }
    for (const RowRef& row : std::exchange(revealsWait_, {})) {
        if (rows.IsAlive(row)) {
            rows.Reveal(row);
        }
    }
    Changed();
}

void GridModel::ColumnsChanged() {
    rows.ColumnsChanged();
    Changed();
}

void GridModel::Changed() const {
    if (redraw_ && view != nullptr) {
        view->Refresh();
    }
}

void GridModel::Sort(std::size_t column, bool descending) {
    rows.SortBy(column, descending);
    Changed();
}

void GridModel::RefreshSort() {
    if (!redraw_) {
        placementWaits_ = true;
        return;
    }
    if (rows.Sorting() || !rows.Groups().empty()) {
        rows.Place();
    }
    Changed();
}

void GridModel::Expand(const RowRef& row) {
    if (!redraw_) {
        if (!rows.Groups().empty()) {
            revealsWait_.push_back(row);
        }
        return;
    }
    rows.Reveal(row);
    Changed();
    if (view != nullptr) {
        view->ScrollTo(rows.NumberOf(row));
    }
}

void GridModel::ChangeGroups(std::vector<Grouping> groups) {
    rows.SetGroups(std::move(groups));
    Changed();
    std::array<Value, 2> arguments{static_cast<std::int32_t>(rows.Groups().size()),
                                   std::int32_t{0}};
    events.Raise(u"AfterGroupChange", arguments);
}

HitResult GridModel::HitTest(std::int32_t x, std::int32_t y) {
    if (x < 0 || y < 0) {
        return {};
    }
    HitResult hit;
    if (y < layout.GroupBoxBottom()) {
        hit.area = Area::GroupByBox;
        return hit;
    }
    hit.column = layout.ColumnAt(x);
    if (y < layout.RowsTop()) {
        hit.area = hit.column >= 0 ? Area::Heading : Area::Nothing;
        return hit;
    }
    const auto line = static_cast<std::size_t>(layout.LineAt(y));
    const std::vector<std::int32_t>& shown = rows.ShownNumbers();
    if (line >= shown.size()) {
        return {};
    }
    const bool isHeading = rows.HeadingOf(rows.At(shown[line])) != nullptr;
    if (!isHeading && hit.column < 0) {
        return hit;
    }
    hit.row = shown[line];
    hit.area = isHeading ? Area::GroupHeading : Area::Cell;
    hit.column = isHeading ? -1 : hit.column;
    return hit;
}

PixelPoint GridModel::PointOf(const RowRef& row) {
    PixelPoint point{layout.Scaled(4), layout.RowsTop() + layout.metrics.rowHeight / 2};
    if (rows.IsAlive(row)) {
        const std::vector<std::int32_t>& shown = rows.ShownNumbers();
        const auto line =
            std::lower_bound(shown.begin(), shown.end(), rows.NumberOf(row)) - shown.begin();
        point.y = layout.TopOfLine(static_cast<std::int32_t>(line)) + layout.metrics.rowHeight / 2;
    }
    return point;
}

std::u16string GridModel::HeadingText(const GroupNode& node) const {
    const Column& column = columns.At(rows.Groups()[static_cast<std::size_t>(node.level)].column);
    return column.caption + u": " + ShownText(node.value, column.dataType, culture) + u" (" +
           DecimalText(node.rows) + u")";
}

std::u16string GridModel::TextOf(const RowRef& row, std::size_t column) const {
    const GroupNode* heading = rows.HeadingOf(row);
    return heading != nullptr
               ? HeadingText(*heading)
               : ShownText(rows.Get(row, column), columns.At(column).dataType, culture);
}

bool GridModel::FitColumns(std::span<const std::size_t> which) {
    if (view == nullptr) {
        return false;
    }
    for (const std::size_t column : which) {
        columns.At(column).width = view->BestWidth(column);
    }
    Changed();
    return true;
}

bool GridModel::ClickHeading(std::size_t column) {
    const auto sorting = rows.Sorting();
    return SortByUser(column, sorting && sorting->column == column && !sorting->descending);
}

bool GridModel::SortByUser(std::size_t column, bool descending) {
    std::array<Value, 2> arguments{static_cast<std::int32_t>(columns.PositionOf(column)), false};
    events.Raise(u"BeforeClickSort", arguments);
    if (ToBoolean(arguments[1], culture)) {
        return false;
    }
    Sort(column, descending);
    return true;
}

bool GridModel::AskGroupChange(GroupOperation operation, std::int32_t what, std::int32_t place) {
    std::array<Value, 7> arguments{static_cast<std::int32_t>(operation),
                                   what,
                                   place,
                                   std::int32_t{0},
                                   std::int32_t{0},
                                   false,
                                   false};
    events.Raise(u"BeforeGroupChange", arguments);
    return !ToBoolean(arguments[6], culture);
}

bool GridModel::GroupByUser(std::size_t column, std::size_t place) {
    std::vector<Grouping> groups = rows.Groups();
    const bool isGrouped = std::any_of(groups.begin(), groups.end(), [&](const Grouping& group) {
        return group.column == column;
    });
    const std::size_t at = std::min(place, groups.size());
    if (isGrouped ||
        !AskGroupChange(GroupOperation::Add, static_cast<std::int32_t>(columns.PositionOf(column)),
                        static_cast<std::int32_t>(at))) {
        return false;
    }
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(at), Grouping{column, false});
    ChangeGroups(std::move(groups));
    return true;
}

bool GridModel::UngroupByUser(std::size_t place) {
    std::vector<Grouping> groups = rows.Groups();
    if (place >= groups.size() ||
        !AskGroupChange(GroupOperation::Remove, static_cast<std::int32_t>(place), -1)) {
        return false;
    }
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(place));
    ChangeGroups(std::move(groups));
    return true;
}

bool GridModel::MoveGroupByUser(std::size_t from, std::size_t to) {
    std::vector<Grouping> groups = rows.Groups();
    if (from >= groups.size() || to >= groups.size() || from == to ||
        !AskGroupChange(GroupOperation::Move, static_cast<std::int32_t>(from),
                        static_cast<std::int32_t>(to))) {
        return false;
    }
    const Grouping moved = groups[from];
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(from));
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(to), moved);
    ChangeGroups(std::move(groups));
    return true;
}

} // namespace talvix::grid
