#include "workbench/program/documents_page.h"

#include "platform/win32/wide.h"
#include "workbench/program/control_host.h"

#include <algorithm>
#include <iterator>

namespace talvix::workbench {

namespace {

constexpr int kFirstButton = 200;
constexpr int kFolder = 250;

constexpr DocumentsPage::Button kButtons[] = {
    {u"&Neu…", PageCommand::Forward, u"btnNewDocument_Click", 70},
    {u"Än&dern…", PageCommand::Forward, u"btnChangeDocument_Click", 80},
    {u"Ö&ffnen", PageCommand::Forward, u"btnOpenDocument_Click", 70},
    {u"&Löschen", PageCommand::Forward, u"btnDeleteDocument_Click", 75},
    {u"E&xportieren", PageCommand::Forward, u"btnExportDocuments_Click", 90},
    {u"E-Mail &ablegen…", PageCommand::FileMail, nullptr, 120},
    {u"Ordner&inhalt einlesen", PageCommand::ReadFolder, nullptr, 150},
    {u"O&rdner öffnen", PageCommand::Forward, u"btnOpenFolder_Click", 110},
    {u"Ordner fe&stlegen…", PageCommand::Forward, u"btnDMSSetStore_Click", 130},
    {u"Ordner en&tfernen", PageCommand::Forward, u"btnDMSDeletetStore_Click", 125},
};

} // namespace

DocumentsPage::DocumentsPage(const Look& look) : Page(look) {
    folderLabel_ = Add(L"STATIC", u"&Projektordner:", SS_LEFT, -1);
    folder_ = Add(L"EDIT", u"", ES_AUTOHSCROLL | WS_TABSTOP, kFolder, WS_EX_CLIENTEDGE);
    for (const Button& each : kButtons) {
        const int id = kFirstButton + static_cast<int>(buttons_.size());
        buttons_.push_back(Add(L"BUTTON", each.caption, WS_TABSTOP, id));
    }
}

const DocumentsPage::Button* DocumentsPage::ButtonOf(int id) {
    const int at = id - kFirstButton;
    return at >= 0 && at < static_cast<int>(std::size(kButtons)) ? &kButtons[at] : nullptr;
}

bool DocumentsPage::IsFolderEntered(int id, int notification) {
    return id == kFolder && notification == EN_KILLFOCUS;
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

void DocumentsPage::Layout(const RECT& place) {
    const int gap = look().Scaled(6);
    const int height = look().Scaled(26);
    const int label = look().Scaled(95);
    const int left = static_cast<int>(place.left);
    const int width = std::max(0, static_cast<int>(place.right - place.left));
    int top = static_cast<int>(place.top);
    MoveWindow(folderLabel_, left, top + look().Scaled(4), label, height, TRUE);
    MoveWindow(folder_, left + label, top, std::max(0, width - label), look().Scaled(23), TRUE);
    top += height + gap;
    int at = left;
    for (std::size_t button = 0; button < buttons_.size(); ++button) {
        const int own = look().Scaled(kButtons[button].width);
        if (at + own > left + width && at > left) {
            at = left; // a narrow window takes several rows of buttons
            top += height + gap;
        }
        MoveWindow(buttons_[button], at, top, own, height, TRUE);
        at += own + gap;
    }
    top += height + gap;
    if (gridHost_ != nullptr) {
        MoveWindow(gridHost_, left, top, width, std::max(0, static_cast<int>(place.bottom) - top),
                   TRUE);
    }
}

} // namespace talvix::workbench
