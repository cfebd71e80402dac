#include "workbench/program/documents_page.h"

#include "platform/win32/wide.h"
#include "workbench/program/control_host.h"

#include <algorithm>
#include <iterator>

namespace talvix::workbench {

namespace {

constexpr int kFirstButton = 200;
constexpr int kFolder = 250;
constexpr int kFilter = 251;

constexpr DocumentsPage::Button kButtons[] = {
    {u"&Neu…", PageCommand::Forward, u"btnNewDocument_Click", 70, false},
    {u"Ände&rn…", PageCommand::Forward, u"btnChangeDocument_Click", 80, false},
    {u"Ö&ffnen", PageCommand::Forward, u"btnOpenDocument_Click", 70, false},
    {u"&Löschen", PageCommand::Forward, u"btnDeleteDocument_Click", 75, false},
    {u"E&xportieren", PageCommand::Forward, u"btnExportDocuments_Click", 90, false},
    {u"E-Mail &ablegen…", PageCommand::FileMail, nullptr, 120, false},
    {u"Ordner&inhalt einlesen", PageCommand::ReadFolder, nullptr, 150, false},
    {u"&Ordner öffnen", PageCommand::Forward, u"btnOpenFolder_Click", 105, true},
    {u"Ordner fe&stlegen…", PageCommand::Forward, u"btnDMSSetStore_Click", 130, true},
    {u"Ordner en&tfernen", PageCommand::Forward, u"btnDMSDeletetStore_Click", 125, true},
};

} // namespace

DocumentsPage::DocumentsPage(const Look& look) : Page(look) {
    folderLabel_ = Add(L"STATIC", u"&Projektordner:", SS_LEFT, -1);
    folder_ = Add(L"EDIT", u"", ES_AUTOHSCROLL | WS_TABSTOP, kFolder, WS_EX_CLIENTEDGE);
    for (const Button& each : kButtons) {
        const int id = kFirstButton + static_cast<int>(buttons_.size());
        buttons_.push_back(Add(L"BUTTON", each.caption, WS_TABSTOP, id));
    }
    filterLabel_ = Add(L"STATIC", u"S&uchen:", SS_LEFT, -1);
    filter_ = Add(L"EDIT", u"", ES_AUTOHSCROLL | WS_TABSTOP, kFilter, WS_EX_CLIENTEDGE);
    ShowFilter();
}

const DocumentsPage::Button* DocumentsPage::ButtonOf(int id) {
    const int at = id - kFirstButton;
    return at >= 0 && at < static_cast<int>(std::size(kButtons)) ? &kButtons[at] : nullptr;
}

bool DocumentsPage::IsFolderEntered(int id, int notification) {
    return id == kFolder && notification == EN_KILLFOCUS;
}

bool DocumentsPage::IsFilterChanged(int id, int notification) {
    return id == kFilter && notification == EN_CHANGE;
}

void DocumentsPage::ShowFilter() {
    for (HWND control : {filterLabel_, filter_}) {
        ShowWindow(control, IsVisible() && filterIsOpen_ ? SW_SHOWNA : SW_HIDE);
    }
}

void DocumentsPage::Show(bool visible) {
    Page::Show(visible);
    ShowFilter();
}

void DocumentsPage::OpenFilter() {
    filterIsOpen_ = true;
    ShowFilter();
    SetFocus(filter_);
    SendMessageW(filter_, EM_SETSEL, 0, -1);
}

bool DocumentsPage::CloseFilter() {
    if (!filterIsOpen_) {
        return false;
    }
    filterIsOpen_ = false;
    SetWindowTextW(filter_, L"");
    ShowFilter();
    if (IsVisible()) {
        SetFocus(GetWindow(gridHost_, GW_CHILD));
    }
    return true;
}

HWND DocumentsPage::RenewGridHost() {
    if (gridHost_ != nullptr) {
        Drop(gridHost_);
        DestroyWindow(gridHost_);
    }
    gridHost_ = CreateControlHost(look().window);
    Take(gridHost_);
    ShowWindow(gridHost_, IsVisible() ? SW_SHOWNA : SW_HIDE);
    return gridHost_;
}

void DocumentsPage::ShowFolder(std::u16string_view folder) {
    if (Folder() != folder) {
        SetWindowTextW(folder_, Wide(std::u16string(folder)));
    }
}

int DocumentsPage::PlaceButtons(bool besideFolder, const RECT& place, int top) {
    const int gap = look().Scaled(6);
    const int height = look().Scaled(26);
    int at = static_cast<int>(place.left);
    for (std::size_t button = 0; button < buttons_.size(); ++button) {
        if (kButtons[button].besideFolder != besideFolder) {
            continue;
        }
        const int own = look().Scaled(kButtons[button].width);
        if (at + own > place.right && at > place.left) {
            at = static_cast<int>(place.left); // a narrow window takes several lines of buttons
            top += height + gap;
        }
        MoveWindow(buttons_[button], at, top, own, height, TRUE);
        at += own + gap;
    }
    return top + height + gap;
}

void DocumentsPage::Layout(const RECT& place) {
    const int label = look().Scaled(95);
    const int left = static_cast<int>(place.left);
    const int width = std::max(0, static_cast<int>(place.right - place.left));
    int beside = 0;
    for (const Button& each : kButtons) {
        beside += each.besideFolder ? look().Scaled(each.width + 6) : 0;
    }
    // The folder's buttons get a line of their own where the field would become too narrow.
    const bool fits = width - label - beside >= look().Scaled(150);
    const int top = static_cast<int>(place.top);
    const int field = std::max(0, width - label - (fits ? beside : 0));
    MoveWindow(folderLabel_, left, top + look().Scaled(5), label, look().Scaled(20), TRUE);
    MoveWindow(folder_, left + label, top + look().Scaled(1), field, look().Scaled(23), TRUE);
    const RECT right{left + label + field + look().Scaled(6), place.top, place.right, place.bottom};
    int next = PlaceButtons(true, fits ? right : place, fits ? top : top + look().Scaled(32));
    next = PlaceButtons(false, place, next);
    if (filterIsOpen_) {
        MoveWindow(filterLabel_, left, next + look().Scaled(4), label, look().Scaled(20), TRUE);
        MoveWindow(filter_, left + label, next, std::min(width - label, look().Scaled(320)),
                   look().Scaled(23), TRUE);
        next += look().Scaled(29);
    }
    if (gridHost_ != nullptr) {
        MoveWindow(gridHost_, left, next, width, std::max(0, static_cast<int>(place.bottom) - next),
                   TRUE);
    }
}

} // namespace talvix::workbench
