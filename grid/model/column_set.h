#pragma once

#include "automation/culture.h"
#include "automation/value.h"

#include <cstdint>
#include <string>
#include <vector>

namespace talvix::grid {

/// Kinds of columns, as the control's automation numbers them.
enum class DataType : std::int32_t { Long = 3, Date = 7, Text = 8, Image = 65 };
/// Alignments, as the control's automation numbers them.
enum class Alignment : std::int32_t { Centre = 3, Left = 4, Right = 6 };

struct Column {
    std::u16string key;
    std::size_t index = 0; ///< place of creation, never changes
    std::u16string caption;
    DataType dataType = DataType::Text;
    std::int32_t width = 80; ///< pixels at 96 dpi
    Alignment alignment = Alignment::Left;
    Alignment headerAlignment = Alignment::Left;
    bool hidden = false;
};

/// The columns: found by key (without case) or position, moved by position.
class ColumnSet {
public:
    explicit ColumnSet(const Culture& culture) : culture_(culture) {}

    std::size_t Count() const { return columns_.size(); }
    /// An empty or duplicate key raises Failure.
    Column& Add(std::u16string_view key);
    /// By key (text) or position (number); anything else, or nothing found, raises Failure.
    std::size_t IndexOf(const Value& keyOrPosition) const;
    Column& At(std::size_t index) { return columns_[index]; }
    const Column& At(std::size_t index) const { return columns_[index]; }
    std::size_t IndexAt(std::size_t position) const { return order_[position]; }
    std::size_t PositionOf(std::size_t index) const;
    /// A position out of range raises Failure.
    void Move(std::size_t index, std::int32_t position);

private:
    std::size_t FindKey(std::u16string_view key) const;
    void EnterKeys();

    const Culture& culture_;
    std::vector<Column> columns_;        ///< by creation
    std::vector<std::size_t> order_;     ///< by position
    std::vector<std::int32_t> keySlots_; ///< open addressing over ASCII-folded keys, -1 for free
    mutable std::size_t expected_ = 0;   ///< clients go over the columns in order: tried first
};

} // namespace talvix::grid
