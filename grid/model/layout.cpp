#include "grid/model/layout.h"

#include <algorithm>
#include <cstdlib>

namespace talvix::grid {

namespace {

constexpr std::int32_t kBorderReach = 4;

} // namespace

std::int32_t Layout::WidthAt(std::size_t position) const {
    const Column& column = columns_.At(columns_.IndexAt(position));
    return column.hidden ? 0 : Scaled(column.width);
}

std::int32_t Layout::LeftOf(std::size_t position) const {
    std::int32_t left = -scrollX;
    for (std::size_t before = 0; before < position; ++before) {
        left += WidthAt(before);
    }
    return left;
}

std::int32_t Layout::TotalWidth() const {
    return LeftOf(columns_.Count()) + scrollX;
}

std::int32_t Layout::FirstVisible() const {
    for (std::size_t position = 0; position < columns_.Count(); ++position) {
        if (WidthAt(position) > 0) {
            return static_cast<std::int32_t>(columns_.IndexAt(position));
        }
    }
    return -1;
}

std::int32_t Layout::ColumnAt(std::int32_t x) const {
    std::int32_t right = -scrollX;
    for (std::size_t position = 0; position < columns_.Count(); ++position) {
        const std::int32_t left = right;
        right += WidthAt(position);
        if (x >= left && x < right) {
            return static_cast<std::int32_t>(position);
        }
    }
    return -1;
}

std::int32_t Layout::BorderAt(std::int32_t x) const {
    std::int32_t right = -scrollX;
    std::int32_t nearest = -1;
    for (std::size_t position = 0; position < columns_.Count(); ++position) {
        right += WidthAt(position);
        if (WidthAt(position) > 0 && std::abs(x - right) <= Scaled(kBorderReach)) {
            nearest = static_cast<std::int32_t>(position);
        }
    }
    return nearest;
}

std::int32_t Layout::LineAt(std::int32_t y) const {
    return y < RowsTop() ? -1 : firstLine + (y - RowsTop()) / std::max(1, metrics.rowHeight);
}

std::int32_t Layout::LinesIn(std::int32_t height) const {
    return std::max(1, (height - RowsTop()) / std::max(1, metrics.rowHeight));
}

Box Layout::ChipAt(std::size_t place) const {
    constexpr std::int32_t kWidth = 130;
    constexpr std::int32_t kGap = 8;
    const std::int32_t left = Scaled(kGap + static_cast<std::int32_t>(place) * (kWidth + kGap));
    return {left, Scaled(kGap), left + Scaled(kWidth), metrics.groupBoxHeight - Scaled(kGap)};
}

std::int32_t Layout::ChipUnder(std::int32_t x, std::int32_t y, std::size_t count) const {
    for (std::size_t place = 0; place < count; ++place) {
        if (ChipAt(place).Holds(x, y)) {
            return static_cast<std::int32_t>(place);
        }
    }
    return -1;
}

} // namespace talvix::grid
