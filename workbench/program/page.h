#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace talvix::workbench {

/// What all pages measure with: lengths are given for 96 dots per inch.
struct Look {
    HWND window = nullptr; ///< that the controls are children of
    HFONT font = nullptr;
    int dpi = 96;

    int Scaled(int length) const { return MulDiv(length, dpi, 96); }
};

/// One page of the window: its controls, shown and hidden together.
class Page {
public:
    explicit Page(const Look& look) : look_(look) {}
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;
    virtual ~Page() = default;

    virtual void Show(bool visible);
    bool IsVisible() const { return visible_; }
    /// Puts the controls into the rectangle.
    virtual void Layout(const RECT& place) = 0;

protected:
    HWND Add(const wchar_t* kind, std::u16string_view text, DWORD style, int id,
             DWORD extendedStyle = 0);
    /// A control that was made elsewhere.
    void Take(HWND control) { controls_.push_back(control); }
    void Drop(HWND control);
    const Look& look() const { return look_; }

private:
    const Look look_;
    std::vector<HWND> controls_;
    bool visible_ = true;
};

std::u16string TextOfControl(HWND control);

} // namespace talvix::workbench
