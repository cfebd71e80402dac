// window_text TITLE [press]: writes the texts of a message box of that title, or presses its first
// button. Exit code 1 when there is no such box. window_text CLASS answers: exit code 0 when every
// window of that class answers within ten seconds, 1 when there is none, 2 when one does not
// answer. window_text CLASS close: asks every window of that class to close and does not wait.
#include "automation/text.h"
#include "platform/win32/wide.h"

#include <windows.h>

#include <cstdio>
#include <string>

namespace {

HWND FindBox(const wchar_t* title) {
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", title)) != nullptr) {
        if (IsWindowVisible(box) != FALSE) {
            return box;
        }
    }
    return nullptr;
}

std::u16string TextOfWindow(HWND window) {
    std::u16string text(4096, u'\0');
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(),
                        reinterpret_cast<LPARAM>(talvix::WideBuffer(text)), SMTO_ABORTIFHUNG, 2000,
                        &length);
    text.resize(length);
    return text;
}

constexpr int kAnswers = 0;
constexpr int kNoWindow = 1;
constexpr int kSilent = 2;

int AnswerOfAll(const wchar_t* windowClass) {
    HWND window = nullptr;
    int answer = kNoWindow;
    while ((window = FindWindowExW(nullptr, window, windowClass, nullptr)) != nullptr) {
        DWORD_PTR result = 0;
        if (SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 10000, &result) == 0) {
            return kSilent;
        }
        answer = kAnswers;
    }
    return answer;
}

void CloseAll(const wchar_t* windowClass) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, windowClass, nullptr)) != nullptr) {
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count > 2 && std::wstring_view(arguments[2]) == L"answers") {
        return AnswerOfAll(arguments[1]);
    }
    if (count > 2 && std::wstring_view(arguments[2]) == L"close") {
        CloseAll(arguments[1]);
        return 0;
    }
    const HWND box = count > 1 ? FindBox(arguments[1]) : nullptr;
    if (box == nullptr) {
        return 1;
    }
    if (count > 2) {
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        return 0;
    }
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        std::printf("%s\n", talvix::ToUtf8(TextOfWindow(child)).c_str());
    }
    return 0;
}
