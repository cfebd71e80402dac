#include "grid/control/latin_font.h"

#include "platform/win32/device_context.h"

#include <algorithm>
#include <numeric>

namespace talvix::grid {

void LatinFont::Make(HDC dc, const LOGFONTW& design) {
    font_.Reset(CreateFontIndirectW(&design));
    glyphs_.fill(kNoGlyph);
    const Chosen chosen(dc, font_.Get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    if ((metrics.tmPitchAndFamily & TMPF_TRUETYPE) == 0) {
        return;
    }
    std::array<wchar_t, kUnits> units{};
    std::iota(units.begin(), units.end(), L'\0');
    GetCharWidth32W(dc, 0, kUnits - 1, advances_.data());
    GetGlyphIndicesW(dc, units.data(), kUnits, glyphs_.data(), GGI_MARK_NONEXISTING_GLYPHS);
    std::fill(glyphs_.begin(), glyphs_.begin() + u' ', kNoGlyph);
}

std::optional<std::int32_t> LatinFont::WidthOf(std::u16string_view text) const {
    std::int32_t width = 0;
    for (const char16_t unit : text) {
        if (unit >= kUnits || glyphs_[unit] == kNoGlyph) {
            return std::nullopt;
        }
        width += advances_[unit];
    }
    return width;
}

std::u16string_view LatinFont::Shortened(std::u16string_view text, std::int32_t room) {
    constexpr std::u16string_view kDots = u"...";
    room -= WidthOf(kDots).value_or(0);
    shortened_.clear();
    for (const char16_t unit : text) {
        room -= advances_[unit];
        if (room < 0) {
            break;
        }
        shortened_ += unit;
    }
    return shortened_ += kDots;
}

void LatinFont::Draw(HDC dc, POINT place, const RECT& box, std::u16string_view text) {
    line_.clear();
    for (const char16_t unit : text) {
        line_.push_back(glyphs_[unit]);
    }
    ExtTextOutW(dc, place.x, place.y, ETO_CLIPPED | ETO_GLYPH_INDEX, &box,
                reinterpret_cast<LPCWSTR>(line_.data()), static_cast<UINT>(line_.size()), nullptr);
}

} // namespace talvix::grid
