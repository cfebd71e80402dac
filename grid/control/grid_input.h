#pragma once

#include "grid/model/gestures.h"

#include <windows.h>

#include <functional>
#include <string>

namespace talvix::grid {

/// Turns mouse and keyboard into the model's gestures and events.
class GridInput {
public:
    explicit GridInput(GridModel& model) : model_(model), gestures_(model) {}

    /// Called when a user begins to drag selected rows, and for Ctrl+C.
    std::function<void()> dragRows;
    std::function<void()> copyRows;

    /// Buttons and shift keys are numbered as the events have them: left 1, right 2, middle 4;
    /// Shift 1, Ctrl 2, Alt 4.
    static std::int16_t ButtonOf(UINT message);
    /// True for keys that move or act within the grid.
    static bool IsGridKey(WPARAM key);

    void ButtonDown(std::int16_t button, POINT point);
    void ButtonUp(std::int16_t button, POINT point);
    void DoubleClick(POINT point);
    /// A drag whose button was released elsewhere, such as over a dialog, is over.
    void MouseMove(POINT point, bool leftIsDown);
    /// Raises a click with the right button, wherever the mouse is.
    void RightClick(PixelPoint point);
    /// True when the pointer got a shape of its own.
    bool SetPointer(HWND window) const;
    /// True when the key was used.
    bool KeyDown(int key, std::int32_t pageLines);
    /// Typed letters that follow each other within a second form one text.
    void Character(char16_t character, DWORD time);

private:
    enum class Drag { None, Heading, Border, Chip, Rows };

    void RaiseMouse(std::u16string_view event, std::int16_t button, POINT point);
    bool HasMoved(POINT point) const;
    std::int32_t BorderUnder(POINT point) const;
    void PressLeft(POINT point);
    void PressRow(const HitResult& hit, POINT point);
    void ReleaseLeft(POINT point);
    void DropHeading(POINT point);
    /// Marks where a dragged heading or chip would go, or takes the mark away.
    void MarkDrop(POINT point);
    void DropChip(POINT point);
    bool Navigate(int key, std::int32_t pageLines, bool control, bool shift);
    bool Act(int key, bool control);

    GridModel& model_;
    Gestures gestures_;
    Drag drag_ = Drag::None;
    std::size_t dragged_ = 0; ///< column index, or place of a chip
    POINT pressed_{};
    RowRef pressedRow_; ///< a selected row that a drag may begin on; a mere click selects it alone
    RowRef clickedRow_; ///< on which the left button was pressed last; none beside rows
    std::int32_t widthBefore_ = 0;
    bool afterDoubleClick_ = false;
    std::u16string typed_;
    DWORD typedAt_ = 0;
};

} // namespace talvix::grid
