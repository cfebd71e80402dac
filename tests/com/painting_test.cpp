// What the grid draws in a shorter way looks as if it was drawn in the long one.
#include "automation/text.h"
#include "grid/control/latin_font.h"
#include "platform/win32/device_context.h"
#include "tests/com/container_rig.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <vector>

namespace talvix {

namespace {

using Pixels = std::vector<DWORD>;

/// The pixels of a device's left upper part.
Pixels PixelsOf(HDC dc, const SIZE& size) {
    BITMAPINFO design{};
    design.bmiHeader.biSize = sizeof design.bmiHeader;
    design.bmiHeader.biWidth = size.cx;
    design.bmiHeader.biHeight = -size.cy;
    design.bmiHeader.biPlanes = 1;
    design.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const OwnedBitmap bitmap(CreateDIBSection(dc, &design, DIB_RGB_COLORS, &bits, nullptr, 0));
    {
        const OwnedMemoryDc memory(CreateCompatibleDC(dc));
        const Chosen chosen(memory.Get(), bitmap.Get());
        BitBlt(memory.Get(), 0, 0, size.cx, size.cy, dc, 0, 0, SRCCOPY);
        GdiFlush();
    }
    const auto* first = static_cast<const DWORD*>(bits);
    return Pixels(first, first + size.cx * size.cy);
}

/// The grid's picture, without the row's hidden bytes.
struct PaintedRig : ContainerRig {
    PaintedRig() {
        grid[u"Columns"](u"Add", u"Text").Set(u"Width", 300);
        grid.Set(u"Redraw", false);
        for (int number = 0; number < 200; ++number) {
            const Late row = grid[u"Rows"][u"Add"];
            row.SetAt(u"Value", u"Name", u"Prüfbericht " + DecimalText(number));
            row.SetAt(u"Value", u"Text",
                      number % 3 == 0 ? u"Größe 日本 ∞" : u"Ausführungsplan, Übersicht");
        }
        grid.Set(u"Redraw", true);
        Pump();
        UpdateWindow(window);
    }
    Pixels Picture() const {
        RECT client{};
        GetClientRect(window, &client);
        return PixelsOf(ScreenDc(window).Get(), {client.right, client.bottom});
    }
    Pixels PictureDrawnAnew() const {
        InvalidateRect(window, nullptr, FALSE);
        UpdateWindow(window);
        return Picture();
    }
    void Wheel(int notches) const {
        SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA), 0);
        UpdateWindow(window);
    }
};

} // namespace

TEST(Painting, ScrolledRowsLookAsIfDrawnAnew) {
    const PaintedRig rig;
    for (const int notches : {-1, -1, 1, -2, -1, 2, 1, 3}) {
        const Pixels before = rig.Picture();
        rig.Wheel(notches);
        const Pixels after = rig.Picture();
        EXPECT_NE(before, after);
        EXPECT_EQ(after, rig.PictureDrawnAnew());
    }
}

TEST(Painting, WhatWaitsToBeDrawnIsDrawnWhereItHasMovedTo) {
    const PaintedRig rig;
    rig.grid[u"Rows"](u"Item", 6).SetAt(u"Value", u"Name", u"noch nicht gezeichnet");
    const RECT part{0, 100, 300, 140};
    InvalidateRect(rig.window, &part, FALSE);
    rig.Wheel(-1);
    const Pixels shown = rig.Picture();
    EXPECT_EQ(shown, rig.PictureDrawnAnew());
}

TEST(Painting, ScrollingWhatIsNotShownDoesNothing) {
    const PaintedRig rig;
    ShowWindow(rig.frame, SW_HIDE);
    rig.Wheel(-1);
    ShowWindow(rig.frame, SW_SHOW);
    UpdateWindow(rig.window);
    const Pixels shown = rig.Picture();
    EXPECT_EQ(shown, rig.PictureDrawnAnew());
}

TEST(Painting, LatinTextsByTheirGlyphsLookAsTheSystemDrawsThem) {
    const ScreenDc screen;
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    grid::LatinFont font;
    font.Make(screen.Get(), metrics.lfMessageFont);
    const SIZE size{400, 30};
    for (const std::u16string text : {u"Prüfbericht (Änderung) Größe", u"AVAW Tö fi ffl",
                                      u"\\\\server\\daten\\4711.doc", u""}) {
        const auto width = font.WidthOf(text);
        ASSERT_TRUE(width.has_value());
        MemoryPicture ours(screen.Get(), size);
        MemoryPicture theirs(screen.Get(), size);
        const RECT all{0, 0, size.cx, size.cy};
        for (const HDC dc : {ours.Get(), theirs.Get()}) {
            FillRect(dc, &all, GetSysColorBrush(COLOR_WINDOW));
        }
        const Chosen inOurs(ours.Get(), font.Get());
        const Chosen inTheirs(theirs.Get(), font.Get());
        font.Draw(ours.Get(), {5, 4}, all, text);
        ExtTextOutW(theirs.Get(), 5, 4, ETO_CLIPPED, &all, Wide(text),
                    static_cast<UINT>(text.size()), nullptr);
        SIZE measured{};
        GetTextExtentPoint32W(theirs.Get(), Wide(text), static_cast<int>(text.size()), &measured);
        EXPECT_EQ(*width, measured.cx);
        EXPECT_EQ(PixelsOf(ours.Get(), size), PixelsOf(theirs.Get(), size));
    }
    for (const std::u16string text : {u"日本", u"a\tb", u"\u05D0", u"∞"}) {
        EXPECT_EQ(font.WidthOf(text), std::nullopt);
    }
    EXPECT_EQ(font.Shortened(u"Ausführungsplan", *font.WidthOf(u"Aus...") + 1), u"Aus...");
}

} // namespace talvix
