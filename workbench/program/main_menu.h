#pragma once

#include <windows.h>

namespace talvix::workbench {

/// What the menu and its keys order.
enum Command {
    kNew = 100,
    kOpenFile,
    kSave,
    kSaveAs,
    kReadFolder,
    kFileMail,
    kFileSelected,
    kExit,
    kCopyRows,
    kFilterRows,
    kFitColumns
};

/// Gives the window its menu. The keys of it belong to the caller.
HACCEL MakeMainMenu(HWND window);

} // namespace talvix::workbench
