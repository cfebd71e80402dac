#include "workbench/program/tool_bar.h"

#include "workbench/program/main_menu.h"

#include <windows.h>
#include <commctrl.h>

namespace talvix::workbench {

namespace {

struct Tool {
    int command; ///< 0 for a gap
    int picture;
    const wchar_t* tip;
};

constexpr Tool kTools[] = {
    {kNew, STD_FILENEW, L"Neu (Strg+N)"},
    {kOpenFile, STD_FILEOPEN, L"Öffnen (Strg+O)"},
    {kSave, STD_FILESAVE, L"Speichern (Strg+S)"},
    {kPrint, STD_PRINT, L"Drucken (Strg+P)"},
    {0, 0, nullptr},
    {kUndo, STD_UNDO, L"Rückgängig (Strg+Z)"},
    {kRedo, STD_REDOW, L"Wiederholen (Strg+Y)"},
    {kCopyRows, STD_COPY, L"Kopieren (Strg+C)"},
    {kFilterRows, STD_FIND, L"Suchen (Strg+F)"},
    {0, 0, nullptr},
    {kHelp, STD_HELP, L"Anleitung (F1)"},
};

} // namespace

HWND MakeToolBar(HWND parent, int dpi) {
    const HWND bar = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"",
                                     WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS, 0, 0,
                                     0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // The small pictures become too small to see from 144 dpi on.
    SendMessageW(bar, TB_LOADIMAGES, dpi < 144 ? IDB_STD_SMALL_COLOR : IDB_STD_LARGE_COLOR,
                 reinterpret_cast<LPARAM>(HINST_COMMCTRL));
    SendMessageW(bar, TB_SETMAXTEXTROWS, 0, 0); // the texts are for tips and screen readers
    for (const Tool& tool : kTools) {
        TBBUTTON button{};
        button.iBitmap = tool.picture;
        button.idCommand = tool.command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = tool.command == 0 ? BTNS_SEP : BTNS_BUTTON;
        button.iString = reinterpret_cast<INT_PTR>(tool.tip);
        SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    SendMessageW(bar, TB_AUTOSIZE, 0, 0);
    return bar;
}

void EnableTool(HWND bar, int command, bool enabled) {
    SendMessageW(bar, TB_ENABLEBUTTON, static_cast<WPARAM>(command),
                 MAKELPARAM(enabled ? 1 : 0, 0));
}

} // namespace talvix::workbench
