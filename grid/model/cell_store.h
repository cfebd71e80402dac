#pragma once

#include "automation/value.h"
#include "grid/model/text_pool.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <vector>

namespace talvix::grid {

using Slot = std::uint32_t;

/// The cells of all rows, column by column, five bytes each, or nine where a column needs them;
/// texts lie in a pool, rare kinds of values in boxes. A cell gives back the value exactly as it
/// was put.
class CellStore {
public:
    CellStore() = default;
    CellStore(const CellStore&) = delete;
    CellStore& operator=(const CellStore&) = delete;
    ~CellStore();

    void AddColumn();
    std::size_t ColumnCount() const { return columns_.size(); }
    /// Makes room for at least `slots` rows; new cells are Empty.
    void Reserve(std::size_t slots);

    Value Get(Slot slot, std::size_t column) const;
    void Set(Slot slot, std::size_t place, const Value& value);
    /// Makes all cells of a row Empty.
    void ClearRow(Slot slot);

    bool IsEmpty(Slot slot, std::size_t column) const {
        return columns_[column].kinds[slot] == Kind::Empty;
    }
    /// The cell's text without a copy, or null for cells of other kinds.
    PooledText* Text(Slot slot, std::size_t column) const {
        return columns_[column].kinds[slot] == Kind::Text ? texts_.At(columns_[column].lows[slot])
                                                          : nullptr;
    }
    /// The number in a cell that holds a Double or a Date; nothing for all others.
    std::optional<double> Real(Slot slot, std::size_t column) const {
        const Kind kind = columns_[column].kinds[slot];
        return kind == Kind::Double || kind == Kind::Date
                   ? std::optional(std::bit_cast<double>(columns_[column].ContentOf(slot)))
                   : std::nullopt;
    }
    TextPool& Texts() { return texts_; }

private:
    enum class Kind : std::uint8_t {
        Empty,
        Bool,
        Byte,
        Int16,
        Int32,
        Int64,
        Float,
        Double,
        Date,
        Text,
        Boxed
    };
    struct Column {
        std::uint64_t ContentOf(Slot slot) const {
            return lows[slot] | (highs.empty() ? 0 : std::uint64_t{highs[slot]} << 32U);
        }
        std::vector<Kind> kinds;
        std::vector<std::uint32_t> lows;
        std::vector<std::uint32_t> highs; ///< none before a cell's content needs more than 32 bits
    };
    TextPlace Pooled(const Column& column, Slot slot, std::u16string_view text);
    void Drop(Column& column, Slot slot);
    void Fill(Column& column, Slot slot, Kind kind, std::uint64_t content);
    void MakeHighs(Column& column) const;

    std::vector<Column> columns_;
    std::size_t slots_ = 0;
    TextPool texts_;
};

} // namespace talvix::grid
