#pragma once

#include "grid/model/column_set.h"

#include <cstdint>
#include <optional>

namespace talvix::grid {

/// Sizes in pixels of the display, as the window measures them; these are the ones at 96 dpi.
struct Metrics {
    std::int32_t dpi = 96;
    std::int32_t rowHeight = 18;
    std::int32_t headerHeight = 22;
    std::int32_t groupBoxHeight = 38;
};

struct Box {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    bool Holds(std::int32_t x, std::int32_t y) const {
        return x >= left && x < right && y >= top && y < bottom;
    }
};

/// What lies at a point, as the control's automation numbers it.
enum class Area : std::int32_t {
    Nothing = 0,
    GroupByBox = 1,
    Heading = 2,
    Cell = 3,
    GroupHeading = 4
};

/// Where the parts of the display lie. All lengths are pixels from the control's top left corner.
class Layout {
public:
    explicit Layout(const ColumnSet& columns) : columns_(columns) {}

    Metrics metrics;
    bool groupByBox = false;
    bool headerVisible = true;
    std::int32_t scrollX = 0;   ///< pixels that have gone out to the left
    std::int32_t firstLine = 0; ///< shown line at the top, from 0
    /// Where a heading that is being dragged would be dropped.
    std::optional<Box> dropMark;

    std::int32_t Scaled(std::int32_t units) const { return units * metrics.dpi / 96; }
    std::int32_t GroupBoxBottom() const { return groupByBox ? metrics.groupBoxHeight : 0; }
    std::int32_t RowsTop() const {
        return GroupBoxBottom() + (headerVisible ? metrics.headerHeight : 0);
    }
    std::int32_t WidthAt(std::size_t position) const;
    std::int32_t LeftOf(std::size_t position) const;
    std::int32_t TotalWidth() const;
    /// Index of the first column that can be seen, -1 for none.
    std::int32_t FirstVisible() const;
    /// Position of the column at x, -1 for none.
    std::int32_t ColumnAt(std::int32_t x) const;
    /// Position of the column whose right border is near x, -1 for none.
    std::int32_t BorderAt(std::int32_t x) const;
    /// Shown line (from 0) at y, which may lie behind the last one; -1 above the rows.
    std::int32_t LineAt(std::int32_t y) const;
    std::int32_t TopOfLine(std::int32_t line) const {
        return RowsTop() + (line - firstLine) * metrics.rowHeight;
    }
    std::int32_t LinesIn(std::int32_t height) const;
    /// The chip of the group at `place` (from 0) in the group-by box.
    Box ChipAt(std::size_t place) const;
    /// Place of the chip under a point among `count`, -1 for none.
    std::int32_t ChipUnder(std::int32_t x, std::int32_t y, std::size_t count) const;

private:
    const ColumnSet& columns_;
};

} // namespace talvix::grid
