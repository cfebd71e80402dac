#include "grid/control/grid_theme.h"

#include "platform/win32/device_context.h"

namespace talvix::grid {

namespace {

// Parts and states of vssym32.h, whose names the compiler's headers keep for later systems.
constexpr int kHeaderItem = 1;
constexpr int kNormal = 1;
constexpr int kGlyph = 2;
constexpr int kClosed = 1;
constexpr int kOpened = 2;
constexpr std::size_t kMostKept = 200;

} // namespace

void GridTheme::Open(bool highContrast) {
    pictures_.clear();
    const bool styled = !highContrast && IsAppThemed() != FALSE;
    header_.Reset(styled ? OpenThemeData(nullptr, L"HEADER") : nullptr);
    tree_.Reset(styled ? OpenThemeData(nullptr, L"TREEVIEW") : nullptr);
    const ScreenDc screen;
    memory_.Reset(styled ? CreateCompatibleDC(screen.Get()) : nullptr);
    if (tree_ && FAILED(GetThemePartSize(tree_.Get(), screen.Get(), kGlyph, kClosed, nullptr,
                                         TS_TRUE, &signSize_))) {
        tree_.Reset();
    }
}

HBITMAP GridTheme::PictureOf(const OwnedTheme& theme, const Piece& piece) {
    if (pictures_.size() > kMostKept) {
        pictures_.clear();
    }
    OwnedBitmap& kept = pictures_[{piece.part, piece.state, piece.size.cx, piece.size.cy,
                                   static_cast<std::int64_t>(piece.background)}];
    if (kept) {
        return kept.Get();
    }
    const ScreenDc screen;
    OwnedBitmap picture(CreateCompatibleBitmap(screen.Get(), piece.size.cx, piece.size.cy));
    const OwnedBrush brush(CreateSolidBrush(piece.background));
    const Chosen chosen(memory_.Get(), picture.Get());
    const RECT all{0, 0, piece.size.cx, piece.size.cy};
    FillRect(memory_.Get(), &all, brush.Get());
    if (FAILED(DrawThemeBackground(theme.Get(), memory_.Get(), piece.part, piece.state, &all,
                                   nullptr))) {
        return nullptr;
    }
    kept = std::move(picture);
    return kept.Get();
}

bool GridTheme::Draw(HDC dc, POINT place, const OwnedTheme& theme, const Piece& piece) {
    const HBITMAP picture = theme ? PictureOf(theme, piece) : nullptr;
    if (picture == nullptr) {
        return false;
    }
    const Chosen chosen(memory_.Get(), picture);
    return BitBlt(dc, place.x, place.y, piece.size.cx, piece.size.cy, memory_.Get(), 0, 0,
                  SRCCOPY) != FALSE;
}

bool GridTheme::DrawHeaderItem(HDC dc, const RECT& box) {
    return Draw(dc, {box.left, box.top}, header_,
                {kHeaderItem,
                 kNormal,
                 {box.right - box.left, box.bottom - box.top},
                 GetSysColor(COLOR_BTNFACE)});
}

bool GridTheme::DrawSign(HDC dc, const RECT& box, bool expanded, COLORREF background) {
    const POINT place{(box.left + box.right - signSize_.cx) / 2,
                      (box.top + box.bottom - signSize_.cy) / 2};
    return Draw(dc, place, tree_, {kGlyph, expanded ? kOpened : kClosed, signSize_, background});
}

} // namespace talvix::grid
