#include "grid/model/column_set.h"

#include "automation/coercion.h"
#include "automation/failure.h"
#include "automation/text.h"

#include <algorithm>
#include <cmath>

namespace talvix::grid {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::u16string Quoted(std::u16string_view text) {
    return u"\"" + std::u16string(text) + u"\"";
}

} // namespace

std::size_t ColumnSet::FindKey(std::u16string_view key) const {
    if (keySlots_.empty()) {
        return kNone;
    }
    if (expected_ < columns_.size() && SameName(columns_[expected_].key, key)) {
        return expected_++;
    }
    const std::size_t mask = keySlots_.size() - 1;
    for (std::size_t slot = NameHash(key) & mask; keySlots_[slot] >= 0; slot = (slot + 1) & mask) {
        const auto index = static_cast<std::size_t>(keySlots_[slot]);
        if (SameName(columns_[index].key, key)) {
            expected_ = index + 1;
            return index;
        }
    }
    const auto same = std::find_if(columns_.begin(), columns_.end(), [&](const Column& column) {
        return culture_.SameText(column.key, key);
    });
    return same == columns_.end() ? kNone : same->index;
}

Column& ColumnSet::Add(std::u16string_view key) {
    if (key.empty()) {
        throw Failure(failure_number::kInvalidArgument, u"A column needs a key that is not empty");
    }
    if (FindKey(key) != kNone) {
        throw Failure(failure_number::kInvalidArgument,
                      u"There is a column with the key " + Quoted(key) + u" already");
    }
    Column column;
    column.key = key;
    column.index = columns_.size();
    column.caption = key;
    if (keySlots_.size() < (columns_.size() + 1) * 3) {
        keySlots_.resize(std::max<std::size_t>(16, keySlots_.size() * 2), -1);
        EnterKeys();
    }
    order_.reserve(columns_.size() + 1);
    columns_.push_back(std::move(column)); // the last step that can fail
    order_.push_back(columns_.back().index);
    EnterKeys();
    return columns_.back();
}

void ColumnSet::EnterKeys() {
    std::fill(keySlots_.begin(), keySlots_.end(), -1);
    for (const Column& each : columns_) {
        std::size_t slot = NameHash(each.key) & (keySlots_.size() - 1);
        while (keySlots_[slot] >= 0) {
            slot = (slot + 1) & (keySlots_.size() - 1);
        }
        keySlots_[slot] = static_cast<std::int32_t>(each.index);
    }
}

std::size_t ColumnSet::IndexOf(const Value& keyOrPosition) const {
    if (const auto* key = keyOrPosition.If<std::u16string>()) {
        const std::size_t index = FindKey(*key);
        if (index == kNone) {
            throw Failure(failure_number::kBadIndex,
                          u"There is no column with the key " + Quoted(*key));
        }
        return index;
    }
    const auto position = NumericContent(keyOrPosition);
    if (!position) {
        throw Failure(failure_number::kTypeMismatch,
                      u"A column is named by its key (text) or its position (number)");
    }
    const double whole = std::nearbyint(*position);
    if (!(whole >= 0 && whole < static_cast<double>(columns_.size()))) {
        throw Failure(failure_number::kBadIndex,
                      u"Column positions go from 0 to " +
                          DecimalText(static_cast<long long>(columns_.size()) - 1));
    }
    return order_[static_cast<std::size_t>(whole)];
}

std::size_t ColumnSet::PositionOf(std::size_t index) const {
    return static_cast<std::size_t>(std::find(order_.begin(), order_.end(), index) -
                                    order_.begin());
}

void ColumnSet::Move(std::size_t index, std::int32_t position) {
    if (position < 0 || static_cast<std::size_t>(position) >= order_.size()) {
        throw Failure(failure_number::kBadIndex,
                      u"Column positions go from 0 to " +
                          DecimalText(static_cast<long long>(order_.size()) - 1));
    }
    order_.erase(order_.begin() + static_cast<std::ptrdiff_t>(PositionOf(index)));
    order_.insert(order_.begin() + position, index);
}

} // namespace talvix::grid
