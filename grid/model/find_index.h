#pragma once

#include "grid/model/cell_store.h"

#include <cstdint>
#include <vector>

namespace talvix::grid {

/// Which rows may hold a value in one column, by the value's hash. Entries are only added: whoever
/// asks checks that a candidate still holds the value.
class FindIndex {
public:
    void Add(std::uint32_t hash, Slot slot);
    /// The rows entered under the hash; false when it is so frequent that a search of the rows
    /// themselves is the better way.
    bool Candidates(std::uint32_t hash, std::vector<Slot>& rows) const;
    /// Entries made, those that no longer hold included.
    std::size_t Size() const { return count_; }

private:
    struct Entry {
        std::uint32_t hash = 0;
        Slot slot = kFree;
    };
    static constexpr Slot kFree = 0xFFFFFFFFU;
    static constexpr Slot kFrequent = 0xFFFFFFFEU;
    void Grow();

    std::vector<Entry> entries_;
    std::size_t count_ = 0;
};

} // namespace talvix::grid
