#pragma once

#include "grid/control/grid_theme.h"
#include "grid/control/latin_font.h"
#include "grid/model/grid_model.h"
#include "platform/win32/device_context.h"

#include <windows.h>

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
    const std::u16string& CellText(const RowRef& row, const Column& column);
    void DrawAll(HDC dc, const SIZE& size, bool focused);
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
    void DrawString(HDC dc, RECT box, std::u16string_view text, Alignment alignment,
                    bool bold = false);

    GridModel& model_;
    GridTheme theme_;
    LatinFont font_;
    LatinFont boldFont_;
    MemoryPicture page_; ///< what the window is drawn through; the normal font is chosen into it
    bool highContrast_ = false;
    std::int32_t textHeight_ = 0;
    std::unordered_map<double, std::u16string> dateTexts_; ///< shown lately
    std::u16string cellText_;
};

} // namespace talvix::grid
