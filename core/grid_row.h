#pragma once

#include "automation/late.h"

#include <array>

namespace talvix {

/// One row of the document grid.
class GridRow {
public:
    GridRow() = default;
    explicit GridRow(Late row) : row_(std::move(row)) {}

    /// False for no row.
    explicit operator bool() const { return static_cast<bool>(row_); }
    bool IsGroup() const;
    std::int32_t Id() const;
    Value Get(std::u16string_view key) const;
    void Set(std::u16string_view key, Value value) const;
    void SetPicture(std::u16string_view key, const Value& picture) const;
    const Late& Object() const { return row_; }

private:
    Late row_;
    /// Key and value of the cell written last: the next key takes over its memory.
    mutable std::array<Value, 2> cell_;
};

} // namespace talvix
