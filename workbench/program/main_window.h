#pragma once

#include "automation/failure.h"
#include "platform/win32/locale.h"
#include "platform/win32/owned.h"
#include "workbench/host/import_report.h"
#include "workbench/program/command_line.h"
#include "workbench/program/documents_page.h"
#include "workbench/program/fields_page.h"
#include "workbench/program/open_project.h"
#include "workbench/program/project_place.h"
#include "workbench/program/support_page.h"

#include <windows.h>

#include <array>
#include <memory>
#include <string>

namespace talvix::workbench {

/// The program's window: the pages of one project, menu, tool bar and status.
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
    // The window itself (main_window.cpp)
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void TakeCommand(int id, int notification);
    void TakeNotice(const NMHDR& notice);
    void CarryOut(const CommandLine& line);
    void MakeControls();
    void Layout();
    void ShowPage(int page);
    /// To the next page or the one before, round and round.
    void TurnPage(int step);
    void SelectPage(int page);
    void ShowState();
    void ShowSelection();
    void ShowStatus(int part, const std::u16string& text) const;
    void ShowError(std::u16string_view text) const;
    bool IsFieldsKey(const MSG& message) const;
    /// A control that was hidden or disabled gives the focus away, so that no key works on what
    /// nobody sees; a dialog's keys would also look for its neighbours for ever.
    void KeepFocusSeen() const;

    // The project and its file (main_files.cpp)
    void Open(host::Project project, ProjectPlace place);
    void NewProject(std::u16string_view folder);
    void OpenFile(const std::u16string& path);
    ProjectPlace PlaceFor(const std::u16string& path);
    void AskAndOpen();
    bool Save(bool askForName);
    void RestoreVersion();
    /// Offers to save what was changed; false when the user goes on with it.
    bool MayClose();
    void CloseProject();

    // A user's commands (main_commands.cpp)
    void OnCommand(int command);
    /// False for a command that is none of the menu "Datei".
    bool OnFileCommand(int command);
    bool OnListCommand(int command);
    bool OpenRecent(int command);
    void OnEditCommand(int command);
    void OnExtrasCommand(int command);
    void OnControl(int id, int notification);
    void OnButton(const DocumentsPage::Button& button);
    void OnAction(ActionCommand command);
    host::Action* CurrentAction();
    /// Takes what stands in the folder's field as the project folder.
    void TakeFolder();
    /// `withForm` shows how it goes on and lets the user end it.
    void ReadFolder(bool withForm);
    void CopyNetworkPaths() const;
    void ShowHelp() const;
    /// Runs a user's command; what fails is shown.
    template <typename Work>
    void Attempt(Work&& work) const {
        try {
            work();
        } catch (const std::exception&) {
            ShowError(CurrentFailure().Text());
        }
    }

    HWND window_ = nullptr;
    HWND toolBar_ = nullptr;
    HWND status_ = nullptr;
    HWND tabs_ = nullptr;
    OwnedFont font_;
    OwnedAccelerators accelerators_;
    std::unique_ptr<DocumentsPage> documents_;
    std::unique_ptr<SupportPage> support_;
    std::unique_ptr<FieldsPage> projectPage_;
    std::unique_ptr<FieldsPage> settings_;
    std::array<Page*, 4> pages_{};
    Win32Locale locale_;
    std::unique_ptr<OpenProject> project_;
    std::array<Subscription, 2> watches_;
    ProjectPlace place_;
    std::u16string layout_; ///< of the grid when the project was opened
    host::ImportReport report_;
    bool hasUser_ = true;     ///< who wants things remembered and is there to read messages
    double seconds_ = 0;      ///< that the last import took
    bool wantsClose_ = false; ///< closing waits for a question or a menu of the component
    int dpi_ = 96;
};

} // namespace talvix::workbench
