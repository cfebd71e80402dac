#pragma once

#include "grid/model/grid_model.h"

#include <cstdint>

namespace talvix::grid {

/// Ways to go with the keyboard.
enum class Step { Up, Down, PageUp, PageDown, First, Last };

/// What a user's hands do to rows, independent of any window.
class Gestures {
public:
    explicit Gestures(GridModel& model) : model_(model) {}

    /// A click on a row: alone it selects the row, with Ctrl it adds or takes away, with Shift it
    /// extends from where the last selection began.
    void ClickRow(std::int32_t number, bool control, bool shift);
    /// Moves the current row among the shown ones. With Shift the selection follows, with Ctrl it
    /// stays as it is.
    void Move(Step step, std::int32_t pageLines, bool control, bool shift);
    void SelectAll();
    /// Selects the current row or takes it out of the selection.
    void ToggleCurrent();
    /// Opens or closes a group heading; other rows are left alone.
    void SetExpanded(const RowRef& row, bool expanded);
    void ToggleHeading(std::int32_t number);
    /// Goes to the next row whose text begins with what was typed, in the sorted column, else the
    /// first text column.
    void TypeText(std::u16string_view typed);

private:
    void SelectFromAnchor(std::int32_t number);
    void MakeCurrent(std::int32_t number, bool control, bool shift);
    std::size_t SearchColumn() const;

    GridModel& model_;
    RowRef anchor_;
};

} // namespace talvix::grid
