#include "workbench/program/main_window.h"

#include "automation/coercion.h"
#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/device_context.h"
#include "platform/win32/wide.h"
#include "workbench/host/summary.h"
#include "workbench/program/control_host.h"
#include "workbench/program/file_mail.h"
#include "workbench/program/frame.h"
#include "workbench/program/main_menu.h"
#include "workbench/program/project_file.h"
#include "workbench/program/project_prompt.h"
#include "workbench/program/remembered_layout.h"
#include "workbench/program/save_export.h"
#include "workbench/program/text_file.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <iterator>

namespace talvix::workbench {

namespace {

constexpr const wchar_t* kWindowClass = L"TalvixWorkbench";
constexpr const char16_t* kProgram = u"Talvix Workbench";
constexpr int kTabs = 150;
constexpr int kUnits = 96;

} // namespace

template <typename Work>
void MainWindow::Attempt(Work&& work) const {
    try {
        work();
    } catch (const std::exception&) { // a command's failure is shown to whoever gave it
        ShowError(CurrentFailure().Text());
    }
}

void MainWindow::ShowError(std::u16string_view text) const {
    MessageBoxW(window_, Wide(std::u16string(text)), Wide(kProgram), MB_OK | MB_ICONERROR);
}

bool MainWindow::Start(const CommandLine& line) {
    RegisterFrame(kWindowClass, Procedure);
    const ScreenDc screen;
    dpi_ = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    const SIZE size = FirstSize(dpi_);
    window_ = CreateWindowExW(0, kWindowClass, Wide(kProgram),
                              WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                              size.cx, size.cy, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    accelerators_.Reset(MakeMainMenu(window_));
    MakeControls();
    ShowWindow(window_, SW_SHOWDEFAULT);
    remembersLayout_ = !line.exit; // a run without a user shows rows in their own order
    Attempt([&] {
        if (!line.file.empty()) {
            OpenFile(line.file);
        } else {
            NewProject(line.folder);
        }
        if (!line.folder.empty()) {
            ReadFolder(false);
        }
        if (!line.summary.empty()) {
            WriteTextFile(line.summary, host::Summary(project_->Project(), seconds_, locale_));
        }
    });
    if (project_ == nullptr) { // what was asked for could not be opened
        Attempt([&] { NewProject(u""); });
    }
    UpdateWindow(window_);
    return !line.exit;
}

void MainWindow::MakeControls() {
    InitCommonControls();
    font_.Reset(MessageFont());
    const Look look{window_, font_.Get(), dpi_};
    tabs_ = CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 10,
                            10, window_, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(kTabs)),
                            GetModuleHandleW(nullptr), nullptr);
    SendMessageW(tabs_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.Get()), FALSE);
    for (const auto* caption : {u"Einstellungen", u"Dokumente"}) {
        std::u16string text(caption);
        TCITEMW tab{};
        tab.mask = TCIF_TEXT;
        tab.pszText = WideBuffer(text);
        SendMessageW(tabs_, TCM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&tab));
    }
    SendMessageW(tabs_, TCM_SETCURSEL, 0, 0);
    documents_ = std::make_unique<DocumentsPage>(look);
    settings_ = std::make_unique<SettingsPage>(look);
    settings_->Show(false);
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0,
                              0, 0, 0, window_, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.Get()), FALSE);
    Layout();
}

void MainWindow::Layout() {
    RECT client{};
    GetClientRect(window_, &client);
    SendMessageW(status_, WM_SIZE, 0, 0);
    RECT status{};
    GetWindowRect(status_, &status);
    const int margin = MulDiv(6, dpi_, kUnits);
    const int strip = MulDiv(26, dpi_, kUnits);
    MoveWindow(tabs_, margin, margin, client.right - 2 * margin, strip, TRUE);
    const RECT page{margin, 2 * margin + strip, client.right - margin,
                    client.bottom - (status.bottom - status.top) - margin};
    documents_->Layout(page);
    settings_->Layout(page);
    const int parts[] = {MulDiv(160, dpi_, kUnits), -1};
    SendMessageW(status_, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(parts));
}

void MainWindow::ShowPage(bool settings) {
    TakeFolder();
    documents_->Show(!settings);
    settings_->Show(settings);
}

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

void MainWindow::Open(host::Project project, std::u16string_view path) {
    const auto show = [this](std::u16string_view text, std::u16string_view title,
                             std::int32_t style) {
        MessageBoxW(window_, Wide(std::u16string(text)), Wide(std::u16string(title)),
                    static_cast<UINT>(style));
    };
    const auto save = [this](std::u16string_view name, std::u16string_view xml) {
        Attempt([&] { SaveExport(window_, project_->Project(), name, xml, locale_); });
    };
    auto opened = std::make_unique<OpenProject>(
        std::move(project), show, [this] { ShowState(); }, save);
    CloseProject();
    AttachControl(opened->Grid(), documents_->RenewGridHost());
    project_ = std::move(opened);
    path_ = path;
    Layout();
    project_->Attach();
    project_->GridLate().Set(u"FileColumn", u"PhysicalStore1");
    if (remembersLayout_) {
        layout_ = RestoreLayout(project_->GridLate());
    }
    ShowState();
}

void MainWindow::CloseProject() {
    documents_->CloseFilter();
    if (project_ != nullptr && remembersLayout_) {
        Attempt([&] { RememberLayout(project_->GridLate(), layout_); });
    }
    project_.reset();
}

void MainWindow::NewProject(std::u16string_view folder) {
    host::Project project;
    project.name = u"Neues Projekt";
    project.folder = folder;
    Open(std::move(project), u"");
}

void MainWindow::OpenFile(std::u16string_view path) {
    Open(ReadProject(path), path);
}

void MainWindow::AskAndOpen() {
    const std::u16string path = AskForProjectFile(window_, false);
    if (!path.empty()) {
        OpenFile(path);
    }
}

bool MainWindow::Save(bool askForName) {
    const std::u16string path =
        askForName || path_.empty() ? AskForProjectFile(window_, true) : path_;
    if (path.empty()) {
        return false;
    }
    project_->Project().documents = host::ReadRows(project_->GridLate());
    SaveProject(project_->Project(), path);
    project_->Project().isChanged = false;
    path_ = path;
    ShowState();
    return true;
}

bool MainWindow::MayClose() {
    if (project_ == nullptr || !project_->Project().isChanged) {
        return true;
    }
    const int answer = MessageBoxW(
        window_, L"Das Projekt wurde geändert. Sollen die Änderungen gespeichert werden?",
        Wide(kProgram), MB_YESNOCANCEL | MB_ICONQUESTION);
    bool mayClose = answer == IDNO;
    if (answer == IDYES) {
        Attempt([&] { mayClose = Save(false); });
    }
    return mayClose;
}

void MainWindow::ReadFolder(bool withForm) {
    const double start = Now();
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
    project_->Call(withForm ? u"AddFilesFromProjectFolder" : u"AddFilesFromProjectFolderEvent");
    seconds_ = Now() - start;
    ShowState();
}

void MainWindow::ShowState() {
    if (project_ == nullptr) {
        return;
    }
    const host::Project& project = project_->Project();
    const auto rows = static_cast<long long>(project.documents.size());
    std::u16string count = DecimalText(rows) + (rows == 1 ? u" Dokument" : u" Dokumente");
    if (documents_->IsFilterOpen()) {
        const auto shown = NumericContent(project_->GridLate().Call(u"FilterCount"));
        count = DecimalText(static_cast<long long>(shown.value_or(0))) + u" von " + count;
    }
    SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(Wide(count)));
    const std::u16string file = path_.empty() ? u"Noch nicht gespeichert" : path_;
    SendMessageW(status_, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(Wide(file)));
    documents_->ShowFolder(project.folder);
    settings_->ShowProject(project);
    const std::u16string title =
        project.name + (project.isChanged ? u" *" : u"") + u" – " + kProgram;
    SetWindowTextW(window_, Wide(title));
}

void MainWindow::OnControl(int id, int notification) {
    if (DocumentsPage::IsFolderEntered(id, notification)) {
        TakeFolder();
    } else if (DocumentsPage::IsFilterChanged(id, notification)) {
        project_->GridLate().Set(u"Filter", documents_->FilterText());
        ShowState();
    } else if (settings_->TakeChange(id, notification, project_->Project())) {
        ShowState();
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

void MainWindow::OnCommand(int command) {
    TakeFolder();
    switch (command) {
    case kNew:
        if (MayClose()) {
            NewProject(u"");
        }
        break;
    case kOpenFile:
        if (MayClose()) {
            AskAndOpen();
        }
        break;
    case kSave:
    case kSaveAs:
        Save(command == kSaveAs);
        break;
    case kFileMail:
        FileMailFromDisk(window_, *project_, locale_);
        ShowState();
        break;
    case kFileSelected:
        FileSelectedMail(window_, *project_, locale_);
        ShowState();
        break;
    case kExit:
        SendMessageW(window_, WM_CLOSE, 0, 0);
        break;
    case kReadFolder:
        ReadFolder(true);
        break;
    default:
        OnView(command);
        break;
    }
}

void MainWindow::OnView(int command) {
    const Late& grid = project_->GridLate();
    if (command == kFilterRows) {
        documents_->OpenFilter();
        Layout();
    } else if (command == IDCANCEL && documents_->CloseFilter()) {
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

LRESULT CALLBACK MainWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
        static_cast<MainWindow*>(creation->lpCreateParams)->window_ = window;
    }
    auto* own = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return own == nullptr ? DefWindowProcW(window, message, wParam, lParam)
                          : own->Handle(message, wParam, lParam);
}

LRESULT MainWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        Layout();
        return 0;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {MulDiv(420, dpi_, kUnits),
                                                                 MulDiv(300, dpi_, kUnits)};
        return 0;
    case WM_COMMAND:
        if (project_ != nullptr || LOWORD(wParam) == kExit) {
            Attempt([&] {
                OnCommand(LOWORD(wParam));
                OnControl(LOWORD(wParam), HIWORD(wParam));
            });
        }
        return 0;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->idFrom == kTabs &&
            reinterpret_cast<const NMHDR*>(lParam)->code == TCN_SELCHANGE) {
            ShowPage(SendMessageW(tabs_, TCM_GETCURSEL, 0, 0) == 1);
        }
        return 0;
    case WM_CLOSE:
        if (MayClose()) {
            DestroyWindow(window_);
        }
        return 0;
    case WM_DESTROY:
        CloseProject();
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window_, message, wParam, lParam);
    }
}

int MainWindow::Run() {
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TranslateAcceleratorW(window_, accelerators_.Get(), &message) == 0 &&
            IsDialogMessageW(window_, &message) == FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

} // namespace talvix::workbench
