#include "automation/coercion.h"
#include "automation/text.h"
#include "grid/model/grid_objects.h"
#include "grid/model/rows_as_text.h"
#include "grid/model/saved_layout.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace talvix::grid {

namespace {

using access::kGet;
using access::kGetPut;
using access::kMethod;
constexpr double kPointsPerInch = 72;

using Call = MemberCall;

/// Reads or writes a switch.
Value Switch(GridObject& grid, const Call& call, bool& option) {
    if (!call.IsPut()) {
        return option;
    }
    option = ToBoolean(*call.put, grid.model->culture);
    grid.model->Changed();
    return {};
}

Value Redraw(GridObject& grid, const Call& call) {
    if (!call.IsPut()) {
        return grid.model->Redraw();
    }
    grid.model->SetRedraw(ToBoolean(*call.put, grid.model->culture));
    return {};
}

Value CurrentRow(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    if (!call.IsPut()) {
        return RowValue(grid.model, model.rows.Current());
    }
    model.rows.SetCurrent(RowFrom(grid.model, *call.put));
    model.Changed();
    return {};
}

Value GroupByBoxText(GridObject& grid, const Call& call) {
    if (!call.IsPut()) {
        return grid.model->options.groupByBoxText;
    }
    grid.model->options.groupByBoxText = ToText(*call.put, grid.model->culture);
    grid.model->Changed();
    return {};
}

Value GroupIndent(GridObject& grid, const Call& call) {
    if (!call.IsPut()) {
        return grid.model->options.groupIndent;
    }
    const std::int32_t indent = ToLong(*call.put, grid.model->culture);
    if (indent < 0 || indent > 1000) {
        throw Failure(failure_number::kInvalidArgument, u"GroupIndent lies between 0 and 1000");
    }
    grid.model->options.groupIndent = indent;
    grid.model->Changed();
    return {};
}

Value ImageList(GridObject& grid, const Call& call) {
    std::int64_t& handle = grid.model->options.imageList;
    if (!call.IsPut()) {
        const bool fits = handle >= INT32_MIN && handle <= INT32_MAX;
        return fits ? Value(static_cast<std::int32_t>(handle)) : Value(handle);
    }
    const auto* large = call.put->If<std::int64_t>();
    handle = large != nullptr ? *large
                              : static_cast<std::int64_t>(ToNumber(*call.put, grid.model->culture));
    grid.model->Changed();
    return {};
}

Value Window(GridObject& grid, const Call&) {
    const std::int64_t window = grid.model->view == nullptr ? 0 : grid.model->view->Window();
    return static_cast<std::int32_t>(window);
}

Value Find(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    const std::size_t column = model.columns.IndexOf(call.At(0));
    const std::int32_t start = call.At(2).IsAbsent() ? 1 : ToLong(call.At(2), model.culture);
    if (start < 1) {
        throw Failure(failure_number::kBadIndex, u"Rows are numbered from 1");
    }
    return model.rows.Find(column, call.At(1), start);
}

/// The pixel that a point lies in. Hosts make points of whole pixels with single precision, and so
/// the pixel's first point may come a few last places short.
std::int32_t PixelsFromPoints(const Value& points, const GridModel& model) {
    constexpr double kLastPlaces = 4.0 * std::numeric_limits<float>::epsilon();
    const double pixels =
        ToNumber(points, model.culture) * model.layout.metrics.dpi / kPointsPerInch;
    const double first = std::round(pixels);
    const bool isFirst = std::abs(pixels - first) <= std::abs(pixels) * kLastPlaces;
    return static_cast<std::int32_t>(std::clamp(isFirst ? first : std::floor(pixels), -1e9, 1e9));
}

Value HitTest(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    return std::make_shared<HitTestObject>(
        model.HitTest(PixelsFromPoints(call.At(0), model), PixelsFromPoints(call.At(1), model)));
}

Value Sort(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    const std::size_t column = model.columns.IndexOf(call.At(0));
    model.Sort(column, IsDescending(call.At(1), model.culture));
    return {};
}

/// -1 stands for all rows; anything else has to be a row.
void CheckRow(const SharedGrid& grid, const Value& row) {
    const auto number = NumericContent(row);
    if (!number || *number != -1) {
        RowFrom(grid, row);
    }
}

void CheckColumn(GridModel& model, const Value& column) {
    const auto number = NumericContent(column);
    if (!number || *number != -1) {
        model.columns.IndexOf(column);
    }
}

Value RefreshRows(GridObject& grid, const Call& call) {
    CheckRow(grid.model, call.At(0));
    CheckColumn(*grid.model, call.At(1));
    grid.model->Changed();
    return {};
}

Value RefreshSort(GridObject& grid, const Call& call) {
    CheckRow(grid.model, call.At(0));
    CheckColumn(*grid.model, call.At(1));
    grid.model->RefreshSort();
    return {};
}

Value Expand(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    const RowRef row =
        call.At(0).IsAbsent() ? model.rows.LastAdded() : RowFrom(grid.model, call.At(0));
    if (model.rows.IsAlive(row)) {
        model.Expand(row);
    }
    return {};
}

Value SetAllExpanded(GridObject& grid, bool expanded) {
    grid.model->rows.SetAllExpanded(expanded);
    grid.model->Changed();
    return {};
}

Value SaveRowsAsText(GridObject& grid, const Call& call) {
    return SaveRows(*grid.model, ToText(call.At(0), grid.model->culture));
}

Value LoadRowsFromText(GridObject& grid, const Call& call) {
    const Culture& culture = grid.model->culture;
    LoadRows(*grid.model, ToText(call.At(0), culture), ToText(call.At(1), culture));
    return {};
}

Value Filter(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    if (!call.IsPut()) {
        return model.rows.Filter().Text();
    }
    model.rows.SetFilter(ToText(*call.put, model.culture), model.rows.Filter().Column());
    model.Changed();
    return {};
}

Value FilterCount(GridObject& grid, const Call&) {
    return grid.model->rows.PassingCount();
}

/// The index that a key or a position stands for; nothing for -1 or "".
std::optional<std::size_t> ColumnOrNone(GridModel& model, const Value& column) {
    const auto number = NumericContent(column);
    const auto* key = column.If<std::u16string>();
    const bool isNone = (number && *number == -1) || (key != nullptr && key->empty());
    return isNone ? std::nullopt : std::optional(model.columns.IndexOf(column));
}

Value KeyOrNothing(const GridModel& model, std::optional<std::size_t> column) {
    return column ? model.columns.At(*column).key : std::u16string();
}

Value FilterColumn(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    if (!call.IsPut()) {
        return KeyOrNothing(model, model.rows.Filter().Column());
    }
    model.rows.SetFilter(std::u16string(model.rows.Filter().Text()),
                         ColumnOrNone(model, *call.put));
    model.Changed();
    return {};
}

Value FileColumn(GridObject& grid, const Call& call) {
    GridModel& model = *grid.model;
    if (!call.IsPut()) {
        return KeyOrNothing(model, model.options.fileColumn);
    }
    model.options.fileColumn = ColumnOrNone(model, *call.put);
    return {};
}

Value SaveLayoutText(GridObject& grid, const Call&) {
    return SaveLayout(*grid.model);
}

Value LoadLayoutText(GridObject& grid, const Call& call) {
    LoadLayout(*grid.model, ToText(call.At(0), grid.model->culture));
    return {};
}

Value SelectionText(GridObject& grid, const Call&) {
    return SelectedRowsAsText(*grid.model);
}

template <typename Collection>
Value CollectionOf(GridObject& grid, const Call&) {
    return std::make_shared<Collection>(grid.model);
}

template <bool Layout::*option>
Value LayoutSwitch(GridObject& grid, const Call& call) {
    return Switch(grid, call, grid.model->layout.*option);
}

template <bool GridOptions::*option>
Value OptionSwitch(GridObject& grid, const Call& call) {
    return Switch(grid, call, grid.model->options.*option);
}

Value ExpandAll(GridObject& grid, const Call&) {
    return SetAllExpanded(grid, true);
}

Value CollapseAll(GridObject& grid, const Call&) {
    return SetAllExpanded(grid, false);
}

std::vector<Member<GridObject>> Table() {
    return {
        {{u"Columns", kGet, u""}, CollectionOf<ColumnsObject>},
        {{u"Rows", kGet, u""}, CollectionOf<RowsObject>},
        {{u"Groups", kGet, u""}, CollectionOf<GroupsObject>},
        {{u"Selection", kGet, u""}, CollectionOf<SelectionObject>},
        {{u"CurrentRow", kGetPut, u""}, CurrentRow},
        {{u"Redraw", kGetPut, u""}, Redraw},
        {{u"GroupByBox", kGetPut, u""}, LayoutSwitch<&Layout::groupByBox>},
        {{u"GroupByBoxText", kGetPut, u""}, GroupByBoxText},
        {{u"GroupIndent", kGetPut, u""}, GroupIndent},
        {{u"ImageList", kGetPut, u""}, ImageList},
        {{u"MultiSelect", kGetPut, u""}, OptionSwitch<&GridOptions::multiSelect>},
        {{u"FullRowSelect", kGetPut, u""}, OptionSwitch<&GridOptions::fullRowSelect>},
        {{u"AllowEdit", kGetPut, u""}, OptionSwitch<&GridOptions::allowEdit>},
        {{u"HeaderVisible", kGetPut, u""}, LayoutSwitch<&Layout::headerVisible>},
        {{u"hWnd", kGet, u""}, Window},
        {{u"Find", kMethod, u"Column Value [StartRow]"}, Find},
        {{u"HitTest", kMethod, u"x y"}, HitTest},
        {{u"Sort", kMethod, u"Column [Order]"}, Sort},
        {{u"RefreshRows", kMethod, u"Row Column"}, RefreshRows},
        {{u"RefreshSort", kMethod, u"Row Column [List]"}, RefreshSort},
        {{u"Expand", kMethod, u"[Row]"}, Expand},
        {{u"ExpandAll", kMethod, u""}, ExpandAll},
        {{u"CollapseAll", kMethod, u""}, CollapseAll},
        {{u"SaveRowsAsText", kMethod, u"Separator"}, SaveRowsAsText},
        {{u"LoadRowsFromText", kMethod, u"Text Separator"}, LoadRowsFromText},
        {{u"Filter", kGetPut, u""}, Filter},
        {{u"FilterColumn", kGetPut, u""}, FilterColumn},
        {{u"SaveLayout", kMethod, u""}, SaveLayoutText},
        {{u"LoadLayout", kMethod, u"Text"}, LoadLayoutText},
        {{u"FileColumn", kGetPut, u""}, FileColumn},
        {{u"SelectionText", kGet, u""}, SelectionText},
        {{u"FilterCount", kGet, u""}, FilterCount},
    };
}

} // namespace

const MemberTable<GridObject>& GridObject::Members() {
    static const MemberTable<GridObject> members(Table());
    return members;
}

Value RowValue(const SharedGrid& grid, const RowRef& row) {
    return row.id == 0 ? Nothing() : Value(std::make_shared<RowObject>(grid, row));
}

RowRef RowFrom(const SharedGrid& grid, const Value& rowOrNumber) {
    if (rowOrNumber.IsNothing()) {
        return {};
    }
    const auto* object = rowOrNumber.If<Object>();
    if (object == nullptr) {
        const std::int32_t number = ToLong(rowOrNumber, grid->culture);
        return number == 0 ? RowRef{} : grid->rows.At(number);
    }
    const auto* row = dynamic_cast<const RowObject*>(object->get());
    if (row == nullptr || row->model != grid) {
        throw Failure(failure_number::kTypeMismatch,
                      u"A row of this grid or a row number was expected");
    }
    if (!grid->rows.IsAlive(row->row)) {
        throw Failure(failure_number::kObjectGone, u"The row has been removed from the grid");
    }
    return row->row;
}

bool IsDescending(const Value& order, const Culture& culture) {
    const std::int32_t number = order.IsAbsent() ? 0 : ToLong(order, culture);
    if (number != 0 && number != 1) {
        throw Failure(failure_number::kInvalidArgument,
                      u"Order is 0 (ascending) or 1 (descending)");
    }
    return number == 1;
}

} // namespace talvix::grid
