#pragma once

#include "grid/model/cell_store.h"

#include <cstdint>
#include <vector>

namespace talvix::grid {

/// Which slots are selected. Selecting all or none is one step, however many there are.
class SelectionMarks {
public:
    /// Makes room for so many slots.
    void Reach(std::size_t slots) {
        if (marks_.size() < slots) {
            marks_.resize(slots, 0);
        }
    }
    bool Has(Slot slot) const {
        return marks_[slot] >> 1U == round_ ? (marks_[slot] & 1U) != 0 : base_;
    }
    void Set(Slot slot, bool selected) {
        marks_[slot] = (round_ << 1U) | (selected ? 1U : 0U);
        isUniform_ = isUniform_ && selected == base_;
    }
    /// Selects all slots, or none.
    void SetAll(bool selected) {
        constexpr std::uint32_t kLastRound = 0x7FFFFFFF;
        if (round_ == kLastRound) {
            marks_.assign(marks_.size(), 0);
            round_ = 0;
        }
        ++round_;
        base_ = selected;
        isUniform_ = true;
    }
    /// True while every slot is as SetAll has left it.
    bool IsUniform() const { return isUniform_; }
    bool Base() const { return base_; }
    /// Something beside the slots has left the common state.
    void BreakUniformity() { isUniform_ = false; }

private:
    std::vector<std::uint32_t> marks_; ///< the round of the last Set, and its bit
    std::uint32_t round_ = 1;
    bool base_ = false;
    bool isUniform_ = true;
};

} // namespace talvix::grid
