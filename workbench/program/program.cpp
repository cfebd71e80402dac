#include "platform/win32/ole_scope.h"
#include "platform/win32/wide.h"
#include "workbench/program/main_window.h"

#include <windows.h>
#include <shellapi.h>

namespace {

constexpr int kBadUsage = 2;

std::vector<std::u16string> Arguments() {
    std::vector<std::u16string> arguments;
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int at = 1; words != nullptr && at < count; ++at) {
        arguments.push_back(talvix::TextOf(words[at]));
    }
    LocalFree(words);
    return arguments;
}

int RunProgram() {
    const talvix::workbench::CommandLine line = talvix::workbench::ReadCommandLine(Arguments());
    if (!line.error.empty()) {
        MessageBoxW(nullptr, talvix::Wide(line.error), L"Talvix Workbench", MB_OK | MB_ICONERROR);
        return kBadUsage;
    }
    talvix::workbench::MainWindow window;
    return window.Start(line) ? window.Run() : 0;
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    const talvix::OleScope ole;
    return ole ? RunProgram() : 1;
}
