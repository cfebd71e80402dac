#include "automation/failure.h"
#include "grid/model/row_model.h"
#include "grid/model/sort_keys.h"

#include <algorithm>
#include <utility>

namespace talvix::grid {

std::vector<std::uint64_t> RowModel::KeysOf(std::size_t column) {
    return SortKeys(cells_, columns_.At(column), ids_, culture_);
}

void RowModel::SortBy(std::size_t column, bool descending) {
    sorting_ = Grouping{column, descending};
    inOrder_ = false;
    Place();
}

void RowModel::SetGroups(std::vector<Grouping> groups) {
    Compact();
    if (groups.empty()) {
        Ungroup();
    }
    groups_ = std::move(groups);
    Place();
}

void RowModel::Ungroup() {
    groups_.clear();
    tree_.Clear();
    display_.clear();
    std::fill(groupOf_.begin(), groupOf_.end(), kNoNode);
    positionsValid_ = false;
    Touch();
}

void RowModel::PlaceIntoGroups(std::vector<Slot>& rows) {
    std::vector<std::vector<std::uint64_t>> keys;
    for (const Grouping& group : groups_) {
        keys.push_back(KeysOf(group.column));
    }
    for (std::size_t level = groups_.size(); level-- > 0;) {
        StableSort(rows, keys[level], groups_[level].descending);
    }
    tree_.Build({rows, groups_, keys, cells_, columns_, culture_, [this] { return nextId_++; }},
                display_, groupOf_);
}

void RowModel::Place() {
    Compact();
    std::vector<Slot> rows(order_.begin(), order_.end());
    if (sorting_ && !inOrder_) {
        StableSort(rows, KeysOf(sorting_->column), sorting_->descending);
        order_.assign(rows.begin(), rows.end());
        inOrder_ = true;
    }
    std::fill(groupOf_.begin(), groupOf_.end(), kNoNode);
    if (!groups_.empty()) {
        try {
            PlaceIntoGroups(rows);
        } catch (...) { // all rows show without groups
            Ungroup();
            throw;
        }
    }
    if (selected_.Base()) { // headings may have come that are not selected
        selected_.BreakUniformity();
    }
    positionsValid_ = false;
    Touch();
}

const GroupNode* RowModel::HeadingOf(const RowRef& row) const {
    CheckAlive(row);
    return IsHeading(row.line) ? &tree_.At(NodeOf(row)) : nullptr;
}

std::int32_t RowModel::LevelOf(const RowRef& row) const {
    const GroupNode* heading = HeadingOf(row);
    return heading == nullptr ? static_cast<std::int32_t>(groups_.size()) : heading->level;
}

void RowModel::SetExpanded(const RowRef& row, bool expanded) {
    if (HeadingOf(row) == nullptr) {
        throw Failure(failure_number::kInvalidArgument,
                      u"Only a group heading can be opened or closed");
    }
    GroupNode& node = tree_.At(NodeOf(row));
    if (std::exchange(node.expanded, expanded) == expanded) {
        return;
    }
    if (shownVersion_ == version_ && !filter_.IsOn()) {
        UpdateShownBelow(row);
    } else {
        shownVersion_ = 0;
    }
}

/// Place in the lines behind everything that belongs to a heading.
std::size_t RowModel::EndOfGroup(std::size_t heading) const {
    const std::vector<Line>& lines = Lines();
    const std::int32_t level = tree_.At(~lines[heading]).level;
    std::size_t end = heading + 1;
    while (end < lines.size() &&
           (IsHeading(lines[end]) ? tree_.At(~lines[end]).level > level
                                  : groupOf_[static_cast<Slot>(lines[end])] != kNoNode)) {
        ++end;
    }
    return end;
}

/// A heading was opened or closed: only what belongs to it comes or goes.
void RowModel::UpdateShownBelow(const RowRef& heading) {
    const std::int32_t number = NumberOf(heading);
    const auto own = std::lower_bound(shown_.begin(), shown_.end(), number);
    if (own == shown_.end() || *own != number) {
        return; // hidden itself
    }
    shownVersion_ = 0; // until all is in place again
    const auto place = static_cast<std::size_t>(number) - 1;
    const std::size_t end = EndOfGroup(place);
    const auto behind = std::upper_bound(own, shown_.end(), static_cast<std::int32_t>(end));
    const auto next = shown_.erase(own + 1, behind);
    if (tree_.At(NodeOf(heading)).expanded) {
        std::vector<std::int32_t> below;
        AppendShown(place + 1, end, below);
        shown_.insert(next, below.begin(), below.end());
    }
    shownVersion_ = version_;
}

void RowModel::SetAllExpanded(bool expanded) {
    for (GroupNode& node : tree_.Nodes()) {
        node.expanded = expanded;
    }
    Touch();
}

void RowModel::Reveal(const RowRef& row) {
    CheckAlive(row);
    std::int32_t node =
        IsHeading(row.line) ? tree_.At(NodeOf(row)).parent : groupOf_[static_cast<Slot>(row.line)];
    for (; node != kNoNode; node = tree_.At(node).parent) {
        if (!tree_.At(node).expanded) {
            tree_.At(node).expanded = true;
            Touch();
        }
    }
}

void RowModel::ColumnsChanged() {
    inOrder_ = false;
    if (filter_.IsOn()) {
        filter_.ForgetAll();
        LeaveHiddenRows();
        Touch();
    }
}

void RowModel::SetFilter(std::u16string_view text, std::optional<std::size_t> column) {
    if (filter_.Column() != column) {
        filter_.SetColumn(column);
    }
    filter_.SetText(text);
    LeaveHiddenRows();
    Touch();
}

std::int32_t RowModel::PassingCount() {
    Compact();
    return static_cast<std::int32_t>(std::count_if(order_.begin(), order_.end(), [&](Line line) {
        return filter_.Passes(static_cast<Slot>(line));
    }));
}

/// Nobody may act on rows that he cannot see.
void RowModel::LeaveHiddenRows() {
    Compact();
    if (!filter_.IsOn()) {
        return;
    }
    const std::vector<std::uint8_t> passing = HeadingsWithPassingRows();
    for (const Line line : Lines()) {
        if (IsHeading(line) && passing[NodeOfHeading(line)] == 0) {
            tree_.At(~line).selected = false;
            selected_.BreakUniformity();
        } else if (!IsHeading(line) && !filter_.Passes(static_cast<Slot>(line))) {
            selected_.Set(static_cast<Slot>(line), false);
        }
    }
    ++selectionVersion_;
    const RowRef current = Current();
    if (current.id != 0 && !IsHeading(current.line) &&
        !filter_.Passes(static_cast<Slot>(current.line))) {
        MoveCurrentOff(static_cast<Slot>(current.line));
    }
}

/// By node; empty while nothing is filtered.
std::vector<std::uint8_t> RowModel::HeadingsWithPassingRows() {
    std::vector<std::uint8_t> passing;
    if (!filter_.IsOn() || groups_.empty()) {
        return passing;
    }
    passing.resize(tree_.Nodes().size());
    for (const Line line : order_) {
        if (!filter_.Passes(static_cast<Slot>(line))) {
            continue;
        }
        std::int32_t node = groupOf_[static_cast<Slot>(line)];
        while (node != kNoNode && passing[static_cast<std::size_t>(node)] == 0) {
            passing[static_cast<std::size_t>(node)] = 1;
            node = tree_.At(node).parent;
        }
    }
    return passing;
}

const std::vector<std::int32_t>& RowModel::ShownNumbers() {
    Compact();
    if (shownVersion_ != version_) {
        shown_.clear();
        AppendShown(0, Lines().size(), shown_);
        shownVersion_ = version_;
    }
    return shown_;
}

/// The numbers of the shown lines from a place to before another.
void RowModel::AppendShown(std::size_t from, std::size_t to, std::vector<std::int32_t>& shown) {
    const std::vector<std::uint8_t> passing = HeadingsWithPassingRows();
    const auto isFiltered = [&](Line line) {
        return filter_.IsOn() && (IsHeading(line) ? passing[NodeOfHeading(line)] == 0
                                                  : !filter_.Passes(static_cast<Slot>(line)));
    };
    constexpr std::int32_t kAllShown = INT32_MAX;
    std::int32_t hiddenBelow = kAllShown; // level of the closed heading that hides what follows
    const std::vector<Line>& lines = Lines();
    for (std::size_t at = from; at < to; ++at) {
        const bool isHeading = IsHeading(lines[at]);
        const bool isPlaced = isHeading || groupOf_[static_cast<Slot>(lines[at])] != kNoNode;
        if (!isPlaced || (isHeading && tree_.At(~lines[at]).level <= hiddenBelow)) {
            hiddenBelow = kAllShown;
        }
        if (hiddenBelow != kAllShown || isFiltered(lines[at])) {
            continue;
        }
        shown.push_back(static_cast<std::int32_t>(at) + 1);
        if (isHeading && !tree_.At(~lines[at]).expanded) {
            hiddenBelow = tree_.At(~lines[at]).level;
        }
    }
}

} // namespace talvix::grid
