#pragma once

#include "core/grid_row.h"

#include <vector>

namespace talvix {

/// Numbers of the first and the last row of a range.
struct RowRange {
    std::int32_t first = 0;
    std::int32_t last = 0;
};

/// What lies at a point of the grid.
struct GridHit {
    std::int32_t row = 0; ///< 0 for none
    bool isDataRow = false;
};

/// One column of the document grid.
class GridColumn {
public:
    explicit GridColumn(Late column) : column_(std::move(column)) {}

    void SetCaption(std::u16string_view caption) const;
    void SetDataType(std::int32_t dataType) const;
    void SetWidth(std::int32_t width) const;
    /// Sets the alignment of the cells.
    void SetAlignment(std::int32_t alignment) const;
    void SetHeaderAlignment(std::int32_t alignment) const;
    void SetHidden(bool hidden) const;
    std::u16string Key() const;
    std::u16string Caption() const;
    bool IsHidden() const;

private:
    Late column_;
};

/// The document grid as the component speaks to it. This file and its source are the only place
/// with the grid's member names: a site with another control changes them here. Each call goes to
/// the control; what fails there raises Failure.
class Grid {
public:
    Grid() = default;
    explicit Grid(Late grid) : grid_(std::move(grid)) {}

    explicit operator bool() const { return static_cast<bool>(grid_); }

    void SetRedraw(bool on) const;
    void SetMultiSelect(bool on) const;
    void SetFullRowSelect(bool on) const;
    void SetAllowEdit(bool on) const;
    void SetHeaderVisible(bool on) const;
    void SetGroupByBox(bool on) const;
    void SetGroupByBoxText(std::u16string_view text) const;
    /// Handle of a system image list, as a number.
    void SetImageList(std::int64_t handle) const;

    /// Failure when a column of that key is there already.
    GridColumn AddColumn(std::u16string_view key) const;
    GridColumn ColumnAt(std::u16string_view key) const;
    std::int32_t ColumnCount() const;
    /// Columns are counted from 0, in the order in which they are shown.
    GridColumn ColumnAt(std::int32_t position) const;

    std::int32_t RowCount() const;
    /// Rows are counted from 1, group headings included.
    GridRow RowAt(std::int32_t number) const;
    GridRow AddRow() const;
    void RemoveRow(const GridRow& row) const;
    /// The row that has the focus; none where there is no such row.
    GridRow CurrentRow() const;
    void SetCurrentRow(std::int32_t number) const;
    /// The selected rows in the grid's order, headings included.
    std::vector<RowRange> Selection() const;
    std::int32_t GroupCount() const;
    std::int32_t GroupIndent() const;
    /// The point is in points (1/72 inch) from the grid's top left corner.
    GridHit HitTest(float x, float y) const;
    /// Handle of the grid's window as a number, 0 while it has none.
    std::int64_t Window() const;
    /// Number of the first data row that holds the value, 0 for none; text without case.
    std::int32_t Find(std::u16string_view key, const Value& value) const;

    /// Brings the display of all rows up to date.
    void RefreshRows() const;
    /// Puts all rows into the current sort order and grouping.
    void RefreshSort() const;
    /// The same with the empty list that the control's full update takes.
    void RefreshSortWithEmptyList() const;
    /// Opens the headings above the row added last and scrolls it into view.
    void Expand() const;

    Subscription Connect(std::shared_ptr<EventSink> sink) const;

private:
    Late Rows() const;

    Late grid_;
    /// The grid's collection of rows, asked for once.
    std::shared_ptr<Late> rows_ = std::make_shared<Late>();
};

} // namespace talvix
