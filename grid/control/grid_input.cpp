#include "grid/control/grid_input.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace talvix::grid {

namespace {

constexpr DWORD kTypingPause = 1000;
constexpr std::int32_t kDragThreshold = 4;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

std::int16_t ShiftKeys() {
    return static_cast<std::int16_t>((IsDown(VK_SHIFT) ? 1 : 0) + (IsDown(VK_CONTROL) ? 2 : 0) +
                                     (IsDown(VK_MENU) ? 4 : 0));
}

} // namespace

std::int16_t GridInput::ButtonOf(UINT message) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
        return 1;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_RBUTTONUP:
        return 2;
    default:
        return 4;
    }
}

bool GridInput::IsGridKey(WPARAM key) {
    switch (key) {
    case VK_UP:
    case VK_DOWN:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_HOME:
    case VK_END:
    case VK_RETURN:
    case VK_DELETE:
    case VK_BACK:
        return true;
    default:
        return false;
    }
}

void GridInput::RaiseMouse(std::u16string_view event, std::int16_t button, POINT point) {
    std::array<Value, 4> arguments{button, ShiftKeys(), static_cast<std::int32_t>(point.x),
                                   static_cast<std::int32_t>(point.y)};
    model_.events.Raise(event, arguments);
}

void GridInput::ButtonDown(std::int16_t button, POINT point) {
    afterDoubleClick_ = false;
    RaiseMouse(u"MouseDown", button, point);
    if (button == 1) {
        PressLeft(point);
    }
}

/// Position of the column whose right border lies under a point of the header, -1 for none.
std::int32_t GridInput::BorderUnder(POINT point) const {
    const bool inHeader =
        point.y >= model_.layout.GroupBoxBottom() && point.y < model_.layout.RowsTop();
    return inHeader ? model_.layout.BorderAt(point.x) : -1;
}

void GridInput::PressLeft(POINT point) {
    drag_ = Drag::None;
    pressed_ = point;
    const HitResult hit = model_.HitTest(point.x, point.y);
    const std::int32_t border = BorderUnder(point);
    clickedRow_ = hit.row > 0 ? model_.rows.At(hit.row) : RowRef{};
    if (hit.area == Area::GroupByBox) {
        const std::int32_t chip =
            model_.layout.ChipUnder(point.x, point.y, model_.rows.Groups().size());
        drag_ = chip >= 0 ? Drag::Chip : Drag::None;
        dragged_ = static_cast<std::size_t>(std::max(chip, 0));
    } else if (border >= 0) {
        drag_ = Drag::Border;
        dragged_ = model_.columns.IndexAt(static_cast<std::size_t>(border));
        widthBefore_ = model_.columns.At(dragged_).width;
    } else if (hit.area == Area::Heading) {
        drag_ = Drag::Heading;
        dragged_ = model_.columns.IndexAt(static_cast<std::size_t>(hit.column));
    } else if (hit.row > 0) {
        PressRow(hit, point);
    }
}

void GridInput::PressRow(const HitResult& hit, POINT point) {
    const RowRef row = model_.rows.At(hit.row);
    const bool control = IsDown(VK_CONTROL);
    const bool shift = IsDown(VK_SHIFT);
    const bool canDrag = model_.options.fileColumn.has_value() && hit.area == Area::Cell;
    pressedRow_ = RowRef{};
    if (canDrag && !control && !shift && model_.rows.IsSelected(row)) {
        model_.rows.SetCurrent(row); // the others stay selected: they may go along
        model_.Changed();
        pressedRow_ = row;
    } else {
        gestures_.ClickRow(hit.row, control, shift);
    }
    drag_ = canDrag ? Drag::Rows : Drag::None;
    if (hit.area == Area::GroupHeading) {
        const std::int32_t level = model_.rows.LevelOf(row);
        const std::int32_t sign = model_.layout.Scaled((level + 1) * model_.options.groupIndent);
        if (point.x + model_.layout.scrollX < sign) {
            gestures_.ToggleHeading(hit.row);
        }
    }
}

void GridInput::ButtonUp(std::int16_t button, POINT point) {
    if (button == 1) {
        ReleaseLeft(point);
    }
    RaiseMouse(u"MouseUp", button, point);
    if (button == 1 && !afterDoubleClick_) {
        model_.events.Raise(u"Click", {});
    }
    afterDoubleClick_ = false;
}

bool GridInput::HasMoved(POINT point) const {
    return std::abs(point.x - pressed_.x) + std::abs(point.y - pressed_.y) > kDragThreshold;
}

void GridInput::ReleaseLeft(POINT point) {
    const Drag drag = std::exchange(drag_, Drag::None);
    const bool moved = HasMoved(point);
    MarkDrop(pressed_); // nothing is dragged any more
    if (drag == Drag::Heading && !moved) {
        model_.ClickHeading(dragged_);
    } else if (drag == Drag::Heading) {
        DropHeading(point);
    } else if (drag == Drag::Chip && moved) {
        DropChip(point);
    } else if (drag == Drag::Rows && model_.rows.IsAlive(pressedRow_)) {
        gestures_.ClickRow(model_.rows.NumberOf(pressedRow_), false, false);
    }
}

void GridInput::DropHeading(POINT point) {
    const HitResult hit = model_.HitTest(point.x, point.y);
    if (hit.area == Area::GroupByBox) {
        const std::int32_t chip =
            model_.layout.ChipUnder(point.x, point.y, model_.rows.Groups().size());
        model_.GroupByUser(dragged_, chip >= 0 ? static_cast<std::size_t>(chip)
                                               : model_.rows.Groups().size());
    } else if (hit.area == Area::Heading && hit.column >= 0) {
        model_.columns.Move(dragged_, hit.column);
        model_.Changed();
    }
}

void GridInput::DropChip(POINT point) {
    const bool inBox = point.y >= 0 && point.y < model_.layout.GroupBoxBottom();
    if (!inBox) {
        model_.UngroupByUser(dragged_);
        return;
    }
    const std::int32_t chip =
        model_.layout.ChipUnder(point.x, point.y, model_.rows.Groups().size());
    if (chip >= 0) {
        model_.MoveGroupByUser(dragged_, static_cast<std::size_t>(chip));
    }
}

/// Rows are what a double click opens, and only those on which both presses were; elsewhere the
/// second press is one like the first.
void GridInput::DoubleClick(POINT point) {
    const HitResult hit = model_.HitTest(point.x, point.y);
    if (const std::int32_t border = BorderUnder(point); border >= 0) {
        const std::size_t which[] = {model_.columns.IndexAt(static_cast<std::size_t>(border))};
        model_.FitColumns(which);
        afterDoubleClick_ = true;
        return;
    }
    if (hit.row == 0 || model_.rows.At(hit.row).id != clickedRow_.id) {
        ButtonDown(1, point);
        return;
    }
    afterDoubleClick_ = true;
    if (hit.area == Area::GroupHeading) {
        gestures_.ToggleHeading(hit.row);
    }
    model_.events.Raise(u"DblClick", {});
}

void GridInput::MarkDrop(POINT point) {
    Layout& layout = model_.layout;
    const auto before = layout.dropMark;
    layout.dropMark.reset();
    const bool isDragged = (drag_ == Drag::Heading || drag_ == Drag::Chip) && HasMoved(point);
    const HitResult hit = model_.HitTest(point.x, point.y);
    const std::int32_t width = layout.Scaled(3);
    const std::size_t groups = model_.rows.Groups().size();
    if (isDragged && hit.area == Area::GroupByBox) {
        const std::int32_t chip = layout.ChipUnder(point.x, point.y, groups);
        const Box box = layout.ChipAt(chip >= 0 ? static_cast<std::size_t>(chip) : groups);
        layout.dropMark = Box{box.left - width - 1, box.top, box.left - 1, box.bottom};
    } else if (isDragged && drag_ == Drag::Heading && hit.area == Area::Heading) {
        const auto target = static_cast<std::size_t>(hit.column);
        const bool toTheRight = model_.columns.PositionOf(dragged_) < target;
        const std::int32_t x = layout.LeftOf(target) + (toTheRight ? layout.WidthAt(target) : 0);
        layout.dropMark =
            Box{x - width / 2, layout.GroupBoxBottom(), x - width / 2 + width, layout.RowsTop()};
    }
    const auto left = [](const std::optional<Box>& mark) { return mark ? mark->left : -1; };
    if (before.has_value() != layout.dropMark.has_value() ||
        left(before) != left(layout.dropMark)) {
        model_.Changed();
    }
}

void GridInput::RightClick(PixelPoint point) {
    const POINT place{point.x, point.y};
    ButtonDown(2, place);
    ButtonUp(2, place);
}

void GridInput::MouseMove(POINT point, bool leftIsDown) {
    if (!leftIsDown) {
        drag_ = Drag::None;
    }
    if (drag_ == Drag::Rows && HasMoved(point)) {
        drag_ = Drag::None;
        dragRows();
        return;
    }
    if (drag_ != Drag::Border) {
        MarkDrop(point);
        return;
    }
    const std::int32_t units = (point.x - pressed_.x) * 96 / model_.layout.metrics.dpi;
    model_.columns.At(dragged_).width = std::clamp(widthBefore_ + units, 8, 2000);
    model_.Changed();
}

bool GridInput::SetPointer(HWND window) const {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window, &point);
    if (BorderUnder(point) < 0) {
        return false;
    }
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32644)));
    return true;
}

bool GridInput::KeyDown(int key, std::int32_t pageLines) {
    std::array<Value, 2> arguments{static_cast<std::int16_t>(key), ShiftKeys()};
    model_.events.Raise(u"KeyDown", arguments);
    const auto* left = arguments[0].If<std::int16_t>();
    if (left != nullptr && *left == 0) {
        return true; // the listener has taken the key
    }
    const bool control = IsDown(VK_CONTROL);
    return Navigate(key, pageLines, control, IsDown(VK_SHIFT)) || Act(key, control);
}

bool GridInput::Navigate(int key, std::int32_t pageLines, bool control, bool shift) {
    struct Way {
        int key;
        Step step;
    };
    static constexpr Way ways[] = {{VK_UP, Step::Up},        {VK_DOWN, Step::Down},
                                   {VK_PRIOR, Step::PageUp}, {VK_NEXT, Step::PageDown},
                                   {VK_HOME, Step::First},   {VK_END, Step::Last}};
    for (const Way& way : ways) {
        if (way.key == key) {
            gestures_.Move(way.step, pageLines, control, shift);
            return true;
        }
    }
    return false;
}

bool GridInput::Act(int key, bool control) {
    switch (key) {
    case 'A':
        if (control) {
            gestures_.SelectAll();
        }
        return control;
    case 'C':
    case VK_INSERT:
        if (control) {
            copyRows();
        }
        return control;
    case VK_SPACE:
        gestures_.ToggleCurrent();
        return true;
    case VK_ADD:
    case VK_RIGHT:
        gestures_.SetExpanded(model_.rows.Current(), true);
        return true;
    case VK_SUBTRACT:
    case VK_LEFT:
        gestures_.SetExpanded(model_.rows.Current(), false);
        return true;
    default:
        return false;
    }
}

void GridInput::Character(char16_t character, DWORD time) {
    if (character <= u' ') {
        return;
    }
    if (time - typedAt_ > kTypingPause) {
        typed_.clear();
    }
    typedAt_ = time;
    typed_ += character;
    gestures_.TypeText(typed_);
}

} // namespace talvix::grid
