#pragma once

#include "automation/culture.h"
#include "grid/model/cell_store.h"
#include "grid/model/column_set.h"

#include <cstdint>
#include <span>
#include <vector>

namespace talvix::grid {

/// One number per slot whose order is the order of the column's cells: empty cells first, then by
/// the column's type (numbers and dates by value, texts by the user's language without case), then
/// what does not fit the type. Cells with equal numbers form one group. `ids` has 0 for a free
/// slot.
std::vector<std::uint64_t> SortKeys(CellStore& cells, const Column& column,
                                    std::span<const std::int32_t> ids, const Culture& culture);

/// Sorts rows by their keys, equal ones staying in their order. Linear in the number of rows.
void StableSort(std::vector<Slot>& rows, std::span<const std::uint64_t> keys, bool descending);

} // namespace talvix::grid
