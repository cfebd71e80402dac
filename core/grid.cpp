#include "core/grid.h"

#include "automation/coercion.h"
#include "automation/failure.h"

#include <cmath>

namespace talvix {

namespace {

constexpr std::int32_t kAll = -1;
constexpr std::int32_t kDataCell = 3; // area of a hit

/// The events in the order of their numbers, for a control that does not name them.
constexpr std::u16string_view kEvents[] = {
    u"AfterGroupChange", u"BeforeClickSort", u"BeforeGroupChange", u"Click",       u"DblClick",
    u"KeyDown",          u"MouseDown",       u"MouseUp",           u"OLEDragOver", u"OLEDragDrop"};

/// Counts and numbers come from a control of our contract as numbers; anything else is a failure.
std::int32_t Number(const Value& value) {
    const auto number = NumericContent(value);
    if (!number || !(std::fabs(*number) <= INT32_MAX)) {
        throw Failure(failure_number::kTypeMismatch, u"The grid answered without a number");
    }
    return static_cast<std::int32_t>(*number);
}

std::u16string Text(const Value& value) {
    const auto* text = value.If<std::u16string>();
    if (text == nullptr) {
        throw Failure(failure_number::kTypeMismatch, u"The grid answered without a text");
    }
    return *text;
}

} // namespace

bool GridRow::IsGroup() const {
    return Number(row_.Call(u"IsGroup")) != 0;
}

std::int32_t GridRow::Id() const {
    return Number(row_.Call(u"Id"));
}

Value GridRow::Get(std::u16string_view key) const {
    return row_.Call(u"Value", key);
}

void GridRow::Set(std::u16string_view key, Value value) const {
    cell_[0].AssignText(key);
    cell_[1] = std::move(value);
    row_.Put(u"Value", cell_);
}

void GridRow::SetPicture(std::u16string_view key, const Value& picture) const {
    row_.SetAt(u"Picture", key, picture);
}

void GridColumn::SetCaption(std::u16string_view caption) const {
    column_.Set(u"Caption", caption);
}

void GridColumn::SetDataType(std::int32_t dataType) const {
    column_.Set(u"DataType", dataType);
}

void GridColumn::SetWidth(std::int32_t width) const {
    column_.Set(u"Width", width);
}

void GridColumn::SetAlignment(std::int32_t alignment) const {
    column_.Set(u"Alignment", alignment);
}

void GridColumn::SetHeaderAlignment(std::int32_t alignment) const {
    column_.Set(u"HeaderAlignment", alignment);
}

void GridColumn::SetHidden(bool hidden) const {
    column_.Set(u"Hidden", hidden);
}

std::u16string GridColumn::Key() const {
    return Text(column_.Call(u"Key"));
}

std::u16string GridColumn::Caption() const {
    return Text(column_.Call(u"Caption"));
}

bool GridColumn::IsHidden() const {
    return Number(column_.Call(u"Hidden")) != 0;
}

void Grid::SetRedraw(bool on) const {
    grid_.Set(u"Redraw", on);
}

void Grid::SetMultiSelect(bool on) const {
    grid_.Set(u"MultiSelect", on);
}

void Grid::SetFullRowSelect(bool on) const {
    grid_.Set(u"FullRowSelect", on);
}

void Grid::SetAllowEdit(bool on) const {
    grid_.Set(u"AllowEdit", on);
}

void Grid::SetHeaderVisible(bool on) const {
    grid_.Set(u"HeaderVisible", on);
}

void Grid::SetGroupByBox(bool on) const {
    grid_.Set(u"GroupByBox", on);
}

void Grid::SetGroupByBoxText(std::u16string_view text) const {
    grid_.Set(u"GroupByBoxText", text);
}

void Grid::SetImageList(std::int64_t handle) const {
    // A 32-bit host's grid knows Long only; handles of image lists fit where the process is 32-bit.
    const bool fits = handle >= INT32_MIN && handle <= INT32_MAX;
    grid_.Set(u"ImageList", fits ? Value(static_cast<std::int32_t>(handle)) : Value(handle));
}

GridColumn Grid::AddColumn(std::u16string_view key) const {
    return GridColumn(grid_[u"Columns"](u"Add", key));
}

GridColumn Grid::ColumnAt(std::u16string_view key) const {
    return GridColumn(grid_(u"Columns", key));
}

std::int32_t Grid::ColumnCount() const {
    return Number(grid_[u"Columns"].Call(u"Count"));
}

GridColumn Grid::ColumnAt(std::int32_t position) const {
    return GridColumn(grid_(u"Columns", position));
}

Late Grid::Rows() const {
    const std::shared_ptr<Late> rows = rows_; // a host may have the grid found anew meanwhile
    if (!*rows) {
        *rows = grid_[u"Rows"];
    }
    return *rows;
}

std::int32_t Grid::RowCount() const {
    return Number(Rows().Call(u"Count"));
}

GridRow Grid::RowAt(std::int32_t number) const {
    return GridRow(grid_(u"Rows", number));
}

GridRow Grid::AddRow() const {
    return GridRow(Rows()[u"Add"]);
}

void Grid::RemoveRow(const GridRow& row) const {
    Rows().Call(u"Remove", row.Object().Get());
}

GridRow Grid::CurrentRow() const {
    return GridRow(grid_[u"CurrentRow"]);
}

void Grid::SetCurrentRow(std::int32_t number) const {
    grid_.Set(u"CurrentRow", number);
}

std::vector<RowRange> Grid::Selection() const {
    const Late selection = grid_[u"Selection"];
    const std::int32_t count = Number(selection.Call(u"Count"));
    std::vector<RowRange> ranges;
    for (std::int32_t number = 1; number <= count; ++number) {
        const Late range = selection(u"Item", number);
        const std::int32_t first = Number(range.Call(u"First"));
        const std::int32_t last = Number(range.Call(u"Last"));
        ranges.push_back({first, last});
    }
    return ranges;
}

std::int32_t Grid::GroupCount() const {
    return Number(grid_[u"Groups"].Call(u"Count"));
}

std::int32_t Grid::GroupIndent() const {
    return Number(grid_.Call(u"GroupIndent"));
}

GridHit Grid::HitTest(float x, float y) const {
    const Late hit = grid_(u"HitTest", x, y);
    const std::int32_t row = Number(hit.Call(u"Row"));
    const std::int32_t area = Number(hit.Call(u"Area"));
    return {row, area == kDataCell};
}

std::int64_t Grid::Window() const {
    const auto handle = NumericContent(grid_.Call(u"hWnd"));
    return static_cast<std::int64_t>(handle.value_or(0));
}

std::int32_t Grid::Find(std::u16string_view key, const Value& value) const {
    return Number(grid_.Call(u"Find", key, value));
}

void Grid::RefreshRows() const {
    grid_.Call(u"RefreshRows", kAll, kAll);
}

void Grid::RefreshSort() const {
    grid_.Call(u"RefreshSort", kAll, kAll);
}

void Grid::RefreshSortWithEmptyList() const {
    grid_.Call(u"RefreshSort", kAll, kAll, List(std::make_shared<const std::vector<Value>>()));
}

void Grid::Expand() const {
    grid_.Call(u"Expand");
}

Subscription Grid::Connect(std::shared_ptr<EventSink> sink) const {
    return grid_.AsObject()->Subscribe(std::move(sink), kEvents);
}

} // namespace talvix
