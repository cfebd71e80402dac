#include "automation/failure.h"
#include "automation/text.h"
#include "grid/model/row_model.h"

#include <algorithm>

namespace talvix::grid {

bool RowModel::IsSelected(const RowRef& row) const {
    CheckAlive(row);
    return IsHeading(row.line) ? tree_.At(NodeOf(row)).selected
                               : selected_.Has(static_cast<Slot>(row.line));
}

void RowModel::Select(const RowRef& row, bool selected) {
    CheckAlive(row);
    if (IsHeading(row.line)) {
        tree_.At(NodeOf(row)).selected = selected;
        selected_.BreakUniformity();
    } else {
        selected_.Set(static_cast<Slot>(row.line), selected);
    }
    ++selectionVersion_;
}

void RowModel::SelectRange(std::int32_t first, std::int32_t last) {
    Compact();
    if (first < 1 || last > Count() || first > last) {
        throw Failure(failure_number::kBadIndex, u"A range of rows lies between 1 and " +
                                                     DecimalText(Count()) +
                                                     u", its first row not behind its last");
    }
    if (first == 1 && last == Count()) {
        SelectAllOrNone(true);
        return;
    }
    for (std::int32_t number = first; number <= last; ++number) {
        const Line line = Lines()[static_cast<std::size_t>(number) - 1];
        if (IsHeading(line)) {
            tree_.At(~line).selected = true;
            selected_.BreakUniformity();
        } else {
            selected_.Set(static_cast<Slot>(line), true);
        }
    }
    ++selectionVersion_;
}

void RowModel::SelectUnfiltered(std::int32_t first, std::int32_t last) {
    SelectRange(first, last);
    LeaveHiddenRows();
}

void RowModel::ClearSelection() {
    SelectAllOrNone(false);
}

void RowModel::SelectAllOrNone(bool selected) {
    selected_.SetAll(selected);
    for (GroupNode& node : tree_.Nodes()) {
        node.selected = selected;
    }
    ++selectionVersion_;
}

const std::vector<Range>& RowModel::Ranges() {
    Compact();
    if (rangesVersion_ == version_ && rangesSelection_ == selectionVersion_) {
        return ranges_;
    }
    rangesSelection_ = selectionVersion_;
    rangesVersion_ = version_;
    ranges_.clear();
    if (selected_.IsUniform()) {
        if (selected_.Base() && Count() > 0) {
            ranges_.emplace_back(1, Count());
        }
        return ranges_;
    }
    const std::vector<Line>& lines = Lines();
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const Line line = lines[at];
        const bool selected =
            IsHeading(line) ? tree_.At(~line).selected : selected_.Has(static_cast<Slot>(line));
        const auto number = static_cast<std::int32_t>(at) + 1;
        if (!selected) {
            continue;
        }
        if (!ranges_.empty() && ranges_.back().second == number - 1) {
            ranges_.back().second = number;
        } else {
            ranges_.emplace_back(number, number);
        }
    }
    return ranges_;
}

void RowModel::SetCurrent(const RowRef& row) {
    if (row.id == 0) {
        current_ = RowRef{};
        return;
    }
    CheckAlive(row);
    current_ = row;
    if (!IsSelected(row)) {
        ClearSelection();
        Select(row, true);
    }
}

} // namespace talvix::grid
