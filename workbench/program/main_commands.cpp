// What a user orders through menu, keys, tool bar and the pages' buttons.
#include "automation/coercion.h"
#include "automation/text.h"
#include "automation/trace.h"
#include "folder/unc_conversion.h"
#include "platform/win32/files.h"
#include "platform/win32/network.h"
#include "platform/win32/wide.h"
#include "workbench/program/clipboard.h"
#include "workbench/program/file_checks.h"
#include "workbench/program/file_mail.h"
#include "workbench/program/frame.h"
#include "workbench/program/main_menu.h"
#include "workbench/program/main_window.h"
#include "workbench/program/print_list.h"
#include "workbench/program/selected_documents.h"
#include "workbench/program/trace_tail.h"
#include "workbench/program/user_memory.h"

#include <windows.h>
#include <shellapi.h>

#include <algorithm>

namespace talvix::workbench {

namespace {

class NoTrace : public Trace {
public:
    void Note(std::u16string_view, std::u16string_view) override {}
};

constexpr const wchar_t* kAboutText = L"Talvix Workbench 1.0.0\r\n\r\nDie Dokumentenliste eines "
                                      L"Projekts: Dateien, Internetadressen und "
                                      L"abgelegte E-Mails.";

} // namespace

void MainWindow::TakeFolder() {
    if (project_ == nullptr) {
        return;
    }
    host::Project& project = project_->Project();
    const std::u16string folder = documents_->Folder();
    if (project.folder != folder) {
        project.folder = folder;
        project.isChanged = true;
        ShowState();
    }
}

void MainWindow::ReadFolder(bool withForm) {
    host::Project& project = project_->Project();
    const auto before = host::PlacesOf(project.documents, locale_);
    const TraceTail trace;
    const double start = Now();
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
    ShowStatus(0, u"Ordnerinhalt wird eingelesen…");
    UpdateWindow(status_);
    project_->Call(withForm ? u"AddFilesFromProjectFolder" : u"AddFilesFromProjectFolderEvent");
    seconds_ = Now() - start;
    report_ = host::ReportImport(before, project.documents,
                                 project.folder.empty() ? std::vector<std::u16string>()
                                                        : *FilesBelow(Trim(project.folder)),
                                 trace.Lines(), locale_);
    ShowState();
    ShowStatus(0, host::ImportSummary(report_));
    const std::u16string folder(Trim(project.folder));
    if (hasUser_ && !folder.empty() && !Win32Files().Query(folder)) {
        ShowError(u"Der Projektordner \"" + folder + u"\" ist nicht zu erreichen.");
    }
}

void MainWindow::OnControl(int id, int notification) {
    if (DocumentsPage::IsFolderEntered(id, notification)) {
        TakeFolder();
    } else if (DocumentsPage::IsFilterChanged(id, notification)) {
        project_->GridLate().Set(u"Filter", documents_->FilterText());
        ShowState();
    } else if (projectPage_->TakeChange(id, notification, project_->Project()) ||
               settings_->TakeChange(id, notification, project_->Project())) {
        ShowState();
    } else if (const auto action = SupportPage::CommandOf(id, notification)) {
        OnAction(*action);
    }
    const DocumentsPage::Button* button = DocumentsPage::ButtonOf(id);
    if (button != nullptr && notification == BN_CLICKED) {
        OnButton(*button);
    }
}

void MainWindow::OnButton(const DocumentsPage::Button& button) {
    TakeFolder();
    switch (button.command) {
    case PageCommand::Forward:
        project_->Call(button.member);
        ShowState();
        break;
    case PageCommand::ReadFolder:
        ReadFolder(true);
        break;
    case PageCommand::FileMail:
        OnCommand(kFileMail);
        break;
    }
}

host::Action* MainWindow::CurrentAction() {
    const Late row = project_->ActionsLate()[u"CurrentRow"];
    if (!row) {
        return nullptr;
    }
    const auto id = NumericContent(row.Call(u"Value", u"id"));
    std::vector<host::Action>& actions = project_->Project().actions;
    const auto found = std::find_if(actions.begin(), actions.end(),
                                    [&](const host::Action& each) { return id && *id == each.id; });
    return found == actions.end() ? nullptr : &*found;
}

void MainWindow::OnAction(ActionCommand command) {
    std::vector<host::Action>& actions = project_->Project().actions;
    host::Action* current = CurrentAction();
    const auto typed = support_->TypedAction();
    if (command != ActionCommand::Remove && !typed) {
        ShowError(u"Eine Aktion braucht Datum und Beschreibung.");
        return;
    }
    if (command == ActionCommand::Add) {
        std::int32_t last = 0;
        for (const host::Action& each : actions) {
            last = std::max(last, each.id);
        }
        actions.push_back({last + 1, typed->startDate, typed->description});
    } else if (current == nullptr) {
        return;
    } else if (command == ActionCommand::Change) {
        current->startDate = typed->startDate;
        current->description = typed->description;
    } else {
        const std::u16string question = u"Soll die Aktion „" + current->description +
                                        u"“ entfernt werden? Dokumente, die auf sie verweisen, "
                                        u"bleiben in der Liste.";
        if (MessageBoxW(window_, Wide(question), Wide(kProgram), MB_YESNO | MB_ICONQUESTION) !=
            IDYES) {
            return;
        }
        actions.erase(actions.begin() + (current - actions.data()));
    }
    project_->Project().isChanged = true;
    project_->ShowActions();
    support_->Forget();
    project_->Call(u"FillActionCombo");
    ShowState();
}

void MainWindow::OnCommand(int command) {
    TakeFolder();
    if (!OnFileCommand(command)) {
        OnEditCommand(command);
        OnExtrasCommand(command);
    }
}

bool MainWindow::OnFileCommand(int command) {
    switch (command) {
    case kNew:
    case kCloseProject: // an empty one takes its place
        if (MayClose()) {
            NewProject(u"");
        }
        return true;
    case kOpenFile:
        if (MayClose()) {
            AskAndOpen();
        }
        return true;
    case kSave:
    case kSaveAs:
        Save(command == kSaveAs);
        return true;
    case kVersions:
        RestoreVersion();
        return true;
    case kExit:
        SendMessageW(window_, WM_CLOSE, 0, 0);
        return true;
    default:
        return OpenRecent(command) || OnListCommand(command);
    }
}

bool MainWindow::OnListCommand(int command) {
    switch (command) {
    case kReadFolder:
        ReadFolder(true);
        return true;
    case kFileMail:
        FileMailFromDisk(window_, *project_, locale_);
        ShowState();
        return true;
    case kFileSelected:
        FileSelectedMail(window_, *project_, locale_);
        ShowState();
        return true;
    case kPrint:
        PrintList(window_, project_->Project(), locale_);
        return true;
    default:
        return false;
    }
}

bool MainWindow::OpenRecent(int command) {
    if (command < kFirstRecent) {
        return false;
    }
    const std::vector<std::u16string> recent = RecentFiles();
    const auto place = static_cast<std::size_t>(command - kFirstRecent);
    if (place >= recent.size()) {
        return false;
    }
    if (MayClose()) {
        OpenFile(recent[place]);
    }
    return true;
}

void MainWindow::OnEditCommand(int command) {
    const Late& grid = project_->GridLate();
    if (command == kUndo || command == kRedo) {
        command == kUndo ? project_->Undo() : project_->Redo();
        ShowState();
    } else if (command == kNextPage || command == kPreviousPage) {
        TurnPage(command == kNextPage ? 1 : -1);
    } else if (command == kCopyNetworkPath) {
        CopyNetworkPaths();
    } else if (command == kFilterRows) {
        SelectPage(0);
        documents_->OpenFilter();
        Layout();
    } else if (command == IDCANCEL && documents_->IsVisible() && documents_->CloseFilter()) {
        Layout();
    } else if (command == kCopyRows) {
        const auto window = NumericContent(grid.Call(u"hWnd"));
        SendMessageW(reinterpret_cast<HWND>(static_cast<LONG_PTR>(window.value_or(0))), WM_COPY, 0,
                     0);
    } else if (command == kFitColumns) {
        const auto count = NumericContent(grid[u"Columns"].Call(u"Count"));
        for (std::int32_t position = 0; position < static_cast<std::int32_t>(count.value_or(0));
             ++position) {
            grid(u"Columns", position).Call(u"BestFit");
        }
    }
}

void MainWindow::OnExtrasCommand(int command) {
    switch (command) {
    case kMissingFiles:
        CheckMissingFiles(window_, *project_, locale_);
        ShowState();
        break;
    case kDuplicates:
        ShowDuplicates(window_, *project_);
        break;
    case kImportReport:
        ShowImportReport(window_, report_);
        break;
    case kHelp:
        ShowHelp();
        break;
    case kAbout:
        MessageBoxW(window_, kAboutText, Wide(kProgram), MB_OK | MB_ICONINFORMATION);
        break;
    default:
        break;
    }
}

void MainWindow::CopyNetworkPaths() const {
    Win32Network network;
    NoTrace trace;
    std::u16string text;
    for (const std::u16string& path : SelectedTexts(project_->GridLate(), u"PhysicalStore1")) {
        text += (text.empty() ? u"" : u"\r\n") + ConvertToUNC(network, locale_, trace, path);
    }
    if (text.empty()) {
        ShowError(u"Wählen Sie zuerst ein Dokument aus.");
    } else if (!CopyText(window_, text)) {
        ShowError(u"Die Zwischenablage ist gerade belegt.");
    }
}

/// The guide lies beside the program.
void MainWindow::ShowHelp() const {
    std::u16string path(32768, u'\0');
    path.resize(GetModuleFileNameW(nullptr, WideBuffer(path), static_cast<DWORD>(path.size())));
    path.replace(path.rfind(u'\\') + 1, std::u16string::npos, u"TalvixWorkbench.html");
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(window_, nullptr, Wide(path), nullptr, nullptr, SW_SHOWNORMAL));
    if (result <= 32) {
        ShowError(u"Die Anleitung \"" + path + u"\" kann nicht geöffnet werden.");
    }
}

} // namespace talvix::workbench
