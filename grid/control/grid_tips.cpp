#include "grid/control/grid_tips.h"

#include "platform/win32/com/module.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <commctrl.h>

namespace talvix::grid {

namespace {

constexpr int kWidest = 900; // pixels before a tip breaks into lines

TOOLINFOW ToolOf(HWND owner) {
    TOOLINFOW tool{};
    // The size that all versions of the common controls take.
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.hwnd = owner;
    tool.uId = 1;
    return tool;
}

} // namespace

void GridTips::Create(HWND owner) {
    owner_ = owner;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    window_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, ModuleHandle(), nullptr);
    if (window_ == nullptr) {
        return;
    }
    TOOLINFOW tool = ToolOf(owner);
    tool.uFlags = TTF_TRANSPARENT; // no subclass, which all messages would go through
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, kWidest);
}

void GridTips::Announce(const RECT& place) {
    TOOLINFOW tool = ToolOf(owner_);
    tool.rect = place;
    SendMessageW(window_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void GridTips::MouseMove(POINT point) {
    if (window_ == nullptr || (cut_ && PtInRect(&cut_->place, point) != FALSE)) {
        return;
    }
    Hide();
    cut_ = painter_.CutTextAt(point);
    if (cut_) {
        Announce(cut_->place);
    }
}

void GridTips::Relay(UINT message, WPARAM wParam, LPARAM lParam) {
    if (window_ != nullptr && cut_) {
        MSG told{};
        told.hwnd = owner_;
        told.message = message;
        told.wParam = wParam;
        told.lParam = lParam;
        SendMessageW(window_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&told));
    }
}

void GridTips::Hide() {
    if (window_ != nullptr && cut_) {
        cut_.reset();
        Announce(RECT{});
        SendMessageW(window_, TTM_POP, 0, 0);
    }
}

std::optional<LRESULT> GridTips::Notify(const NMHDR& notification) {
    if (window_ == nullptr || notification.hwndFrom != window_ || !cut_) {
        return std::nullopt;
    }
    if (notification.code == TTN_GETDISPINFOW) {
        auto& wanted =
            const_cast<NMTTDISPINFOW&>(reinterpret_cast<const NMTTDISPINFOW&>(notification));
        wanted.lpszText = WideBuffer(cut_->text);
        return 0;
    }
    if (notification.code == TTN_SHOW) { // the text stands where it stands in its cell
        RECT place = cut_->place;
        MapWindowPoints(owner_, nullptr, reinterpret_cast<POINT*>(&place), 2);
        SendMessageW(window_, TTM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&place));
        SetWindowPos(window_, HWND_TOPMOST, place.left, place.top, 0, 0,
                     SWP_NOSIZE | SWP_NOACTIVATE);
        return 1;
    }
    return std::nullopt;
}

} // namespace talvix::grid
