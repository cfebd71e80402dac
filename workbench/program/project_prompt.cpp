#include "workbench/program/project_prompt.h"

#include "platform/win32/wide.h"

#include <windows.h>
#include <commdlg.h>

namespace talvix::workbench {

std::u16string AskForProjectFile(HWND owner, bool toSave) {
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

} // namespace talvix::workbench
