#pragma once

#include "platform/win32/locale.h"
#include "platform/win32/owned.h"
#include "workbench/program/command_line.h"
#include "workbench/program/documents_page.h"
#include "workbench/program/open_project.h"
#include "workbench/program/settings_page.h"

#include <windows.h>

#include <memory>
#include <string>

namespace talvix::workbench {

/// The program's window: the page "Dokumente" of one project with its grid and buttons.
class MainWindow {
public:
    MainWindow() = default;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    /// Makes the window and carries out what the program was started for. False when the program is
    /// to end.
    bool Start(const CommandLine& line);
    /// Runs until the window is closed.
    int Run();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void MakeControls();
    void Layout();
    void ShowPage(bool settings);
    /// Takes what stands in the folder's field as the project folder.
    void TakeFolder();
    void OnCommand(int command);
    void OnControl(int id, int notification);
    /// Orders that concern the list as it is shown.
    void OnView(int command);
    void CloseProject();
    void OnButton(const DocumentsPage::Button& button);

    void Open(host::Project project, std::u16string_view path);
    void NewProject(std::u16string_view folder);
    void OpenFile(std::u16string_view path);
    void AskAndOpen();
    bool Save(bool askForName);
    /// Offers to save what was changed; false when the user wants to go on with it.
    bool MayClose();
    /// `withForm` shows how it goes on and lets the user end it.
    void ReadFolder(bool withForm);
    void ShowState();
    void ShowError(std::u16string_view text) const;
    /// Runs a user's command; what fails is shown.
    template <typename Work>
    void Attempt(Work&& work) const;

    HWND window_ = nullptr;
    HWND status_ = nullptr;
    HWND tabs_ = nullptr;
    OwnedFont font_;
    OwnedAccelerators accelerators_;
    std::unique_ptr<DocumentsPage> documents_;
    std::unique_ptr<SettingsPage> settings_;
    Win32Locale locale_;
    std::unique_ptr<OpenProject> project_;
    std::u16string path_;
    std::u16string layout_; ///< of the grid when the project was opened
    bool remembersLayout_ = true;
    double seconds_ = 0; ///< that the last import took
    int dpi_ = 96;
};

} // namespace talvix::workbench
