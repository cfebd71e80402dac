#pragma once

#include "workbench/host/project.h"
#include "workbench/program/page.h"

namespace talvix::workbench {

/// The page "Einstellungen": the project's own data and the global settings that the folder rules
/// read. What is typed is taken at once.
class SettingsPage : public Page {
public:
    explicit SettingsPage(const Look& look);

    void Layout(const RECT& place) override;
    void ShowProject(const host::Project& project);
    /// Takes a control's new content into the project; false when the control is not of this page
    /// or nothing has changed.
    bool TakeChange(int id, int notification, host::Project& project);

private:
    std::vector<HWND> labels_;
    std::vector<HWND> fields_;
    HWND hint_ = nullptr;
    bool filling_ = false;
};

} // namespace talvix::workbench
