#include "workbench/program/main_window.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/wide.h"
#include "workbench/host/summary.h"
#include "workbench/program/control_host.h"
#include "workbench/program/project_file.h"

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <iterator>

namespace talvix::workbench {

namespace {

constexpr const wchar_t* kWindowClass = L"TalvixWorkbench";
constexpr const char16_t* kProgram = u"Talvix Workbench";
constexpr int kIcon = 1;
constexpr int kFirstButton = 200;
constexpr int kUnits = 96;

enum Command { kNew = 100, kOpenFile, kSave, kSaveAs, kReadFolder, kExit };

/// The page's buttons and what they forward to.
struct PageButton {
    const char16_t* caption;
    const char16_t* member; ///< of the component; null for reading the folder in
    int width;
};
constexpr PageButton kButtons[] = {
    {u"&Neu…", u"btnNewDocument_Click", 70},
    {u"Än&dern…", u"btnChangeDocument_Click", 80},
    {u"Ö&ffnen", u"btnOpenDocument_Click", 70},
    {u"&Löschen", u"btnDeleteDocument_Click", 75},
    {u"E&xportieren", u"btnExportDocuments_Click", 90},
    {u"O&rdner öffnen", u"btnOpenFolder_Click", 110},
    {u"Ordner fe&stlegen…", u"btnDMSSetStore_Click", 130},
    {u"Ordner en&tfernen", u"btnDMSDeletetStore_Click", 125},
    {u"Ordner&inhalt einlesen", nullptr, 150},
};

struct MenuItem {
    int command;
    const char16_t* caption; ///< null for a line
};
constexpr MenuItem kFileMenu[] = {{kNew, u"&Neu\tStrg+N"},
                                  {kOpenFile, u"Ö&ffnen…\tStrg+O"},
                                  {kSave, u"&Speichern\tStrg+S"},
                                  {kSaveAs, u"Speichern &unter…"},
                                  {0, nullptr},
                                  {kReadFolder, u"Ordnerinhalt &einlesen\tF5"},
                                  {0, nullptr},
                                  {kExit, u"&Beenden\tAlt+F4"}};

double Now() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

HFONT MessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

std::u16string AskForFile(HWND owner, bool toSave) {
    std::u16string path(4096, u'\0');
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = L"Talvix-Projekte (*.talvix)\0*.talvix\0Alle Dateien\0*.*\0";
    dialog.lpstrFile = WideBuffer(path);
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrDefExt = L"talvix";
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR |
                   (toSave ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = toSave ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog);
    return chosen != FALSE ? path.substr(0, path.find(u'\0')) : std::u16string();
}

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
    WNDCLASSEXW own{};
    own.cbSize = sizeof own;
    own.lpfnWndProc = Procedure;
    own.hInstance = GetModuleHandleW(nullptr);
    own.hIcon = LoadIconW(own.hInstance, MAKEINTRESOURCEW(kIcon));
    own.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    own.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<LONG_PTR>(COLOR_BTNFACE + 1));
    own.lpszClassName = kWindowClass;
    RegisterClassExW(&own);
    const ScreenDc screen;
    dpi_ = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    window_ =
        CreateWindowExW(0, kWindowClass, Wide(kProgram), WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                        CW_USEDEFAULT, CW_USEDEFAULT, MulDiv(1010, dpi_, kUnits),
                        MulDiv(640, dpi_, kUnits), nullptr, nullptr, own.hInstance, this);
    MakeMenu();
    MakeControls();
    ShowWindow(window_, SW_SHOWDEFAULT);
    Attempt([&] {
        if (!line.file.empty()) {
            OpenFile(line.file);
        } else {
            NewProject(line.folder);
        }
        if (!line.folder.empty()) {
            ReadFolder();
        }
        WriteSummary(line.summary);
    });
    if (project_ == nullptr) { // what was asked for could not be opened
        Attempt([&] { NewProject(u""); });
    }
    UpdateWindow(window_);
    return !line.exit;
}

void MainWindow::MakeMenu() {
    HMENU bar = CreateMenu();
    HMENU file = CreatePopupMenu();
    for (const MenuItem& item : kFileMenu) {
        if (item.caption == nullptr) {
            AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
        } else {
            AppendMenuW(file, MF_STRING, static_cast<UINT_PTR>(item.command), Wide(item.caption));
        }
    }
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"&Datei");
    SetMenu(window_, bar);
    ACCEL keys[] = {{FVIRTKEY | FCONTROL, 'N', kNew},
                    {FVIRTKEY | FCONTROL, 'O', kOpenFile},
                    {FVIRTKEY | FCONTROL, 'S', kSave},
                    {FVIRTKEY, VK_F5, kReadFolder}};
    accelerators_.Reset(CreateAcceleratorTableW(keys, static_cast<int>(std::size(keys))));
}

void MainWindow::MakeControls() {
    InitCommonControls();
    font_.Reset(MessageFont());
    for (int at = 0; at < static_cast<int>(std::size(kButtons)); ++at) {
        const HWND button = CreateWindowExW(
            0, L"BUTTON", Wide(kButtons[at].caption), WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 10,
            10, window_, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(kFirstButton + at)),
            GetModuleHandleW(nullptr), nullptr);
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(Font()), FALSE);
    }
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0,
                              0, 0, 0, window_, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(Font()), FALSE);
    Layout();
}

void MainWindow::Layout() {
    RECT client{};
    GetClientRect(window_, &client);
    SendMessageW(status_, WM_SIZE, 0, 0);
    RECT status{};
    GetWindowRect(status_, &status);
    const int margin = MulDiv(6, dpi_, kUnits);
    const int height = MulDiv(26, dpi_, kUnits);
    int left = margin;
    int top = margin;
    for (int at = 0; at < static_cast<int>(std::size(kButtons)); ++at) {
        const int width = MulDiv(kButtons[at].width, dpi_, kUnits);
        if (left + width > client.right - margin && left > margin) {
            left = margin; // a narrow window takes two rows of buttons
            top += height + margin;
        }
        MoveWindow(GetDlgItem(window_, kFirstButton + at), left, top, width, height, TRUE);
        left += width + margin;
    }
    top += height + margin;
    const int bottom = static_cast<int>(client.bottom - (status.bottom - status.top));
    if (gridHost_ != nullptr) {
        MoveWindow(gridHost_, margin, top, client.right - 2 * margin, std::max(0, bottom - top),
                   TRUE);
    }
    const int parts[] = {MulDiv(160, dpi_, kUnits), -1};
    SendMessageW(status_, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(parts));
}

void MainWindow::Open(host::Project project, std::u16string_view path) {
    const auto show = [this](std::u16string_view text, std::u16string_view title,
                             std::int32_t style) {
        MessageBoxW(window_, Wide(std::u16string(text)), Wide(std::u16string(title)),
                    static_cast<UINT>(style));
    };
    auto opened = std::make_unique<OpenProject>(std::move(project), show, [this] { ShowState(); });
    const HWND former = gridHost_;
    gridHost_ = CreateControlHost(window_);
    AttachControl(opened->Grid(), gridHost_);
    project_ = std::move(opened);
    path_ = path;
    if (former != nullptr) {
        DestroyWindow(former);
    }
    Layout();
    project_->Attach();
    ShowState();
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
    const std::u16string path = AskForFile(window_, false);
    if (!path.empty()) {
        OpenFile(path);
    }
}

bool MainWindow::Save(bool askForName) {
    const std::u16string path = askForName || path_.empty() ? AskForFile(window_, true) : path_;
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

void MainWindow::ReadFolder() {
    const double start = Now();
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
    project_->Call(u"AddFilesFromProjectFolderEvent");
    seconds_ = Now() - start;
    ShowState();
}

void MainWindow::WriteSummary(std::u16string_view path) const {
    if (path.empty()) {
        return;
    }
    const std::u16string target(path);
    const OwnedFile file(CreateFileW(Wide(target), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    const std::u16string text = u"\uFEFF" + host::Summary(project_->Project(), seconds_, locale_);
    DWORD written = 0;
    if (!file ||
        WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size() * sizeof(char16_t)),
                  &written, nullptr) == FALSE) {
        throw Failure(failure_number::kUnexpected,
                      u"Die Datei \"" + target + u"\" kann nicht geschrieben werden.");
    }
}

void MainWindow::ShowState() {
    if (project_ == nullptr) {
        return;
    }
    const host::Project& project = project_->Project();
    const auto rows = static_cast<long long>(project.documents.size());
    const std::u16string count = DecimalText(rows) + (rows == 1 ? u" Dokument" : u" Dokumente");
    SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(Wide(count)));
    const std::u16string folder =
        project.folder.empty() ? u"Kein Projektordner" : u"Projektordner: " + project.folder;
    SendMessageW(status_, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(Wide(folder)));
    const std::u16string title =
        project.name + (project.isChanged ? u" *" : u"") + u" – " + kProgram;
    SetWindowTextW(window_, Wide(title));
}

void MainWindow::OnCommand(int command) {
    const int button = command - kFirstButton;
    if (button >= 0 && button < static_cast<int>(std::size(kButtons)) &&
        kButtons[button].member != nullptr) {
        project_->Call(kButtons[button].member);
        ShowState();
        return;
    }
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
    case kExit:
        SendMessageW(window_, WM_CLOSE, 0, 0);
        break;
    case kReadFolder:
        ReadFolder();
        break;
    default:
        if (button >= 0) {
            ReadFolder();
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
            Attempt([&] { OnCommand(LOWORD(wParam)); });
        }
        return 0;
    case WM_CLOSE:
        if (MayClose()) {
            DestroyWindow(window_);
        }
        return 0;
    case WM_DESTROY:
        project_.reset();
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
