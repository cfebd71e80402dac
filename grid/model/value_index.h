#pragma once

#include "automation/culture.h"
#include "grid/model/cell_store.h"
#include "grid/model/find_index.h"

#include <memory>
#include <optional>
#include <span>

namespace talvix::grid {

/// Finds rows by a cell's value: numbers by value, texts without case, everything else by identity.
/// An index of a column is made when the column is first searched.
class ValueIndex {
public:
    ValueIndex(const CellStore& cells, const Culture& culture) : cells_(cells), culture_(culture) {}

    /// Keeps an existing index right after a cell was written.
    void Enter(std::size_t column, Slot slot);
    /// Forgets all indexes.
    void Clear() { indexes_.clear(); }
    /// True when the cell holds the value.
    bool Holds(Slot slot, std::size_t column, const Value& value) const;
    /// Rows that may hold the value, among `rows`; false when there are too many to list.
    bool Candidates(std::size_t column, const Value& value, std::span<const std::int32_t> rows,
                    std::vector<Slot>& found);

private:
    std::uint32_t HashOf(const Value& value) const;
    std::uint32_t HashOfText(std::u16string_view text) const;
    std::uint32_t HashOfCell(std::size_t column, Slot slot) const;

    const CellStore& cells_;
    const Culture& culture_;
    std::vector<std::unique_ptr<FindIndex>> indexes_;
};

} // namespace talvix::grid
