#include "platform/win32/shell.h"

#include "platform/literal_path.h"
#include "platform/opening_policy.h"
#include "platform/win32/files.h"
#include "platform/win32/messages.h"
#include "platform/win32/registry.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <shellapi.h>

namespace talvix {

namespace {

/// A path that is not there has all attributes.
bool LeadsToAFile(std::u16string_view path) {
    const DWORD attributes = GetFileAttributesW(Wide(ExtendedPath(path)));
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

} // namespace

std::u16string Win32Shell::TypeName(std::u16string_view path) {
    return LeadsToAFile(path) ? classes_.TypeName(path)
                              : answers_.AskForTypeName(path).value_or(u"");
}

std::int64_t Win32Shell::SmallIconList() {
    return Win32FileAnswers::SmallIconList();
}

ShellCopy Win32Shell::Copy(std::u16string_view source, std::u16string_view target) {
    // Lists of paths, ended by an empty one.
    const std::u16string from = PlainPath(source) + u'\0';
    const std::u16string to = PlainPath(target) + u'\0';
    SHFILEOPSTRUCTW operation{};
    operation.hwnd = GetActiveWindow();
    operation.wFunc = FO_COPY;
    operation.pFrom = Wide(from);
    operation.pTo = Wide(to);
    operation.fFlags = FOF_FILESONLY;
    const int result = SHFileOperationW(&operation);
    return {result, operation.fAnyOperationsAborted != FALSE};
}

void Win32Shell::Open(std::u16string_view what, std::u16string_view workingFolder) {
    Win32Registry registry;
    if (AsksBeforeOpening(ReadOpeningPolicy(registry), what)) {
        const std::u16string question =
            u"Soll „" + std::u16string(what) + u"“ wirklich geöffnet werden?";
        if (Win32Messages().Show(question, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2,
                                 u"Dokument öffnen") != IDYES) {
            return;
        }
    }
    ShellExecuteW(nullptr, L"open", Wide(std::u16string(what)), nullptr,
                  Wide(std::u16string(workingFolder)), SW_SHOW);
}

std::int32_t Win32Shell::ShowProperties(std::u16string_view path, std::int64_t owner) {
    const std::u16string file(path);
    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_INVOKEIDLIST | SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
    execution.hwnd = reinterpret_cast<HWND>(static_cast<LONG_PTR>(owner));
    execution.lpVerb = L"properties";
    execution.lpFile = Wide(file);
    execution.lpParameters = L"";
    execution.lpDirectory = L"";
    const BOOL started = ShellExecuteExW(&execution);
    const OwnedProcess process(execution.hProcess);
    return started;
}

} // namespace talvix
