#pragma once

#include "platform/item_window.h"

#include <windows.h>

#include <optional>
#include <span>

namespace talvix {

/// A place in twips (1/1440 inch) from the client area's top left corner.
struct TwipRect {
    int left;
    int top;
    int width;
    int height;
};

/// One control of the document dialog.
struct ItemPart {
    const wchar_t* kind; ///< window class
    const wchar_t* caption;
    DWORD style;
    TwipRect place;
    std::optional<ItemControl> control; ///< nothing for labels, lines and pictures
    bool isBold = false;
    int picture = 0; ///< icon resource, 0 for none
};

inline constexpr int kItemWidth = 6090;
inline constexpr int kItemHeight = 6735;

/// All parts in the order in which they are made, which is the tab order.
std::span<const ItemPart> ItemParts();

} // namespace talvix
