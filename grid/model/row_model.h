#pragma once

#include "grid/model/row_state.h"

namespace talvix::grid {

/// Rows in display order with their cells, sorting, grouping, selection and current row. Row
/// numbers are counted from 1 and include group headings. What is not there raises Failure.
class RowModel : private RowState {
public:
    RowModel(ColumnSet& columns, const Culture& culture) : RowState(columns, culture) {}

    /// Makes the cells of so many columns.
    void ReachColumns(std::size_t count) {
        while (cells_.ColumnCount() < count) {
            cells_.AddColumn();
        }
    }
    std::int32_t Count() const { return static_cast<std::int32_t>(Lines().size()) - deadLines_; }
    RowRef At(std::int32_t number);
    RowRef Add();
    /// Removes a data row, and each heading that has no row left.
    void Remove(const RowRef& row);
    void Clear();
    bool IsAlive(const RowRef& row) const;
    /// Present number; 0 for a row that is gone.
    std::int32_t NumberOf(const RowRef& row);
    RowRef LastAdded() const { return lastAdded_; }
    /// Slots of the data rows in display order.
    std::vector<Slot> DataRows();

    /// A heading holds its group's value in the group's column, and Empty elsewhere.
    Value Get(const RowRef& row, std::size_t column) const;
    Value GetAt(Slot slot, std::size_t column) const { return cells_.Get(slot, column); }
    void Set(const RowRef& row, std::size_t column, const Value& value);
    Value PictureOf(const RowRef& row, std::size_t column) const;
    void SetPicture(const RowRef& row, std::size_t column, const Value& picture);
    /// Number of the first data row from `start` on with the value, 0 for none.
    std::int32_t Find(std::size_t column, const Value& value, std::int32_t start);
    void SortBy(std::size_t column, bool descending);
    /// Leaves the rows where they are.
    void Unsort() {
        sorting_.reset();
        inOrder_ = false;
    }
    std::optional<Grouping> Sorting() const { return sorting_; }
    const std::vector<Grouping>& Groups() const { return groups_; }
    void SetGroups(std::vector<Grouping> groups);
    /// Puts every row where sorting and grouping want it.
    void Place();
    /// The heading behind a row, or null for a data row.
    const GroupNode* HeadingOf(const RowRef& row) const;
    std::int32_t LevelOf(const RowRef& row) const;
    void SetExpanded(const RowRef& row, bool expanded);
    void SetAllExpanded(bool expanded);
    /// Opens all headings above a row.
    void Reveal(const RowRef& row);
    /// Hides the rows that do not hold the text; they leave the selection, and the current row
    /// moves off them. An empty text shows all rows again.
    void SetFilter(std::u16string_view text, std::optional<std::size_t> column);
    const QuickFilter& Filter() const { return filter_; }
    /// Number of the data rows that the filter lets pass.
    std::int32_t PassingCount();
    /// Columns were shown, hidden or given another kind.
    void ColumnsChanged();
    /// Numbers of the rows that neither a closed heading nor the filter hides, ascending.
    const std::vector<std::int32_t>& ShownNumbers();

    bool IsSelected(const RowRef& row) const;
    void Select(const RowRef& row, bool selected);
    void SelectRange(std::int32_t first, std::int32_t last);
    void ClearSelection();
    /// Ranges of row numbers, ascending.
    const std::vector<Range>& Ranges();
    /// Selects a range but for the rows that the filter hides.
    void SelectUnfiltered(std::int32_t first, std::int32_t last);
    /// Another number each time that the selection may have changed.
    std::uint64_t SelectionVersion() const { return selectionVersion_; }
    RowRef Current() const { return IsAlive(current_) ? current_ : RowRef{}; }
    /// A row that is not selected becomes the only selected one.
    void SetCurrent(const RowRef& row);

private:
    RowRef RefOf(Line line) const;
    bool IsDead(Line line) const;
    std::int32_t NodeOf(const RowRef& row) const;
    void CheckAlive(const RowRef& row) const;
    void Touch() { ++version_; }
    void Compact();
    void EnsurePositions();
    void MoveCurrentOff(Slot removed);
    Slot FreeSlot();
    void PlaceIntoGroups(std::vector<Slot>& rows);
    void Ungroup();
    std::int32_t Scan(std::size_t column, const Value& value, std::int32_t start);
    std::vector<std::uint8_t> HeadingsWithPassingRows();
    void LeaveHiddenRows();
    std::size_t EndOfGroup(std::size_t heading) const;
    void AppendShown(std::size_t from, std::size_t to, std::vector<std::int32_t>& shown);
    void UpdateShownBelow(const RowRef& heading);
    void SelectAllOrNone(bool selected);
    std::vector<std::uint64_t> KeysOf(std::size_t column);
};

} // namespace talvix::grid
