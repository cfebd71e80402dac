#include "platform/win32/dialog_template.h"

namespace talvix {

namespace {

constexpr std::size_t kCountPlace = 4; // behind style and extended style
constexpr WORD kPointSize = 8;
constexpr WORD kOrdinalFollows = 0xFFFF;

} // namespace

DialogTemplate::DialogTemplate(DWORD style, const DialogRect& place, std::u16string_view caption,
                               std::u16string_view font) {
    Append(style | DS_SETFONT);
    Append(DWORD{0});
    words_.push_back(0); // number of controls
    Append(place);
    words_.push_back(0); // no menu
    words_.push_back(0); // the standard class
    Append(caption);
    words_.push_back(kPointSize);
    Append(font);
}

void DialogTemplate::Add(WORD kind, WORD id, DWORD style, const DialogRect& place,
                         std::u16string_view text) {
    if (words_.size() % 2 != 0) {
        words_.push_back(0); // controls begin at multiples of four bytes
    }
    Append(style | WS_CHILD | WS_VISIBLE);
    Append(DWORD{0});
    Append(place);
    words_.push_back(id);
    words_.push_back(kOrdinalFollows);
    words_.push_back(kind);
    Append(text);
    words_.push_back(0); // no creation data
    ++words_[kCountPlace];
}

void DialogTemplate::Append(DWORD number) {
    words_.push_back(LOWORD(number));
    words_.push_back(HIWORD(number));
}

void DialogTemplate::Append(const DialogRect& place) {
    for (const short each : {place.left, place.top, place.width, place.height}) {
        words_.push_back(static_cast<WORD>(each));
    }
}

void DialogTemplate::Append(std::u16string_view text) {
    for (const char16_t unit : text) {
        words_.push_back(unit);
    }
    words_.push_back(0);
}

void CenterOverOwner(HWND dialog) {
    HWND owner = GetWindow(dialog, GW_OWNER);
    RECT own{};
    RECT over{};
    const bool isOver = owner != nullptr && IsWindowVisible(owner) != FALSE;
    const BOOL known =
        isOver ? GetWindowRect(owner, &over) : SystemParametersInfoW(SPI_GETWORKAREA, 0, &over, 0);
    if (known == FALSE || GetWindowRect(dialog, &own) == FALSE) {
        return;
    }
    const int left = static_cast<int>(over.left + over.right - (own.right - own.left)) / 2;
    const int top = static_cast<int>(over.top + over.bottom - (own.bottom - own.top)) / 2;
    SetWindowPos(dialog, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace talvix
