#pragma once

#include "grid/model/group_tree.h"
#include "grid/model/quick_filter.h"
#include "grid/model/selection_marks.h"
#include "grid/model/value_index.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace talvix::grid {

/// A row that stays the same through all moves; it is gone when its id no longer lives.
struct RowRef {
    Line line = 0;       ///< where it stood last: a hint
    std::int32_t id = 0; ///< 0 for no row
    bool operator==(const RowRef& other) const { return id == other.id; }
};

using Range = std::pair<std::int32_t, std::int32_t>;

/// What the rows are made of, for RowModel alone, which keeps it consistent: cells and identities
/// by slot, lines in display order, and what was derived from them until the next change.
struct RowState {
    RowState(ColumnSet& columns, const Culture& culture)
        : columns_(columns),
          culture_(culture),
          index_(cells_, culture),
          filter_(cells_, columns, culture) {}

    const std::vector<Line>& Lines() const { return groups_.empty() ? order_ : display_; }

    ColumnSet& columns_;
    const Culture& culture_;
    CellStore cells_;
    ValueIndex index_;
    QuickFilter filter_;
    GroupTree tree_;
    std::vector<std::int32_t> ids_; ///< by slot, 0 while free
    SelectionMarks selected_;
    std::vector<std::int32_t> groupOf_;   ///< innermost heading, kNoNode before it is placed
    std::vector<std::int32_t> positions_; ///< place in Lines(), while positionsValid_
    std::vector<Slot> freeSlots_;
    std::vector<Slot> deadSlots_; ///< removed, but still standing in the lines
    std::vector<Line> order_;     ///< data rows; the lines themselves while nothing is grouped
    std::vector<Line> display_;   ///< headings and data rows, while grouped
    std::vector<std::int32_t> headingPositions_;
    std::vector<Grouping> groups_;
    std::optional<Grouping> sorting_;
    std::map<std::pair<std::int32_t, std::size_t>, Value> pictures_; ///< by id and column
    std::int32_t nextId_ = 1;
    std::int32_t deadLines_ = 0;
    bool positionsValid_ = true;
    bool inOrder_ = false; ///< order_ is as sorting_ wants it
    RowRef current_, lastAdded_;
    std::uint64_t version_ = 1; ///< of the order
    std::uint64_t selectionVersion_ = 1;
    std::uint64_t rangesVersion_ = 0;   ///< of the order for which ranges_ was made
    std::uint64_t rangesSelection_ = 0; ///< and of the selection
    std::uint64_t shownVersion_ = 0;    ///< of the order for which shown_ was made
    std::vector<Range> ranges_;
    std::vector<std::int32_t> shown_;
};

} // namespace talvix::grid
