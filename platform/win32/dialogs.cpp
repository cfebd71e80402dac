#include "platform/win32/dialogs.h"

#include "platform/win32/item_window.h"
#include "platform/win32/owned.h"
#include "platform/win32/progress_window.h"
#include "platform/win32/shell_browser.h"
#include "platform/win32/thread_windows.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <commdlg.h>

#include <algorithm>

namespace talvix {

std::u16string Win32Dialogs::BrowseForFolder(const FolderBrowser& browser) {
    const ThreadWindowsDisabled others(nullptr);
    return CShellBrowser().Browse(nullptr, browser.flags, browser.title, browser.root,
                                  browser.startFolder);
}

std::unique_ptr<ProgressWindow> Win32Dialogs::MakeProgress(const ProgressForm& form) {
    return std::make_unique<Win32ProgressWindow>(form);
}

std::optional<std::u16string> Win32Dialogs::ChooseFile(const FileChooser& chooser) {
    std::u16string file(std::max(chooser.bufferLength, chooser.fileName.size() + 1), u'\0');
    std::copy(chooser.fileName.begin(), chooser.fileName.end(), file.begin());
    const ModalOwner owner;
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = chooser.owner != 0
                           ? reinterpret_cast<HWND>(static_cast<LONG_PTR>(chooser.owner))
                           : owner.Get();
    dialog.lpstrFilter = Wide(chooser.filter);
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = WideBuffer(file);
    dialog.nMaxFile = static_cast<DWORD>(file.size());
    dialog.lpstrInitialDir = Wide(chooser.folder);
    dialog.lpstrTitle = Wide(chooser.title);
    // The host's current folder is not the dialog's to change.
    dialog.Flags = chooser.flags | OFN_NOCHANGEDIR;
    dialog.lpstrDefExt =
        chooser.defaultExtension.empty() ? nullptr : Wide(chooser.defaultExtension);
    const OwnedLibrary library(LoadLibraryW(L"comdlg32.dll"));
    using Choose = BOOL(WINAPI*)(OPENFILENAMEW*);
    const auto choose = reinterpret_cast<Choose>(reinterpret_cast<void*>(
        GetProcAddress(library.Get(), chooser.toSave ? "GetSaveFileNameW" : "GetOpenFileNameW")));
    const bool isChosen = choose != nullptr && choose(&dialog) != FALSE;
    return isChosen ? std::optional(std::move(file)) : std::nullopt;
}

void Win32Dialogs::ShowItemForm(ItemForm& form) {
    Win32ItemWindow(form).ShowModal();
}

} // namespace talvix
