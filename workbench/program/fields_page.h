#pragma once

#include "workbench/host/project.h"
#include "workbench/program/page.h"

#include <memory>
#include <span>

namespace talvix::workbench {

/// A field of a page: of the project itself, or a global setting.
struct PageField {
    const char16_t* caption;
    std::u16string host::Project::*member; ///< null for a setting
    const char16_t* setting;
    bool isCheck;
    bool startsGroup;
};

/// A page of fields. What is typed is taken into the project at once.
class FieldsPage : public Page {
public:
    /// Controls are numbered from `firstId`; `hint` stands below the fields.
    FieldsPage(const Look& look, std::span<const PageField> fields, int firstId,
               std::u16string_view hint);

    void Layout(const RECT& place) override;
    void ShowProject(const host::Project& project);
    /// A text below the hint that follows what is typed.
    void ShowNote(std::u16string_view note);
    /// Takes a control's new content into the project; false when the control is not of this page
    /// or nothing has changed.
    bool TakeChange(int id, int notification, host::Project& project);

private:
    const std::span<const PageField> fields_;
    const int firstId_;
    std::vector<HWND> labels_; ///< null for a box
    std::vector<HWND> controls_;
    HWND hint_ = nullptr;
    HWND note_ = nullptr;
    bool filling_ = false;
};

/// The page "Projekt": number, name, company and folder.
std::unique_ptr<FieldsPage> MakeProjectPage(const Look& look);
/// The page "Einstellungen": what the folder rules read.
std::unique_ptr<FieldsPage> MakeSettingsPage(const Look& look);

} // namespace talvix::workbench
