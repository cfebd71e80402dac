#include "workbench/program/page.h"

#include "platform/win32/wide.h"

namespace talvix::workbench {

void Page::Show(bool visible) {
    visible_ = visible;
    for (HWND control : controls_) {
        ShowWindow(control, visible ? SW_SHOWNA : SW_HIDE);
    }
}

HWND Page::Add(const wchar_t* kind, std::u16string_view text, DWORD style, int id,
               DWORD extendedStyle) {
    HWND control = CreateWindowExW(extendedStyle, kind, Wide(std::u16string(text)),
                                   style | WS_CHILD | (visible_ ? WS_VISIBLE : 0), 0, 0, 10, 10,
                                   look_.window, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)),
                                   GetModuleHandleW(nullptr), nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(look_.font), FALSE);
    Take(control);
    return control;
}

void Page::Drop(HWND control) {
    std::erase(controls_, control);
}

std::u16string TextOfControl(HWND control) {
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, u'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(control, WideBuffer(text), static_cast<int>(text.size()))));
    return text;
}

} // namespace talvix::workbench
