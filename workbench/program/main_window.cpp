#include "workbench/program/main_window.h"

#include "automation/coercion.h"
#include "automation/text.h"
#include "platform/win32/device_context.h"
#include "platform/win32/wide.h"
#include "workbench/host/folder_preview.h"
#include "workbench/host/summary.h"
#include "workbench/program/frame.h"
#include "workbench/program/main_menu.h"
#include "workbench/program/selected_documents.h"
#include "workbench/program/text_file.h"
#include "workbench/program/tool_bar.h"
#include "workbench/program/user_memory.h"

#include <windows.h>
#include <commctrl.h>

#include <iterator>
#include <utility>

namespace talvix::workbench {

namespace {

constexpr const wchar_t* kWindowClass = L"TalvixWorkbench";
constexpr int kTabs = 180;
constexpr int kUsualDpi = 96;
constexpr const char16_t* kPages[] = {u"Dokumente", u"Betreuung", u"Projekt", u"Einstellungen"};

enum StatusPart { kCountPart, kSelectedPart, kFolderPart, kFilePart };

void AddTab(HWND tabs, const char16_t* caption) {
    std::u16string text(caption);
    TCITEMW tab{};
    tab.mask = TCIF_TEXT;
    tab.pszText = WideBuffer(text);
    SendMessageW(tabs, TCM_INSERTITEMW, std::size(kPages), reinterpret_cast<LPARAM>(&tab));
}

} // namespace

void MainWindow::ShowError(std::u16string_view text) const {
    MessageBoxW(window_, Wide(std::u16string(text)), Wide(kProgram), MB_OK | MB_ICONERROR);
}

bool MainWindow::Start(const CommandLine& line) {
    RegisterFrame(kWindowClass, Procedure);
    const ScreenDc screen;
    dpi_ = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    hasUser_ = !line.exit; // a run without a user shows rows in their own order
    const SIZE size = FirstSize(dpi_);
    window_ = CreateWindowExW(0, kWindowClass, Wide(kProgram),
                              WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                              size.cx, size.cy, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    accelerators_.Reset(MakeMainMenu(window_));
    MakeControls();
    if (!hasUser_ || !RestorePlace(window_)) {
        ShowWindow(window_, SW_SHOWDEFAULT);
    }
    Attempt([&] { CarryOut(line); });
    if (project_ == nullptr) { // what was asked for could not be opened
        Attempt([&] { NewProject(u""); });
    }
    UpdateWindow(window_);
    return !line.exit;
}

void MainWindow::CarryOut(const CommandLine& line) {
    if (!line.file.empty()) {
        OpenFile(line.file);
    } else {
        NewProject(line.folder);
    }
    if (!line.folder.empty()) {
        ReadFolder(false);
    }
    if (!line.summary.empty() && project_ != nullptr) {
        WriteTextFile(line.summary, host::Summary(project_->Project(), seconds_, locale_));
    }
}

void MainWindow::MakeControls() {
    InitCommonControls();
    font_.Reset(MessageFont());
    const Look look{window_, font_.Get(), dpi_};
    const auto font = reinterpret_cast<WPARAM>(font_.Get());
    toolBar_ = MakeToolBar(window_, dpi_);
    tabs_ = CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 10,
                            10, window_, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(kTabs)),
                            GetModuleHandleW(nullptr), nullptr);
    SendMessageW(tabs_, WM_SETFONT, font, FALSE);
    for (const char16_t* caption : kPages) {
        AddTab(tabs_, caption);
    }
    SendMessageW(tabs_, TCM_SETCURSEL, 0, 0);
    documents_ = std::make_unique<DocumentsPage>(look);
    support_ = std::make_unique<SupportPage>(look);
    projectPage_ = MakeProjectPage(look);
    settings_ = MakeSettingsPage(look);
    pages_ = {documents_.get(), support_.get(), projectPage_.get(), settings_.get()};
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0,
                              0, 0, 0, window_, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(status_, WM_SETFONT, font, FALSE);
    ShowPage(0);
    Layout();
    for (const int command : {kUndo, kRedo, kVersions, kImportReport}) { // until there is a project
        EnableCommand(window_, command, false);
        EnableTool(toolBar_, command, false);
    }
}

void MainWindow::Layout() {
    RECT client{};
    GetClientRect(window_, &client);
    for (HWND bar : {toolBar_, status_}) {
        SendMessageW(bar, WM_SIZE, 0, 0); // they place themselves
    }
    RECT status{};
    RECT tools{};
    GetWindowRect(status_, &status);
    GetWindowRect(toolBar_, &tools);
    const int margin = MulDiv(6, dpi_, kUsualDpi);
    const int strip = MulDiv(26, dpi_, kUsualDpi);
    const int top = static_cast<int>(tools.bottom - tools.top) + MulDiv(4, dpi_, kUsualDpi);
    MoveWindow(tabs_, margin, top, client.right - 2 * margin, strip, TRUE);
    const RECT page{margin, top + strip + margin, client.right - margin,
                    client.bottom - (status.bottom - status.top) - margin};
    for (Page* each : pages_) {
        each->Layout(page);
    }
    const int parts[] = {MulDiv(250, dpi_, kUsualDpi), MulDiv(370, dpi_, kUsualDpi),
                         MulDiv(690, dpi_, kUsualDpi), -1};
    SendMessageW(status_, SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));
}

void MainWindow::ShowPage(int page) {
    TakeFolder();
    for (Page* each : pages_) {
        if (each != pages_[static_cast<std::size_t>(page)]) {
            each->Show(false);
        }
    }
    pages_[static_cast<std::size_t>(page)]->Show(true);
}

void MainWindow::TurnPage(int step) {
    const auto count = static_cast<int>(pages_.size());
    const auto current = static_cast<int>(SendMessageW(tabs_, TCM_GETCURSEL, 0, 0));
    SelectPage((current + step + count) % count);
    SetFocus(tabs_);
}

void MainWindow::SelectPage(int page) {
    SendMessageW(tabs_, TCM_SETCURSEL, static_cast<WPARAM>(page), 0);
    ShowPage(page);
}

void MainWindow::ShowStatus(int part, const std::u16string& text) const {
    SendMessageW(status_, SB_SETTEXTW, static_cast<WPARAM>(part),
                 reinterpret_cast<LPARAM>(Wide(text)));
}

void MainWindow::ShowState() {
    if (project_ == nullptr) {
        return;
    }
    const host::Project& project = project_->Project();
    std::u16string count = DocumentsText(project.documents.size());
    if (documents_->IsFilterOpen()) {
        const auto shown = NumericContent(project_->GridLate().Call(u"FilterCount"));
        count = DecimalText(static_cast<long long>(shown.value_or(0))) + u" von " + count;
    }
    ShowStatus(kCountPart, count);
    ShowStatus(kFolderPart, project.folder.empty() ? u"Kein Projektordner" : project.folder);
    ShowStatus(kFilePart, place_.Path().empty() ? u"Noch nicht gespeichert" : place_.Path());
    documents_->ShowFolder(project.folder);
    projectPage_->ShowProject(project);
    settings_->ShowProject(project);
    settings_->ShowNote(host::FolderPreview(project));
    const bool readOnly = !place_.Path().empty() && !place_.MayWrite();
    SetWindowTextW(window_, Wide(project.name + (readOnly ? u" [schreibgeschützt]" : u"") +
                                 (project.isChanged ? u" *" : u"") + u" – " + kProgram));
    for (const auto& [command, enabled] : {std::pair(kUndo, project_->History().CanUndo()),
                                           std::pair(kRedo, project_->History().CanRedo()),
                                           std::pair(kVersions, !place_.Path().empty()),
                                           std::pair(kImportReport, !report_.lines.empty())}) {
        EnableCommand(window_, command, enabled);
        EnableTool(toolBar_, command, enabled);
    }
    ShowSelection();
}

void MainWindow::ShowSelection() {
    ShowStatus(kSelectedPart, SelectionText(project_->GridLate()));
    support_->ShowAction(CurrentAction());
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

void MainWindow::TakeCommand(int id, int notification) {
    if (project_ != nullptr ? !project_->IsBusy() : id == kExit) {
        Attempt([&] {
            OnCommand(id);
            if (project_ != nullptr) { // the command was not the last one
                OnControl(id, notification);
            }
        });
    }
}

void MainWindow::TakeNotice(const NMHDR& notice) {
    if (notice.idFrom == kTabs && notice.code == TCN_SELCHANGE) {
        ShowPage(static_cast<int>(SendMessageW(tabs_, TCM_GETCURSEL, 0, 0)));
    }
}

LRESULT MainWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        Layout();
        return 0;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {MulDiv(420, dpi_, kUsualDpi),
                                                                 MulDiv(300, dpi_, kUsualDpi)};
        return 0;
    case kGridChanged:
        if (project_ != nullptr) {
            Attempt([&] { ShowSelection(); });
        }
        return 0;
    case WM_COMMAND:
        TakeCommand(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_NOTIFY:
        TakeNotice(*reinterpret_cast<const NMHDR*>(lParam));
        return 0;
    case WM_CLOSE:
        wantsClose_ = project_ == nullptr || !project_->IsBusy();
        return 0;
    case WM_DESTROY:
        if (hasUser_) {
            RememberPlace(window_);
        }
        CloseProject();
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window_, message, wParam, lParam);
    }
}

/// Undoing what was typed is the field's own.
bool MainWindow::IsFieldsKey(const MSG& message) const {
    wchar_t kind[16] = L"";
    GetClassNameW(message.hwnd, kind, static_cast<int>(std::size(kind)));
    return message.message == WM_KEYDOWN && GetKeyState(VK_CONTROL) < 0 &&
           (message.wParam == 'Z' || message.wParam == 'Y') && lstrcmpiW(kind, L"Edit") == 0;
}

void MainWindow::KeepFocusSeen() const {
    const HWND focus = GetFocus();
    if (focus == nullptr || IsChild(window_, focus) == FALSE) {
        return;
    }
    if (IsWindowVisible(focus) == FALSE) {
        SetFocus(tabs_);
    } else if (IsWindowEnabled(focus) == FALSE) {
        SetFocus(GetNextDlgTabItem(window_, focus, FALSE));
    }
}

int MainWindow::Run() {
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool isCommand = !IsFieldsKey(message) &&
                               TranslateAcceleratorW(window_, accelerators_.Get(), &message) != 0;
        if (!isCommand && IsDialogMessageW(window_, &message) == FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (std::exchange(wantsClose_, false) && MayClose()) {
            DestroyWindow(window_);
        }
        KeepFocusSeen();
    }
    return static_cast<int>(message.wParam);
}

} // namespace talvix::workbench
