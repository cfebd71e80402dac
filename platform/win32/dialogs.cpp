#include "platform/win32/dialogs.h"

#include "platform/win32/progress_window.h"
#include "platform/win32/shell_browser.h"
#include "platform/win32/thread_windows.h"

namespace talvix {

std::u16string Win32Dialogs::BrowseForFolder(const FolderBrowser& browser) {
    const ThreadWindowsDisabled others(nullptr);
    return CShellBrowser().Browse(nullptr, browser.flags, browser.title, browser.root,
                                  browser.startFolder);
}

std::unique_ptr<ProgressWindow> Win32Dialogs::MakeProgress(const ProgressForm& form) {
    return std::make_unique<Win32ProgressWindow>(form);
}

} // namespace talvix
