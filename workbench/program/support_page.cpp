#include "workbench/program/support_page.h"

#include "automation/text.h"
#include "platform/win32/wide.h"
#include "workbench/program/control_host.h"

#include <windows.h>
#include <commctrl.h>
#include <oleauto.h>

#include <algorithm>
#include <iterator>

namespace talvix::workbench {

namespace {

constexpr int kFirstAction = 350;
constexpr int kDate = 360;
constexpr int kText = 361;

struct ActionButton {
    const char16_t* caption;
    int width;
    bool needsAction;
};
/// In the order of ActionCommand.
constexpr ActionButton kActionButtons[] = {
    {u"Hinzu&fügen", 95, false}, {u"Über&nehmen", 95, true}, {u"En&tfernen", 95, true}};

} // namespace

SupportPage::SupportPage(const Look& look) : Page(look) {
    dateLabel_ = Add(L"STATIC", u"Be&ginn:", SS_LEFT, -1);
    date_ = Add(DATETIMEPICK_CLASSW, u"", DTS_SHORTDATEFORMAT | WS_TABSTOP, kDate);
    textLabel_ = Add(L"STATIC", u"Be&schreibung:", SS_LEFT, -1);
    text_ = Add(L"EDIT", u"", ES_AUTOHSCROLL | WS_TABSTOP, kText, WS_EX_CLIENTEDGE);
    for (const ActionButton& each : kActionButtons) {
        const int id = kFirstAction + static_cast<int>(buttons_.size());
        buttons_.push_back(Add(L"BUTTON", each.caption, WS_TABSTOP, id));
    }
}

std::optional<ActionCommand> SupportPage::CommandOf(int id, int notification) {
    const int at = id - kFirstAction;
    if (notification != BN_CLICKED || at < 0 || at >= static_cast<int>(std::size(kActionButtons))) {
        return std::nullopt;
    }
    return static_cast<ActionCommand>(at);
}

HWND SupportPage::RenewGridHost() {
    if (gridHost_ != nullptr) {
        Drop(gridHost_);
        DestroyWindow(gridHost_);
    }
    gridHost_ = CreateControlHost(look().window);
    Take(gridHost_);
    ShowWindow(gridHost_, IsVisible() ? SW_SHOWNA : SW_HIDE);
    return gridHost_;
}

void SupportPage::ShowAction(const host::Action* action) {
    const std::int32_t id = action == nullptr ? 0 : action->id;
    if (shownId_ == id) {
        return;
    }
    shownId_ = id;
    for (std::size_t at = 0; at < buttons_.size(); ++at) {
        EnableWindow(buttons_[at],
                     !kActionButtons[at].needsAction || action != nullptr ? TRUE : FALSE);
    }
    SetWindowTextW(text_, action == nullptr ? L"" : Wide(action->description));
    SYSTEMTIME day{};
    if (action != nullptr && VariantTimeToSystemTime(action->startDate.days, &day) != FALSE) {
        SendMessageW(date_, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&day));
    }
}

std::optional<host::Action> SupportPage::TypedAction() const {
    const std::u16string typed = TextOfControl(text_);
    SYSTEMTIME day{};
    double days = 0;
    if (Trim(typed).empty() ||
        SendMessageW(date_, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&day)) != GDT_VALID) {
        return std::nullopt;
    }
    day.wHour = day.wMinute = day.wSecond = day.wMilliseconds = 0;
    SystemTimeToVariantTime(&day, &days);
    return host::Action{0, Date{days}, std::u16string(Trim(typed))};
}

void SupportPage::Layout(const RECT& place) {
    const int left = static_cast<int>(place.left);
    const int height = look().Scaled(23);
    const int label = look().Scaled(95);
    const int gap = look().Scaled(6);
    const int width = std::max(0, static_cast<int>(place.right - place.left));
    int top = static_cast<int>(place.top);
    MoveWindow(dateLabel_, left, top + look().Scaled(4), label, height, TRUE);
    MoveWindow(date_, left + label, top, look().Scaled(120), height, TRUE);
    top += height + gap;
    MoveWindow(textLabel_, left, top + look().Scaled(4), label, height, TRUE);
    MoveWindow(text_, left + label, top, std::clamp(width - label, 0, look().Scaled(560)), height,
               TRUE);
    top += height + gap;
    int at = left + label;
    for (std::size_t button = 0; button < buttons_.size(); ++button) {
        const int own = look().Scaled(kActionButtons[button].width);
        MoveWindow(buttons_[button], at, top, own, look().Scaled(26), TRUE);
        at += own + gap;
    }
    top += look().Scaled(26) + gap;
    if (gridHost_ != nullptr) {
        MoveWindow(gridHost_, left, top, width, std::max(0, static_cast<int>(place.bottom) - top),
                   TRUE);
    }
}

} // namespace talvix::workbench
