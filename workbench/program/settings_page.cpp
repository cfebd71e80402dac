#include "workbench/program/settings_page.h"

#include "platform/win32/wide.h"

#include <algorithm>
#include <iterator>

namespace talvix::workbench {

namespace {

constexpr int kFirstField = 300;
constexpr const char16_t* kYes = u"True";

/// A field of the page: of the project itself, or a global setting.
struct SettingField {
    const char16_t* caption;
    std::u16string host::Project::*member; ///< null for a setting
    const char16_t* setting;
    bool isCheck;
    bool startsGroup;
};

constexpr SettingField kFields[] = {
    {u"Projekt&nummer:", &host::Project::number, nullptr, false, false},
    {u"&Projektname:", &host::Project::name, nullptr, false, false},
    {u"&Firma:", &host::Project::company, nullptr, false, false},
    {u"&Basisordner:", nullptr, u"DOCUMENTS/PATH", false, true},
    {u"Namens&regel:", nullptr, u"DOCUMENTS/RULES", false, false},
    {u"&Unterordner anlegen", nullptr, u"DOCUMENTS/SUB_ACTIVE", true, true},
    {u"Unter&ordner (mit Komma):", nullptr, u"DOCUMENTS/SUB_LIST", false, false},
};

constexpr const char16_t* kHint =
    u"Ohne festgelegten Projektordner wird er aus Basisordner und Namensregel ermittelt. In der "
    u"Namensregel stehen <Project Number>, <Project Name> und <Company Name> für die Angaben des "
    u"Projekts.";

std::u16string& TextOf(host::Project& project, const SettingField& field) {
    return field.member != nullptr ? project.*field.member : project.settings[field.setting];
}

std::u16string TextIn(const host::Project& project, const SettingField& field) {
    if (field.member != nullptr) {
        return project.*field.member;
    }
    const auto found = project.settings.find(field.setting);
    return found == project.settings.end() ? std::u16string() : found->second;
}

} // namespace

SettingsPage::SettingsPage(const Look& look) : Page(look) {
    for (const SettingField& each : kFields) {
        const int id = kFirstField + static_cast<int>(fields_.size());
        if (each.isCheck) {
            labels_.push_back(nullptr);
            fields_.push_back(Add(L"BUTTON", each.caption, BS_AUTOCHECKBOX | WS_TABSTOP, id));
        } else {
            labels_.push_back(Add(L"STATIC", each.caption, SS_LEFT, -1));
            fields_.push_back(Add(L"EDIT", u"", ES_AUTOHSCROLL | WS_TABSTOP, id, WS_EX_CLIENTEDGE));
        }
    }
    hint_ = Add(L"STATIC", kHint, SS_LEFT | SS_NOPREFIX, -1);
}

void SettingsPage::ShowProject(const host::Project& project) {
    filling_ = true;
    for (std::size_t at = 0; at < fields_.size(); ++at) {
        const std::u16string text = TextIn(project, kFields[at]);
        if (kFields[at].isCheck) {
            SendMessageW(fields_[at], BM_SETCHECK, text == kYes ? BST_CHECKED : BST_UNCHECKED, 0);
        } else if (TextOfControl(fields_[at]) != text) {
            SetWindowTextW(fields_[at], Wide(text));
        }
    }
    filling_ = false;
}

bool SettingsPage::TakeChange(int id, int notification, host::Project& project) {
    const int at = id - kFirstField;
    if (filling_ || at < 0 || at >= static_cast<int>(std::size(kFields))) {
        return false;
    }
    const SettingField& field = kFields[at];
    HWND control = fields_[static_cast<std::size_t>(at)];
    if (notification != (field.isCheck ? BN_CLICKED : EN_CHANGE)) {
        return false;
    }
    const bool isChecked = SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
    const std::u16string text =
        field.isCheck ? std::u16string(isChecked ? kYes : u"") : TextOfControl(control);
    std::u16string& stored = TextOf(project, field);
    if (stored == text) {
        return false;
    }
    stored = text;
    project.isChanged = true;
    return true;
}

void SettingsPage::Layout(const RECT& place) {
    const int left = static_cast<int>(place.left) + look().Scaled(6);
    const int label = look().Scaled(170);
    const int height = look().Scaled(23);
    const int available = static_cast<int>(place.right) - left - label - look().Scaled(6);
    const int width = std::clamp(available, 0, look().Scaled(560));
    int top = static_cast<int>(place.top) + look().Scaled(6);
    for (std::size_t at = 0; at < fields_.size(); ++at) {
        top += kFields[at].startsGroup ? look().Scaled(14) : 0;
        if (labels_[at] != nullptr) {
            MoveWindow(labels_[at], left, top + look().Scaled(4), label, height, TRUE);
        }
        MoveWindow(fields_[at], left + label, top, width, height, TRUE);
        top += height + look().Scaled(7);
    }
    MoveWindow(hint_, left + label, top + look().Scaled(8), width, look().Scaled(70), TRUE);
}

} // namespace talvix::workbench
