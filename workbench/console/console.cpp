// TalvixWorkbench.com: the workbench for consoles. A console that is told "TalvixWorkbench" finds
// it before the program with the window.
#include "automation/text.h"
#include "platform/win32/ole_scope.h"
#include "platform/win32/wide.h"
#include "workbench/program/console_commands.h"

#include <windows.h>

namespace {

/// As text where a person reads it, as UTF-8 in files and pipes.
void Write(DWORD which, std::u16string_view text) {
    const HANDLE handle = GetStdHandle(which);
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(handle, &mode) != FALSE) {
        WriteConsoleW(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        return;
    }
    const std::string bytes = talvix::ToUtf8(text);
    for (std::size_t at = 0; at < bytes.size(); at += written) {
        if (WriteFile(handle, bytes.data() + at, static_cast<DWORD>(bytes.size() - at), &written,
                      nullptr) == FALSE ||
            written == 0) {
            return; // nobody reads any more
        }
    }
}

} // namespace

int wmain(int count, wchar_t** words) {
    const talvix::OleScope ole;
    if (!ole) {
        return 1;
    }
    std::vector<std::u16string> arguments;
    for (int at = 1; at < count; ++at) {
        arguments.push_back(talvix::TextOf(words[at]));
    }
    const auto code = talvix::workbench::RunCommand(
        arguments, {[](std::u16string_view text) { Write(STD_OUTPUT_HANDLE, text); },
                    [](std::u16string_view text) { Write(STD_ERROR_HANDLE, text); }});
    return static_cast<int>(code);
}
