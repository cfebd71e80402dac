#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace talvix::workbench {

/// What the menu, its keys and the tool bar order.
enum Command {
    kNew = 100,
    kOpenFile,
    kCloseProject,
    kSave,
    kSaveAs,
    kVersions,
    kReadFolder,
    kFileMail,
    kFileSelected,
    kPrint,
    kExit,
    kUndo,
    kRedo,
    kCopyRows,
    kCopyNetworkPath,
    kFilterRows,
    kFitColumns,
    kMissingFiles,
    kDuplicates,
    kImportReport,
    kHelp,
    kAbout,
    kNextPage, ///< by key alone, as the next one
    kPreviousPage,
    kFirstRecent = 150 ///< and those after it, one for each remembered file
};

/// Gives the window its menu. The keys of it belong to the caller.
HACCEL MakeMainMenu(HWND window);
/// Offers files in the menu "Zuletzt verwendet".
void ShowRecentFiles(HWND window, const std::vector<std::u16string>& files);
/// Follows what can be done at the moment.
void EnableCommand(HWND window, int command, bool enabled);

} // namespace talvix::workbench
