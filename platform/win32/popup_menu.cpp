#include "platform/win32/popup_menu.h"

#include "platform/win32/wide.h"

namespace talvix {

namespace {

constexpr UINT kLongestText = 1024;

MENUITEMINFOW ItemOf(UINT mask, std::int32_t command = 0) {
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = mask;
    item.wID = static_cast<UINT>(command);
    return item;
}

} // namespace

CPopupMenu::CPopupMenu() : menu_(CreatePopupMenu()) {}

CPopupMenu::~CPopupMenu() {
    if (isOwned_) {
        DestroyMenu(menu_);
    }
}

void CPopupMenu::Insert(MENUITEMINFOW& item) {
    InsertMenuItemW(menu_, static_cast<UINT>(GetMenuItemCount(menu_)), TRUE, &item);
}

void CPopupMenu::AddEntry(std::int32_t command, std::u16string_view text, bool enabled) {
    std::u16string caption(text);
    MENUITEMINFOW item = ItemOf(MIIM_ID | MIIM_STRING | MIIM_STATE, command);
    item.dwTypeData = WideBuffer(caption);
    item.fState = enabled ? MFS_ENABLED : MFS_DISABLED;
    Insert(item);
}

void CPopupMenu::AddSeparator(std::int32_t command) {
    MENUITEMINFOW item = ItemOf(MIIM_ID | MIIM_FTYPE, command);
    item.fType = MFT_SEPARATOR;
    Insert(item);
}

PopupMenu& CPopupMenu::AddSubMenu(std::int32_t command, std::u16string_view text) {
    subMenus_.push_back(std::make_unique<CPopupMenu>());
    CPopupMenu& made = *subMenus_.back();
    std::u16string caption(text);
    MENUITEMINFOW item = ItemOf(MIIM_ID | MIIM_STRING | MIIM_SUBMENU, command);
    item.dwTypeData = WideBuffer(caption);
    item.hSubMenu = made.menu_;
    Insert(item);
    made.isOwned_ = false;
    return made;
}

void CPopupMenu::SetState(std::int32_t command, UINT bit, bool on) {
    MENUITEMINFOW item = ItemOf(MIIM_STATE);
    if (GetMenuItemInfoW(menu_, static_cast<UINT>(command), FALSE, &item) != FALSE) {
        item.fState = on ? item.fState | bit : item.fState & ~bit;
        SetMenuItemInfoW(menu_, static_cast<UINT>(command), FALSE, &item);
    }
}

void CPopupMenu::SetChecked(std::int32_t command, bool checked) {
    SetState(command, MFS_CHECKED, checked);
}

void CPopupMenu::SetEnabled(std::int32_t command, bool enabled) {
    SetState(command, MFS_DISABLED, !enabled);
}

void CPopupMenu::SetDefault(std::int32_t command) {
    SetState(command, MFS_DEFAULT, true);
}

std::u16string CPopupMenu::Text(std::int32_t command) {
    std::u16string text(kLongestText, u'\0');
    MENUITEMINFOW item = ItemOf(MIIM_STRING);
    item.dwTypeData = WideBuffer(text);
    item.cch = kLongestText;
    const BOOL found = GetMenuItemInfoW(menu_, static_cast<UINT>(command), FALSE, &item);
    text.resize(found != FALSE ? item.cch : 0);
    return text;
}

std::int32_t CPopupMenu::Show(std::int64_t owner, std::uint32_t flags, std::int32_t x,
                              std::int32_t y) {
    POINT place{x, y};
    if (x == kAtMouse && y == kAtMouse) {
        GetCursorPos(&place);
    }
    HWND window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(owner));
    return TrackPopupMenuEx(menu_, flags, place.x, place.y, window, nullptr);
}

} // namespace talvix
