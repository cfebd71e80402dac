#pragma once

#include "platform/win32/device_context.h"
#include "platform/win32/owned.h"

#include <windows.h>

#include <array>
#include <cstdint>
#include <map>
#include <uxtheme.h>

namespace talvix::grid {

/// The system's visual styles for what the grid draws; without them, and in high contrast,
/// everything answers false and is drawn the classic way. A style's picture takes far longer to
/// draw than to copy, and so each is drawn once.
class GridTheme {
public:
    /// To be called again when the system's looks change.
    void Open(bool highContrast);
    bool DrawHeaderItem(HDC dc, const RECT& box);
    /// The sign that opens and closes a group, centred in a box on a plain background.
    bool DrawSign(HDC dc, const RECT& box, bool expanded, COLORREF background);

private:
    struct ThemeTraits {
        using Handle = HTHEME;
        static Handle None() { return nullptr; }
        static void End(Handle handle) { CloseThemeData(handle); }
    };
    using OwnedTheme = Owned<ThemeTraits>;
    struct Piece {
        int part;
        int state;
        SIZE size;
        COLORREF background;
    };
    bool Draw(HDC dc, POINT place, const OwnedTheme& theme, const Piece& piece);
    const MemoryPicture& PictureOf(const OwnedTheme& theme, const Piece& piece);

    OwnedTheme header_;
    OwnedTheme tree_;
    SIZE signSize_{};
    std::map<std::array<std::int64_t, 5>, MemoryPicture> pictures_;
};

} // namespace talvix::grid
