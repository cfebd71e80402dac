#pragma once

#include "grid/control/grid_theme.h"
#include "grid/model/grid_model.h"
#include "platform/win32/owned.h"

#include <windows.h>

#include <array>
#include <optional>
#include <string>
#include <unordered_map>

namespace talvix::grid {

/// Draws a grid with the system's colours and fonts; only what is visible.
class GridPainter {
public:
    explicit GridPainter(GridModel& model) : model_(model) {}

    /// Takes font and sizes from the system; to be called before drawing and after its settings
    /// change.
    void Measure();
    void Draw(HDC dc, const RECT& place, bool focused);
    /// Draws a part of the window without flicker, through a picture in memory.
    void DrawBuffered(HDC dc, const SIZE& window, const RECT& part, bool focused);

    /// Pixels at 96 dpi that a column's caption and longest texts need.
    std::int32_t BestWidth(std::size_t column);
    /// A text that does not fit into its place.
    struct CutText {
        RECT place{}; ///< pixels from the window's corner
        std::u16string text;
    };
    /// The cut text under a point; nothing where all can be read.
    std::optional<CutText> CutTextAt(POINT point);

private:
    std::int32_t WidthOf(HDC dc, std::u16string_view text) const;
    /// Width in the normal font, without asking the system; nothing for characters beyond Latin.
    std::optional<std::int32_t> QuickWidth(std::u16string_view text) const;
    /// As much of a text whose widths are known as has room before three dots; valid until the next
    /// call.
    std::u16string_view Shortened(std::u16string_view text, std::int32_t room);
    const std::u16string& CellText(const RowRef& row, const Column& column);
    void DrawGroupBox(HDC dc, std::int32_t width);
    void DrawHeader(HDC dc, std::int32_t width);
    void DrawHeaderItem(HDC dc, RECT box);
    void DrawSortArrow(HDC dc, const RECT& cell, bool descending);
    void DrawRows(HDC dc, const SIZE& size, bool focused);
    void DrawRow(HDC dc, const RECT& line, const RowRef& row, bool odd, bool focused);
    void DrawSign(HDC dc, const RECT& sign, bool expanded, COLORREF background);
    void DrawHeading(HDC dc, const RECT& line, const GroupNode& node, COLORREF background);
    void DrawCell(HDC dc, RECT cell, const RowRef& row, const Column& column);
    void DrawImage(HDC dc, const RECT& cell, const RowRef& row, const Column& column);
    void DrawEmptyHint(HDC dc, const SIZE& size);
    void DrawString(HDC dc, RECT box, std::u16string_view text, Alignment alignment);

    GridModel& model_;
    GridTheme theme_;
    OwnedFont font_;
    OwnedFont boldFont_;
    bool highContrast_ = false;
    static constexpr std::size_t kLatinUnits = 0x180;
    std::array<std::int32_t, kLatinUnits> advances_{}; ///< of the normal font's Latin characters
    std::int32_t textHeight_ = 0;
    bool drawsBold_ = false;
    std::unordered_map<double, std::u16string> dateTexts_; ///< shown lately
    std::u16string cellText_;
    std::u16string shortText_;
};

} // namespace talvix::grid
