#include "workbench/program/fields_page.h"

#include "platform/win32/wide.h"

#include <algorithm>

namespace talvix::workbench {

namespace {

constexpr int kFirstProjectField = 300;
constexpr int kFirstSetting = 320;
constexpr const char16_t* kYes = u"True";

constexpr PageField kProjectFields[] = {
    {u"Projekt&nummer:", &host::Project::number, nullptr, false, false},
    {u"&Projektname:", &host::Project::name, nullptr, false, false},
    {u"&Firma:", &host::Project::company, nullptr, false, false},
    {u"Projekt&ordner:", &host::Project::folder, nullptr, false, true},
};

constexpr PageField kSettings[] = {
    {u"B&asisordner:", nullptr, u"DOCUMENTS/PATH", false, false},
    {u"Namens&regel:", nullptr, u"DOCUMENTS/RULES", false, false},
    {u"&Unterordner anlegen", nullptr, u"DOCUMENTS/SUB_ACTIVE", true, true},
    {u"Unter&ordner (mit Komma):", nullptr, u"DOCUMENTS/SUB_LIST", false, false},
};

constexpr const char16_t* kProjectHint =
    u"Ohne Projektordner ermittelt ihn der erste Befehl, der ihn braucht, aus Basisordner und "
    u"Namensregel (Seite „Einstellungen“) und fragt nach.";

constexpr const char16_t* kSettingsHint = u"In der Namensregel stehen <Project Number>, <Project "
                                          u"Name> und <Company Name> für die Angaben "
                                          u"des Projekts.";

std::u16string& TextOf(host::Project& project, const PageField& field) {
    return field.member != nullptr ? project.*field.member : project.settings[field.setting];
}

std::u16string TextIn(const host::Project& project, const PageField& field) {
    if (field.member != nullptr) {
        return project.*field.member;
    }
    const auto found = project.settings.find(field.setting);
    return found == project.settings.end() ? std::u16string() : found->second;
}

} // namespace

FieldsPage::FieldsPage(const Look& look, std::span<const PageField> fields, int firstId,
                       std::u16string_view hint)
    : Page(look), fields_(fields), firstId_(firstId) {
    for (const PageField& each : fields_) {
        const int id = firstId_ + static_cast<int>(controls_.size());
        if (each.isCheck) {
            labels_.push_back(nullptr);
            controls_.push_back(Add(L"BUTTON", each.caption, BS_AUTOCHECKBOX | WS_TABSTOP, id));
        } else {
            labels_.push_back(Add(L"STATIC", each.caption, SS_LEFT, -1));
            controls_.push_back(
                Add(L"EDIT", u"", ES_AUTOHSCROLL | WS_TABSTOP, id, WS_EX_CLIENTEDGE));
        }
    }
    hint_ = Add(L"STATIC", hint, SS_LEFT | SS_NOPREFIX, -1);
    note_ = Add(L"STATIC", u"", SS_LEFT | SS_NOPREFIX, -1);
}

void FieldsPage::ShowProject(const host::Project& project) {
    filling_ = true;
    for (std::size_t at = 0; at < controls_.size(); ++at) {
        const std::u16string text = TextIn(project, fields_[at]);
        if (fields_[at].isCheck) {
            SendMessageW(controls_[at], BM_SETCHECK, text == kYes ? BST_CHECKED : BST_UNCHECKED, 0);
        } else if (TextOfControl(controls_[at]) != text) {
            SetWindowTextW(controls_[at], Wide(text));
        }
    }
    filling_ = false;
}

void FieldsPage::ShowNote(std::u16string_view note) {
    if (TextOfControl(note_) != note) {
        SetWindowTextW(note_, Wide(std::u16string(note)));
    }
}

bool FieldsPage::TakeChange(int id, int notification, host::Project& project) {
    const int at = id - firstId_;
    if (filling_ || at < 0 || at >= static_cast<int>(fields_.size())) {
        return false;
    }
    const PageField& field = fields_[static_cast<std::size_t>(at)];
    HWND control = controls_[static_cast<std::size_t>(at)];
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

void FieldsPage::Layout(const RECT& place) {
    const int left = static_cast<int>(place.left) + look().Scaled(6);
    const int label = look().Scaled(170);
    const int height = look().Scaled(23);
    const int available = static_cast<int>(place.right) - left - label - look().Scaled(6);
    const int width = std::clamp(available, 0, look().Scaled(560));
    int top = static_cast<int>(place.top) + look().Scaled(6);
    for (std::size_t at = 0; at < controls_.size(); ++at) {
        top += fields_[at].startsGroup ? look().Scaled(14) : 0;
        if (labels_[at] != nullptr) {
            MoveWindow(labels_[at], left, top + look().Scaled(4), label, height, TRUE);
        }
        MoveWindow(controls_[at], left + label, top, width, height, TRUE);
        top += height + look().Scaled(7);
    }
    MoveWindow(hint_, left + label, top + look().Scaled(8), width, look().Scaled(34), TRUE);
    MoveWindow(note_, left + label, top + look().Scaled(50), width, look().Scaled(70), TRUE);
}

std::unique_ptr<FieldsPage> MakeProjectPage(const Look& look) {
    return std::make_unique<FieldsPage>(look, kProjectFields, kFirstProjectField, kProjectHint);
}

std::unique_ptr<FieldsPage> MakeSettingsPage(const Look& look) {
    return std::make_unique<FieldsPage>(look, kSettings, kFirstSetting, kSettingsHint);
}

} // namespace talvix::workbench
