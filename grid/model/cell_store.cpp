#include "grid/model/cell_store.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace talvix::grid {

namespace {

constexpr std::size_t kMadeAtOnce = 2000;

template <typename Number>
Number Unpack(std::uint64_t content) {
    Number number{};
    std::memcpy(&number, &content, sizeof number);
    return number;
}

template <typename Number>
std::uint64_t Packed(Number number) {
    std::uint64_t content = 0;
    std::memcpy(&content, &number, sizeof number);
    return content;
}

Value* ValueIn(std::uint64_t content) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a cell is one number, whatever it holds
    return reinterpret_cast<Value*>(static_cast<std::uintptr_t>(content));
}

std::uint64_t AsContent(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

} // namespace

CellStore::~CellStore() {
    for (Column& column : columns_) {
        for (Slot slot = 0; slot < column.kinds.size(); ++slot) {
            if (column.kinds[slot] == Kind::Boxed) {
                delete ValueIn(column.ContentOf(slot));
            }
        }
    }
}

void CellStore::AddColumn() {
    Column column;
    column.kinds.resize(slots_, Kind::Empty);
    column.lows.resize(slots_, 0);
    columns_.push_back(std::move(column));
}

void CellStore::Reserve(std::size_t slots) {
    if (slots <= slots_) {
        return;
    }
    // Room is taken for many rows, but what no row needs yet is not even touched.
    const std::size_t made = std::max(slots, slots_ + std::min(slots_ * 3 / 8 + 16, kMadeAtOnce));
    const auto reach = [made](auto& list) {
        if (list.capacity() < made) {
            list.reserve(made + made * 3 / 8);
        }
        list.resize(made);
    };
    for (Column& column : columns_) {
        reach(column.kinds);
        reach(column.lows);
        if (!column.highs.empty()) {
            reach(column.highs);
        }
    }
    slots_ = made;
}

Value CellStore::Get(Slot slot, std::size_t column) const {
    const std::uint64_t content = columns_[column].ContentOf(slot);
    switch (columns_[column].kinds[slot]) {
    case Kind::Empty:
        return {};
    case Kind::Bool:
        return content != 0;
    case Kind::Byte:
        return Unpack<std::uint8_t>(content);
    case Kind::Int16:
        return Unpack<std::int16_t>(content);
    case Kind::Int32:
        return Unpack<std::int32_t>(content);
    case Kind::Int64:
        return Unpack<std::int64_t>(content);
    case Kind::Float:
        return Unpack<float>(content);
    case Kind::Double:
        return Unpack<double>(content);
    case Kind::Date:
        return Date{Unpack<double>(content)};
    case Kind::Text:
        return Value(texts_.At(static_cast<TextPlace>(content))->View());
    case Kind::Boxed:
        break;
    }
    return *ValueIn(content);
}

/// Gives a column the upper halves of its contents.
void CellStore::MakeHighs(Column& column) const {
    column.highs.reserve(column.lows.capacity());
    column.highs.resize(slots_);
}

void CellStore::Fill(Column& column, Slot slot, Kind kind, std::uint64_t content) {
    const auto high = static_cast<std::uint32_t>(content >> 32U);
    if (high != 0 && column.highs.empty()) {
        MakeHighs(column); // the only step that can fail
    }
    Drop(column, slot);
    column.lows[slot] = static_cast<std::uint32_t>(content);
    if (!column.highs.empty()) {
        column.highs[slot] = high;
    }
    column.kinds[slot] = kind;
}

/// A row often holds what the row before it holds, and that text need not be searched for.
TextPlace CellStore::Pooled(const Column& column, Slot slot, std::u16string_view text) {
    if (slot > 0 && column.kinds[slot - 1] == Kind::Text) {
        PooledText* before = texts_.At(column.lows[slot - 1]);
        if (before->View() == text) {
            ++before->references;
            return column.lows[slot - 1];
        }
    }
    return texts_.Intern(text);
}

void CellStore::Set(Slot slot, std::size_t place, const Value& value) {
    Column& column = columns_[place];
    if (const auto* text = value.If<std::u16string>()) {
        Fill(column, slot, Kind::Text, Pooled(column, slot, *text));
    } else if (value.Is<Empty>()) {
        Drop(column, slot);
    } else if (const auto* truth = value.If<bool>()) {
        Fill(column, slot, Kind::Bool, *truth ? 1 : 0);
    } else if (const auto* byte = value.If<std::uint8_t>()) {
        Fill(column, slot, Kind::Byte, *byte);
    } else if (const auto* integer = value.If<std::int16_t>()) {
        Fill(column, slot, Kind::Int16, Packed(*integer));
    } else if (const auto* number = value.If<std::int32_t>()) {
        Fill(column, slot, Kind::Int32, Packed(*number));
    } else if (const auto* large = value.If<std::int64_t>()) {
        Fill(column, slot, Kind::Int64, Packed(*large));
    } else if (const auto* single = value.If<float>()) {
        Fill(column, slot, Kind::Float, Packed(*single));
    } else if (const auto* real = value.If<double>()) {
        Fill(column, slot, Kind::Double, Packed(*real));
    } else if (const auto* date = value.If<Date>()) {
        Fill(column, slot, Kind::Date, Packed(date->days));
    } else {
        auto boxed = std::make_unique<Value>(value);
        Fill(column, slot, Kind::Boxed, AsContent(boxed.get()));
        (void)boxed.release();
    }
}

void CellStore::Drop(Column& column, Slot slot) {
    const Kind kind = column.kinds[slot];
    column.kinds[slot] = Kind::Empty;
    if (kind == Kind::Text) {
        texts_.Release(column.lows[slot]);
    } else if (kind == Kind::Boxed) {
        delete ValueIn(column.ContentOf(slot));
    }
}

void CellStore::ClearRow(Slot slot) {
    for (Column& column : columns_) {
        Drop(column, slot);
    }
}

} // namespace talvix::grid
