#include "grid/model/cell_store.h"

#include <algorithm>
#include <cstring>

namespace talvix::grid {

namespace {

constexpr std::size_t kMadeAtOnce = 2000;

template <typename Number>
Number Unpack(std::uint64_t content) {
    Number number{};
    std::memcpy(&number, &content, sizeof number);
    return number;
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
                delete ValueIn(column.contents[slot]);
            }
        }
    }
}

void CellStore::AddColumn() {
    Column column;
    column.kinds.resize(slots_, Kind::Empty);
    column.contents.resize(slots_, 0);
    columns_.push_back(std::move(column));
}

void CellStore::Reserve(std::size_t slots) {
    if (slots <= slots_) {
        return;
    }
    // Room is taken for many rows, but what no row needs yet is not even touched.
    const std::size_t made = std::max(slots, slots_ + std::min(slots_ * 3 / 8 + 16, kMadeAtOnce));
    for (Column& column : columns_) {
        if (column.contents.capacity() < made || column.kinds.capacity() < made) {
            column.kinds.reserve(made + made * 3 / 8);
            column.contents.reserve(made + made * 3 / 8);
        }
        column.kinds.resize(made, Kind::Empty);
        column.contents.resize(made, 0);
    }
    slots_ = made;
}

Value CellStore::Get(Slot slot, std::size_t column) const {
    const std::uint64_t content = columns_[column].contents[slot];
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
        return Value(TextIn(content)->View());
    case Kind::Boxed:
        break;
    }
    return *ValueIn(content);
}

template <typename Number>
void CellStore::Pack(Column& column, Slot slot, Kind kind, Number number) {
    std::uint64_t content = 0;
    std::memcpy(&content, &number, sizeof number);
    Drop(column, slot);
    column.contents[slot] = content;
    column.kinds[slot] = kind;
}

/// A row often holds what the row before it holds, and that text need not be searched for.
PooledText* CellStore::Pooled(const Column& column, Slot slot, std::u16string_view text) {
    if (slot > 0 && column.kinds[slot - 1] == Kind::Text) {
        auto* before = TextIn(column.contents[slot - 1]);
        if (before->Holds(text)) {
            ++before->references;
            return before;
        }
    }
    return texts_.Intern(text);
}

void CellStore::Set(Slot slot, std::size_t place, const Value& value) {
    Column& column = columns_[place];
    if (const auto* text = value.If<std::u16string>()) {
        PooledText* pooled = Pooled(column, slot, *text);
        Drop(column, slot);
        column.contents[slot] = AsContent(pooled);
        column.kinds[slot] = Kind::Text;
    } else if (value.Is<Empty>()) {
        Drop(column, slot);
    } else if (const auto* truth = value.If<bool>()) {
        Pack(column, slot, Kind::Bool, static_cast<std::uint8_t>(*truth));
    } else if (const auto* byte = value.If<std::uint8_t>()) {
        Pack(column, slot, Kind::Byte, *byte);
    } else if (const auto* integer = value.If<std::int16_t>()) {
        Pack(column, slot, Kind::Int16, *integer);
    } else if (const auto* number = value.If<std::int32_t>()) {
        Pack(column, slot, Kind::Int32, *number);
    } else if (const auto* large = value.If<std::int64_t>()) {
        Pack(column, slot, Kind::Int64, *large);
    } else if (const auto* single = value.If<float>()) {
        Pack(column, slot, Kind::Float, *single);
    } else if (const auto* real = value.If<double>()) {
        Pack(column, slot, Kind::Double, *real);
    } else if (const auto* date = value.If<Date>()) {
        Pack(column, slot, Kind::Date, date->days);
    } else {
        auto* boxed = new Value(value);
        Drop(column, slot);
        column.contents[slot] = AsContent(boxed);
        column.kinds[slot] = Kind::Boxed;
    }
}

void CellStore::Drop(Column& column, Slot slot) {
    const Kind kind = column.kinds[slot];
    column.kinds[slot] = Kind::Empty;
    if (kind == Kind::Text) {
        texts_.Release(TextIn(column.contents[slot]));
    } else if (kind == Kind::Boxed) {
        delete ValueIn(column.contents[slot]);
    }
}

void CellStore::ClearRow(Slot slot) {
    for (Column& column : columns_) {
        Drop(column, slot);
    }
}

} // namespace talvix::grid
