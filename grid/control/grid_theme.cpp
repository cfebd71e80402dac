#include "grid/control/grid_theme.h"

namespace talvix::grid {

namespace {

// Parts and states of vssym32.h, whose names the compiler's headers keep for later systems.
constexpr int kHeaderItem = 1;
constexpr int kNormal = 1;
constexpr int kGlyph = 2;
constexpr int kClosed = 1;
constexpr int kOpened = 2;
constexpr std::size_t kMostKept = 100;

} // namespace

void GridTheme::Open(bool highContrast) {
    pictures_.clear();
    const bool styled = !highContrast && IsAppThemed() != FALSE;
    header_.Reset(styled ? OpenThemeData(nullptr, L"HEADER") : nullptr);
    tree_.Reset(styled ? OpenThemeData(nullptr, L"TREEVIEW") : nullptr);
    const ScreenDc screen;
    if (tree_ && FAILED(GetThemePartSize(tree_.Get(), screen.Get(), kGlyph, kClosed, nullptr,
                                         TS_TRUE, &signSize_))) {
        tree_.Reset();
    }
}

/// The picture of a piece; empty where the style has none.
const MemoryPicture& GridTheme::PictureOf(const OwnedTheme& theme, const Piece& piece) {
    if (pictures_.size() > kMostKept) {
        pictures_.clear();
    }
    const auto [kept, isNew] =
        pictures_.try_emplace({piece.part, piece.state, piece.size.cx, piece.size.cy,
                               static_cast<std::int64_t>(piece.background)});
    if (isNew) {
        const ScreenDc screen;
        MemoryPicture picture(screen.Get(), piece.size);
        const OwnedBrush brush(CreateSolidBrush(piece.background));
        const RECT all{0, 0, piece.size.cx, piece.size.cy};
        FillRect(picture.Get(), &all, brush.Get());
        if (SUCCEEDED(DrawThemeBackground(theme.Get(), picture.Get(), piece.part, piece.state, &all,
                                          nullptr))) {
            kept->second = std::move(picture);
        }
    }
    return kept->second;
}

bool GridTheme::Draw(HDC dc, POINT place, const OwnedTheme& theme, const Piece& piece) {
    if (!theme) {
        return false;
    }
    const MemoryPicture& picture = PictureOf(theme, piece);
    return picture && BitBlt(dc, place.x, place.y, piece.size.cx, piece.size.cy, picture.Get(), 0,
                             0, SRCCOPY) != FALSE;
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
