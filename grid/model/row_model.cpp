#include "grid/model/row_model.h"

#include "automation/failure.h"
#include "automation/text.h"

#include <algorithm>

namespace talvix::grid {

namespace {

Slot SlotIn(const RowRef& row) {
    return static_cast<Slot>(row.line);
}

/// Makes a list at least that long, with room to grow as lists do that grow one by one.
void Reach(std::vector<std::int32_t>& list, std::size_t size, std::int32_t value) {
    while (list.size() < size) {
        list.push_back(value);
    }
}

} // namespace

RowRef RowModel::RefOf(Line line) const {
    return {line, IsHeading(line) ? tree_.At(~line).id : ids_[static_cast<Slot>(line)]};
}

bool RowModel::IsDead(Line line) const {
    return IsHeading(line) ? tree_.At(~line).rows == 0 : ids_[static_cast<Slot>(line)] == 0;
}

std::int32_t RowModel::NodeOf(const RowRef& row) const {
    return IsHeading(row.line) ? tree_.Find(row.id, ~row.line) : kNoNode;
}

bool RowModel::IsAlive(const RowRef& row) const {
    if (row.id == 0) {
        return false;
    }
    if (IsHeading(row.line)) {
        return NodeOf(row) != kNoNode;
    }
    return SlotIn(row) < ids_.size() && ids_[SlotIn(row)] == row.id;
}

void RowModel::CheckAlive(const RowRef& row) const {
    if (!IsAlive(row)) {
        throw Failure(failure_number::kObjectGone, u"The row has been removed from the grid");
    }
}

RowRef RowModel::At(std::int32_t number) {
    Compact();
    if (number < 1 || number > Count()) {
        throw Failure(failure_number::kBadIndex, u"There is no row " + DecimalText(number) +
                                                     u"; rows are numbered from 1 to " +
                                                     DecimalText(Count()));
    }
    return RefOf(Lines()[static_cast<std::size_t>(number) - 1]);
}

/// A free slot, which stays free until the caller takes it.
Slot RowModel::FreeSlot() {
    if (freeSlots_.empty()) {
        const std::size_t slots = ids_.size() + 1;
        cells_.Reserve(slots);
        selected_.Reach(slots);
        Reach(groupOf_, slots, kNoNode);
        Reach(positions_, slots, 0);
        freeSlots_.reserve(1);
        ids_.push_back(0);
        freeSlots_.push_back(static_cast<Slot>(slots - 1));
    }
    return freeSlots_.back();
}

RowRef RowModel::Add() {
    const Slot slot = FreeSlot();
    if (display_.size() == display_.capacity() && !groups_.empty()) {
        display_.reserve(display_.size() + display_.size() / 2 + 16);
    }
    positions_[slot] = static_cast<std::int32_t>(Lines().size());
    order_.push_back(static_cast<Line>(slot)); // the last step that can fail
    if (!groups_.empty()) {
        display_.push_back(static_cast<Line>(slot));
    }
    freeSlots_.pop_back();
    filter_.Forget(slot);
    ids_[slot] = nextId_++;
    inOrder_ = false;
    selected_.Set(slot, false);
    groupOf_[slot] = kNoNode;
    lastAdded_ = RefOf(static_cast<Line>(slot));
    Touch();
    return lastAdded_;
}

void RowModel::Remove(const RowRef& row) {
    CheckAlive(row);
    if (IsHeading(row.line)) {
        throw Failure(failure_number::kInvalidArgument,
                      u"A group heading cannot be removed; it goes with the last of its rows");
    }
    const Slot slot = SlotIn(row);
    deadSlots_.push_back(slot); // the only step that can fail
    deadLines_ += 1 + tree_.TakeRow(groupOf_[slot]);
    cells_.ClearRow(slot);
    pictures_.erase(pictures_.lower_bound({row.id, 0}), pictures_.lower_bound({row.id + 1, 0}));
    ids_[slot] = 0;
    Touch();
    if (current_.id != 0 && !IsAlive(current_)) {
        MoveCurrentOff(slot);
    }
}

/// The next data row that the filter shows becomes current, else the one before, else none.
void RowModel::MoveCurrentOff(Slot removed) {
    EnsurePositions();
    const std::vector<Line>& lines = Lines();
    const auto own = static_cast<std::ptrdiff_t>(positions_[removed]);
    const auto isTaker = [&](Line line) {
        return !IsHeading(line) && !IsDead(line) && filter_.Passes(static_cast<Slot>(line));
    };
    const auto next = std::find_if(lines.begin() + own + 1, lines.end(), isTaker);
    if (next != lines.end()) {
        current_ = RefOf(*next);
        return;
    }
    const auto before = std::find_if(lines.rend() - own, lines.rend(), isTaker);
    current_ = before == lines.rend() ? RowRef{} : RefOf(*before);
}

void RowModel::Clear() {
    freeSlots_.reserve(ids_.size());
    for (const Line line : order_) {
        if (!IsDead(line)) {
            cells_.ClearRow(static_cast<Slot>(line));
            ids_[static_cast<Slot>(line)] = 0;
            freeSlots_.push_back(static_cast<Slot>(line));
        }
    }
    freeSlots_.insert(freeSlots_.end(), deadSlots_.begin(), deadSlots_.end());
    deadSlots_.clear();
    order_.clear();
    display_.clear();
    tree_.Clear();
    pictures_.clear();
    index_.Clear();
    deadLines_ = 0;
    positionsValid_ = true;
    current_ = lastAdded_ = RowRef{};
    Touch();
}

/// Takes removed rows and headings out of the lines, all in one pass.
void RowModel::Compact() {
    if (deadLines_ == 0) {
        return;
    }
    freeSlots_.reserve(ids_.size());
    const auto isDead = [&](Line line) { return IsDead(line); };
    order_.erase(std::remove_if(order_.begin(), order_.end(), isDead), order_.end());
    display_.erase(std::remove_if(display_.begin(), display_.end(), isDead), display_.end());
    freeSlots_.insert(freeSlots_.end(), deadSlots_.begin(), deadSlots_.end());
    deadSlots_.clear();
    deadLines_ = 0;
    positionsValid_ = false;
}

void RowModel::EnsurePositions() {
    if (positionsValid_) {
        return;
    }
    const std::vector<Line>& lines = Lines();
    headingPositions_.assign(tree_.Nodes().size(), 0);
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const Line line = lines[at];
        const std::int32_t node = ~line;
        std::int32_t& position = IsHeading(line) ? headingPositions_[static_cast<std::size_t>(node)]
                                                 : positions_[static_cast<Slot>(line)];
        position = static_cast<std::int32_t>(at);
    }
    positionsValid_ = true;
}

std::int32_t RowModel::NumberOf(const RowRef& row) {
    if (!IsAlive(row)) {
        return 0;
    }
    Compact();
    EnsurePositions();
    const std::int32_t position = IsHeading(row.line)
                                      ? headingPositions_[static_cast<std::size_t>(NodeOf(row))]
                                      : positions_[SlotIn(row)];
    return position + 1;
}

std::vector<Slot> RowModel::DataRows() {
    Compact();
    std::vector<Slot> rows;
    rows.reserve(order_.size());
    for (const Line line : Lines()) {
        if (!IsHeading(line)) {
            rows.push_back(static_cast<Slot>(line));
        }
    }
    return rows;
}

Value RowModel::Get(const RowRef& row, std::size_t column) const {
    CheckAlive(row);
    if (!IsHeading(row.line)) {
        return cells_.Get(SlotIn(row), column);
    }
    const GroupNode& node = tree_.At(NodeOf(row));
    const bool isOwn = groups_[static_cast<std::size_t>(node.level)].column == column;
    return isOwn ? node.value : Value();
}

void RowModel::Set(const RowRef& row, std::size_t column, const Value& value) {
    CheckAlive(row);
    if (IsHeading(row.line)) {
        throw Failure(failure_number::kInvalidArgument,
                      u"A group heading's value cannot be written");
    }
    cells_.Set(SlotIn(row), column, value);
    inOrder_ = inOrder_ && sorting_->column != column;
    index_.Enter(column, SlotIn(row));
    if (filter_.IsOn()) {
        filter_.Forget(SlotIn(row));
        if (!filter_.Passes(SlotIn(row))) {
            selected_.Set(SlotIn(row), false);
        }
        Touch();
    }
}

Value RowModel::PictureOf(const RowRef& row, std::size_t column) const {
    CheckAlive(row);
    const auto found = pictures_.find({row.id, column});
    return found == pictures_.end() ? Nothing() : found->second;
}

void RowModel::SetPicture(const RowRef& row, std::size_t column, const Value& picture) {
    CheckAlive(row);
    if (IsHeading(row.line)) {
        throw Failure(failure_number::kInvalidArgument, u"A group heading has no pictures");
    }
    if (!picture.Is<Object>() && !picture.IsNothing()) {
        throw Failure(failure_number::kTypeMismatch, u"A picture object or Nothing was expected");
    }
    if (picture.IsNothing()) {
        pictures_.erase({row.id, column});
    } else {
        pictures_[{row.id, column}] = picture;
    }
}

std::int32_t RowModel::Find(std::size_t column, const Value& value, std::int32_t start) {
    Compact();
    std::vector<Slot> candidates;
    if (!index_.Candidates(column, value, order_, candidates)) {
        return Scan(column, value, start);
    }
    std::int32_t first = 0;
    for (const Slot slot : candidates) {
        if (ids_[slot] == 0 || !index_.Holds(slot, column, value)) {
            continue;
        }
        EnsurePositions();
        const std::int32_t number = positions_[slot] + 1;
        first = number >= start && (first == 0 || number < first) ? number : first;
    }
    return first;
}

std::int32_t RowModel::Scan(std::size_t column, const Value& value, std::int32_t start) {
    const std::vector<Line>& lines = Lines();
    for (auto at = static_cast<std::size_t>(std::max(start, 1) - 1); at < lines.size(); ++at) {
        if (!IsHeading(lines[at]) && index_.Holds(static_cast<Slot>(lines[at]), column, value)) {
            return static_cast<std::int32_t>(at) + 1;
        }
    }
    return 0;
}

} // namespace talvix::grid
