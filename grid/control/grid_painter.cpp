#include "grid/control/grid_painter.h"

#include "automation/coercion.h"
#include "grid/model/shown_text.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <commctrl.h>
#include <olectl.h>

#include <algorithm>

namespace talvix::grid {

namespace {

constexpr std::int32_t kPadding = 4;

COLORREF Mixed(COLORREF left, COLORREF right, int rightPercent) {
    const auto mix = [&](int a, int b) {
        return static_cast<BYTE>((a * (100 - rightPercent) + b * rightPercent) / 100);
    };
    return RGB(mix(GetRValue(left), GetRValue(right)), mix(GetGValue(left), GetGValue(right)),
               mix(GetBValue(left), GetBValue(right)));
}

void Fill(HDC dc, const RECT& box, COLORREF colour) {
    const COLORREF before = SetBkColor(dc, colour);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &box, nullptr, 0, nullptr);
    SetBkColor(dc, before);
}

bool HasHighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

/// What is recorded may be drawn elsewhere, where the same font has other glyphs.
bool IsOnScreen(HDC dc) {
    const DWORD type = GetObjectType(dc);
    return type == OBJ_DC || type == OBJ_MEMDC;
}

LOGFONTW MessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) == FALSE) {
        GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof metrics.lfMessageFont,
                   &metrics.lfMessageFont);
    }
    return metrics.lfMessageFont;
}

} // namespace

void GridPainter::Measure() {
    highContrast_ = HasHighContrast();
    theme_.Open(highContrast_);
    page_ = MemoryPicture(); // a font cannot end while it is chosen
    const ScreenDc screen;
    LOGFONTW font = MessageFont();
    font_.Make(screen.Get(), font);
    font.lfWeight = FW_BOLD;
    boldFont_.Make(screen.Get(), font);
    const Chosen chosen(screen.Get(), font_.Get());
    TEXTMETRICW text{};
    GetTextMetricsW(screen.Get(), &text);
    textHeight_ = text.tmHeight;
    dateTexts_.clear();
    Metrics& metrics = model_.layout.metrics;
    metrics.dpi = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    const auto scaled = [&](int units) { return MulDiv(units, metrics.dpi, 96); };
    metrics.rowHeight = std::max<std::int32_t>(text.tmHeight + scaled(5), scaled(19));
    metrics.headerHeight = std::max<std::int32_t>(text.tmHeight + scaled(8), scaled(23));
    metrics.groupBoxHeight = metrics.headerHeight + scaled(16);
}

void GridPainter::DrawBuffered(HDC dc, const SIZE& window, const RECT& part, bool focused) {
    if (page_.Size().cx < window.cx || page_.Size().cy < window.cy) {
        page_ = MemoryPicture(dc, window);
        SelectObject(page_.Get(), font_.Get());
        SetBkMode(page_.Get(), TRANSPARENT);
    }
    if (!page_) {
        Draw(dc, RECT{0, 0, window.cx, window.cy}, focused); // as well as it can be done
        return;
    }
    // Saving and restoring all that is chosen into the device would take as long as ten rows.
    SelectClipRgn(page_.Get(), nullptr);
    IntersectClipRect(page_.Get(), part.left, part.top, part.right, part.bottom);
    DrawAll(page_.Get(), window, focused);
    BitBlt(dc, part.left, part.top, part.right - part.left, part.bottom - part.top, page_.Get(),
           part.left, part.top, SRCCOPY);
}

void GridPainter::Draw(HDC dc, const RECT& place, bool focused) {
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, place.left, place.top, place.right, place.bottom);
    OffsetViewportOrgEx(dc, place.left, place.top, nullptr);
    const SIZE size{place.right - place.left, place.bottom - place.top};
    SelectObject(dc, font_.Get());
    SetBkMode(dc, TRANSPARENT);
    DrawAll(dc, size, focused);
    RestoreDC(dc, saved);
}

/// With the normal font and a transparent background chosen, and the window's corner as origin.
void GridPainter::DrawAll(HDC dc, const SIZE& size, bool focused) {
    Fill(dc, RECT{0, 0, size.cx, size.cy}, GetSysColor(COLOR_WINDOW));
    DrawRows(dc, size, focused);
    DrawEmptyHint(dc, size);
    if (model_.layout.headerVisible) {
        DrawHeader(dc, size.cx);
    }
    if (model_.layout.groupByBox) {
        DrawGroupBox(dc, size.cx);
    }
    if (const auto& mark = model_.layout.dropMark) {
        Fill(dc, RECT{mark->left, mark->top, mark->right, mark->bottom},
             GetSysColor(COLOR_HIGHLIGHT));
    }
}

void GridPainter::DrawString(HDC dc, RECT box, std::u16string_view text, Alignment alignment,
                             bool bold) {
    const std::int32_t padding = model_.layout.Scaled(kPadding);
    InflateRect(&box, -padding, 0);
    if (box.right <= box.left || text.empty()) {
        return;
    }
    const LONG room = box.right - box.left;
    LatinFont& font = bold ? boldFont_ : font_;
    auto width = font.WidthOf(text);
    if (!width || !IsOnScreen(dc)) {
        const UINT side = alignment == Alignment::Right    ? DT_RIGHT
                          : alignment == Alignment::Centre ? DT_CENTER
                                                           : DT_LEFT;
        DrawTextW(dc, WideUnits(text), static_cast<int>(text.size()), &box,
                  side | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        return;
    }
    // Where the widths are known, nothing needs DrawText's care, which takes several times as long.
    if (*width > room) {
        text = font.Shortened(text, room);
        width = font.WidthOf(text);
    }
    const LONG left = alignment == Alignment::Right    ? box.right - *width
                      : alignment == Alignment::Centre ? box.left + (room - *width) / 2
                                                       : box.left;
    font.Draw(dc, {left, box.top + (box.bottom - box.top - textHeight_) / 2}, box, text);
}

void GridPainter::DrawGroupBox(HDC dc, std::int32_t width) {
    const Layout& layout = model_.layout;
    RECT box{0, 0, width, layout.GroupBoxBottom()};
    if (RectVisible(dc, &box) == FALSE) {
        return;
    }
    Fill(dc, box, Mixed(GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNSHADOW), 25));
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    const std::vector<Grouping>& groups = model_.rows.Groups();
    if (groups.empty()) {
        InflateRect(&box, -layout.Scaled(6), 0);
        DrawString(dc, box, model_.options.groupByBoxText, Alignment::Left);
    }
    for (std::size_t place = 0; place < groups.size(); ++place) {
        const Box chip = layout.ChipAt(place);
        RECT rect{chip.left, chip.top, chip.right, chip.bottom};
        DrawHeaderItem(dc, rect);
        DrawString(dc, rect, model_.columns.At(groups[place].column).caption, Alignment::Left);
        DrawSortArrow(dc, rect, groups[place].descending);
    }
}

void GridPainter::DrawHeader(HDC dc, std::int32_t width) {
    const Layout& layout = model_.layout;
    const RECT header{0, layout.GroupBoxBottom(), width, layout.RowsTop()};
    if (RectVisible(dc, &header) == FALSE) {
        return;
    }
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    const auto sorting = model_.rows.Sorting();
    for (std::size_t position = 0; position < model_.columns.Count(); ++position) {
        const Column& column = model_.columns.At(model_.columns.IndexAt(position));
        RECT cell{layout.LeftOf(position), header.top,
                  layout.LeftOf(position) + layout.WidthAt(position), header.bottom};
        if (cell.right <= cell.left || cell.left >= width || cell.right <= 0) {
            continue;
        }
        DrawHeaderItem(dc, cell);
        DrawString(dc, cell, column.caption, column.headerAlignment);
        if (sorting && sorting->column == column.index) {
            DrawSortArrow(dc, cell, sorting->descending);
        }
    }
    RECT rest{layout.TotalWidth() - layout.scrollX, header.top, width, header.bottom};
    if (rest.left < rest.right) {
        DrawHeaderItem(dc, rest);
    }
}

void GridPainter::DrawHeaderItem(HDC dc, RECT box) {
    if (!theme_.DrawHeaderItem(dc, box)) {
        Fill(dc, box, GetSysColor(COLOR_BTNFACE));
        DrawEdge(dc, &box, BDR_RAISEDINNER, BF_RECT);
    }
}

void GridPainter::DrawSortArrow(HDC dc, const RECT& cell, bool descending) {
    const std::int32_t half = model_.layout.Scaled(4);
    const std::int32_t centre = cell.right - model_.layout.Scaled(10);
    const std::int32_t middle = (cell.top + cell.bottom) / 2;
    if (centre - half <= cell.left) {
        return;
    }
    const std::int32_t tip = descending ? middle + half / 2 : middle - half / 2;
    const std::int32_t base = descending ? middle - half / 2 : middle + half / 2;
    const POINT corners[] = {{centre - half, base}, {centre + half, base}, {centre, tip}};
    const OwnedBrush brush(CreateSolidBrush(GetSysColor(COLOR_BTNSHADOW)));
    const OwnedPen pen(CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNSHADOW)));
    const Chosen chosenBrush(dc, brush.Get());
    const Chosen chosenPen(dc, pen.Get());
    Polygon(dc, corners, 3);
}

void GridPainter::DrawRows(HDC dc, const SIZE& size, bool focused) {
    const Layout& layout = model_.layout;
    const std::vector<std::int32_t>& shown = model_.rows.ShownNumbers();
    const RowRef current = model_.rows.Current();
    RECT clip{};
    if (GetClipBox(dc, &clip) == ERROR) {
        clip = RECT{0, 0, size.cx, size.cy}; // what is recorded is not clipped
    }
    const std::int32_t first =
        std::max(0, layout.LineAt(std::max<LONG>(clip.top, layout.RowsTop())));
    for (auto line = static_cast<std::size_t>(first); line < shown.size(); ++line) {
        const std::int32_t top = layout.TopOfLine(static_cast<std::int32_t>(line));
        if (top >= clip.bottom) {
            break;
        }
        const RECT box{0, top, size.cx, top + layout.metrics.rowHeight};
        const RowRef row = model_.rows.At(shown[line]);
        DrawRow(dc, box, row, line % 2 != 0, focused);
        if (focused && row == current) {
            SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
            DrawFocusRect(dc, &box);
        }
    }
}

void GridPainter::DrawEmptyHint(HDC dc, const SIZE& size) {
    if (model_.rows.Count() == 0 || !model_.rows.ShownNumbers().empty()) {
        return;
    }
    const std::int32_t top = model_.layout.RowsTop() + model_.layout.metrics.rowHeight;
    SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    DrawString(dc, RECT{0, top, size.cx, top + model_.layout.metrics.rowHeight},
               u"Keine Zeile entspricht dem Filter.", Alignment::Centre);
}

void GridPainter::DrawRow(HDC dc, const RECT& line, const RowRef& row, bool odd, bool focused) {
    const bool selected = model_.rows.IsSelected(row);
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    const COLORREF background = selected ? GetSysColor(focused ? COLOR_HIGHLIGHT : COLOR_BTNFACE)
                                : odd && !highContrast_
                                    ? Mixed(window, GetSysColor(COLOR_HIGHLIGHT), 5)
                                    : window;
    if (background != window) {
        Fill(dc, line, background);
    }
    SetTextColor(dc, GetSysColor(!selected ? COLOR_WINDOWTEXT
                                 : focused ? COLOR_HIGHLIGHTTEXT
                                           : COLOR_BTNTEXT));
    if (const GroupNode* heading = model_.rows.HeadingOf(row)) {
        DrawHeading(dc, line, *heading, background);
        return;
    }
    const Layout& layout = model_.layout;
    std::int32_t indent =
        layout.Scaled(model_.options.groupIndent * static_cast<int>(model_.rows.Groups().size()));
    for (std::size_t position = 0; position < model_.columns.Count(); ++position) {
        const std::int32_t left = layout.LeftOf(position);
        const std::int32_t width = layout.WidthAt(position);
        if (width == 0) {
            continue;
        }
        if (left < line.right && left + width > 0) {
            DrawCell(dc, RECT{left + indent, line.top, left + width, line.bottom}, row,
                     model_.columns.At(model_.columns.IndexAt(position)));
        }
        indent = 0; // the groups' indentation lies in the first visible column
    }
}

void GridPainter::DrawSign(HDC dc, const RECT& sign, bool expanded, COLORREF background) {
    if (theme_.DrawSign(dc, sign, expanded, background)) {
        return;
    }
    const OwnedPen pen(CreatePen(PS_SOLID, 1, GetTextColor(dc)));
    const Chosen chosenPen(dc, pen.Get());
    const Chosen chosenBrush(dc, GetStockObject(NULL_BRUSH));
    Rectangle(dc, sign.left, sign.top, sign.right, sign.bottom);
    const std::int32_t half = (sign.right - sign.left) / 2;
    MoveToEx(dc, sign.left + 2, sign.top + half, nullptr);
    LineTo(dc, sign.right - 2, sign.top + half);
    if (!expanded) {
        MoveToEx(dc, sign.left + half, sign.top + 2, nullptr);
        LineTo(dc, sign.left + half, sign.bottom - 2);
    }
}

void GridPainter::DrawHeading(HDC dc, const RECT& line, const GroupNode& node,
                              COLORREF background) {
    const Layout& layout = model_.layout;
    const std::int32_t left =
        layout.Scaled(model_.options.groupIndent * node.level) - layout.scrollX;
    const std::int32_t side = layout.Scaled(9);
    const std::int32_t middle = (line.top + line.bottom) / 2;
    const RECT sign{left + layout.Scaled(4), middle - side / 2, left + layout.Scaled(4) + side,
                    middle - side / 2 + side};
    DrawSign(dc, sign, node.expanded, background);
    const Chosen chosen(dc, boldFont_.Get());
    DrawString(dc, RECT{sign.right + layout.Scaled(2), line.top, line.right, line.bottom},
               model_.HeadingText(node), Alignment::Left, true);
}

void GridPainter::DrawCell(HDC dc, RECT cell, const RowRef& row, const Column& column) {
    if (column.dataType == DataType::Image) {
        DrawImage(dc, cell, row, column);
    } else {
        DrawString(dc, cell, CellText(row, column), column.alignment);
    }
}

/// Dates are formatted by the system, which takes longer than drawing them: those on the page are
/// kept.
const std::u16string& GridPainter::CellText(const RowRef& row, const Column& column) {
    constexpr std::size_t kMostKept = 1000;
    const Value value = model_.rows.Get(row, column.index);
    const auto* date = value.If<Date>();
    if (date == nullptr || column.dataType != DataType::Date) {
        cellText_ = ShownText(value, column.dataType, model_.culture);
        return cellText_;
    }
    if (dateTexts_.size() > kMostKept) {
        dateTexts_.clear();
    }
    const auto [kept, isNew] = dateTexts_.try_emplace(date->days);
    if (isNew) {
        kept->second = ShownText(value, column.dataType, model_.culture);
    }
    return kept->second;
}

void GridPainter::DrawImage(HDC dc, const RECT& cell, const RowRef& row, const Column& column) {
    const auto centred = [&](std::int32_t width, std::int32_t height) {
        return POINT{cell.left + std::max<LONG>(0, cell.right - cell.left - width) / 2,
                     (cell.top + cell.bottom - height) / 2};
    };
    const Value own = model_.rows.PictureOf(row, column.index);
    const auto* object = own.If<Object>();
    if (object != nullptr && *object != nullptr) {
        if (const auto picture = ComPtr<IPicture>::From(UnknownOf(*object).Get())) {
            const std::int32_t side = GetSystemMetrics(SM_CXSMICON);
            const POINT place = centred(side, side);
            OLE_XSIZE_HIMETRIC width = 0;
            OLE_YSIZE_HIMETRIC height = 0;
            picture->get_Width(&width);
            picture->get_Height(&height);
            picture->Render(dc, place.x, place.y, side, side, 0, height, width, -height, nullptr);
        }
        return;
    }
    const auto number = NumericContent(model_.rows.Get(row, column.index));
    if (number && *number >= 1 && *number < INT32_MAX && model_.options.imageList != 0) {
        auto* const images =
            reinterpret_cast<HIMAGELIST>(static_cast<LONG_PTR>(model_.options.imageList));
        int width = 0;
        int height = 0;
        if (ImageList_GetIconSize(images, &width, &height) != FALSE) {
            const POINT place = centred(width, height);
            ImageList_Draw(images, static_cast<int>(*number) - 1, dc, place.x, place.y,
                           ILD_TRANSPARENT);
        }
    }
}

} // namespace talvix::grid
