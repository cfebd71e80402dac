#include "grid/model/value_index.h"

#include "automation/coercion.h"
#include "automation/text.h"

#include <algorithm>
#include <exception>
#include <functional>

namespace talvix::grid {

namespace {

constexpr std::uint32_t kOtherKinds = 0x51ED270BU;

std::uint32_t Fold(std::size_t hash) {
    return static_cast<std::uint32_t>(hash ^ (static_cast<std::uint64_t>(hash) >> 32U));
}

} // namespace

/// One for texts that differ in case only. ASCII texts need no upper case for that.
std::uint32_t ValueIndex::HashOfText(std::u16string_view text) const {
    const bool isPlain =
        std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
    return Fold(isPlain ? NameHash(text) : NameHash(culture_.UpperCase(text)));
}

std::uint32_t ValueIndex::HashOf(const Value& value) const {
    if (const auto* text = value.If<std::u16string>()) {
        return HashOfText(*text);
    }
    const auto number = NumericContent(value);
    return number ? Fold(std::hash<double>()(*number == 0 ? 0.0 : *number)) : kOtherKinds;
}

std::uint32_t ValueIndex::HashOfCell(std::size_t column, Slot slot) const {
    const PooledText* text = cells_.Text(slot, column);
    return text == nullptr ? HashOf(cells_.Get(slot, column)) : HashOfText(text->View());
}

void ValueIndex::Enter(std::size_t column, Slot slot) {
    if (column >= indexes_.size() || indexes_[column] == nullptr) {
        return;
    }
    try {
        indexes_[column]->Add(HashOfCell(column, slot), slot);
    } catch (const std::exception&) { // better none than one that lacks a row
        indexes_[column].reset();
    }
}

bool ValueIndex::Holds(Slot slot, std::size_t column, const Value& value) const {
    if (const auto* sought = value.If<std::u16string>()) {
        const PooledText* text = cells_.Text(slot, column);
        return text != nullptr && culture_.SameText(text->View(), *sought);
    }
    const Value held = cells_.Get(slot, column);
    const auto number = NumericContent(value);
    return number ? NumericContent(held) == number : held == value;
}

bool ValueIndex::Candidates(std::size_t column, const Value& value,
                            std::span<const std::int32_t> rows, std::vector<Slot>& found) {
    if (indexes_.size() <= column) {
        indexes_.resize(column + 1);
    }
    std::unique_ptr<FindIndex>& index = indexes_[column];
    if (index == nullptr || index->Size() > rows.size() * 2 + 64) {
        auto made = std::make_unique<FindIndex>();
        for (const std::int32_t row : rows) {
            made->Add(HashOfCell(column, static_cast<Slot>(row)), static_cast<Slot>(row));
        }
        index = std::move(made);
    }
    return index->Candidates(HashOf(value), found);
}

} // namespace talvix::grid
