#pragma once

#include "platform/win32/owned.h"

#include <windows.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace talvix::grid {

/// A font whose Latin characters are measured and looked up once. Drawing them by their glyphs
/// takes a fraction of what it takes where the system analyses each text for scripts that change
/// shape or direction, as Latin never does.
class LatinFont {
public:
    /// Makes the font and asks the device for its measures. Where it has no glyphs to be drawn by
    /// (a bitmap font), no text has a width here.
    void Make(HDC dc, const LOGFONTW& design);
    HFONT Get() const { return font_.Get(); }

    /// Pixels of a text; nothing where it has characters beyond Latin or beyond the font.
    std::optional<std::int32_t> WidthOf(std::u16string_view text) const;
    /// As much of a text that has a width as has room before three dots; valid until the next call.
    std::u16string_view Shortened(std::u16string_view text, std::int32_t room);
    /// Draws a text that has a width, cut at the box, with the font chosen into the device.
    void Draw(HDC dc, POINT place, const RECT& box, std::u16string_view text);

private:
    static constexpr std::size_t kUnits = 0x180;
    static constexpr WORD kNoGlyph = 0xFFFF;
    OwnedFont font_;
    std::array<std::int32_t, kUnits> advances_{};
    std::array<WORD, kUnits> glyphs_{};
    std::u16string shortened_;
    std::vector<WORD> line_; ///< the glyphs of the text that is drawn
};

} // namespace talvix::grid
