// window_probe: tells a suite about the windows of other programs. It takes one question a line,
// its words separated by tabs, and ends each answer with a line "=0" when it holds, "=1" when it
// does not (what is there instead stands before it) and
// "=2" when a window does not answer. NAME is a window's class or its whole title, CONTROL the
// number or the class of a control that can be seen. What takes SECONDS waits until it holds. See
// kQuestions for the questions.
#include "automation/text.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace talvix {

namespace {

constexpr int kHolds = 0;
constexpr int kFails = 1;
constexpr int kSilent = 2;
constexpr UINT kPatience = 2000;
constexpr UINT kLongPatience = 10000;

using Words = std::vector<std::u16string>;

void Say(const std::u16string& text) {
    std::printf("%s\n", ToUtf8(text).c_str());
}

DWORD NumberIn(const std::u16string& text) {
    return static_cast<DWORD>(PlainNumber(text).value_or(0));
}

bool Answers(HWND window, UINT patience = kPatience) {
    DWORD_PTR result = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, patience, &result) != 0;
}

std::u16string ClassOf(HWND window) {
    std::u16string name(256, u'\0');
    name.resize(static_cast<std::size_t>(
        GetClassNameW(window, WideBuffer(name), static_cast<int>(name.size()))));
    return name;
}

std::u16string TextOfWindow(HWND window) {
    std::u16string text(4096, u'\0');
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(WideBuffer(text)),
                        SMTO_ABORTIFHUNG, kPatience, &length);
    text.resize(length);
    return text;
}

std::u16string Described(HWND window) {
    return window == nullptr ? std::u16string(u"nothing")
                             : ClassOf(window) + u" " + DecimalText(GetDlgCtrlID(window)) + u" \"" +
                                   TextOfWindow(window) + u"\"";
}

bool IsNamed(HWND window, const std::u16string& name) {
    std::u16string title(512, u'\0');
    title.resize(static_cast<std::size_t>( // needs no answer of the other program
        GetWindowTextW(window, WideBuffer(title), static_cast<int>(title.size()))));
    return title == name || ClassOf(window) == name;
}

std::vector<HWND> Named(const std::u16string& name) {
    std::vector<HWND> found;
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr) {
        if (IsNamed(window, name)) {
            found.push_back(window);
        }
    }
    return found;
}

/// Beside a box of the same name its owner waits, disabled.
HWND Shown(const std::u16string& name) {
    HWND waiting = nullptr;
    for (HWND window : Named(name)) {
        if (IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE) {
            return window;
        }
        waiting = waiting == nullptr && IsWindowVisible(window) != FALSE ? window : waiting;
    }
    return waiting;
}

bool IsControl(HWND window, const std::u16string& control) {
    const auto number = PlainNumber(control);
    return number ? GetDlgCtrlID(window) == static_cast<int>(*number) : ClassOf(window) == control;
}

/// The first one that can be seen, at any depth.
HWND ControlOf(HWND window, const std::u16string& control) {
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child) == FALSE) {
            continue;
        }
        HWND found = IsControl(child, control) ? child : ControlOf(child, control);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

HWND ControlOf(const Words& words) {
    HWND window = Shown(words[1]);
    return window == nullptr ? nullptr : ControlOf(window, words[2]);
}

HWND FocusOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) != FALSE
               ? info.hwndFocus
               : nullptr;
}

/// Memory of a control's program, where the control can write.
class ForeignMemory {
public:
    ForeignMemory(HWND control, std::size_t size) : size_(size) {
        DWORD id = 0;
        GetWindowThreadProcessId(control, &id);
        process_.Reset(
            OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
        place_ = VirtualAllocEx(process_.Get(), nullptr, size, MEM_COMMIT, PAGE_READWRITE);
    }
    ForeignMemory(const ForeignMemory&) = delete;
    ForeignMemory& operator=(const ForeignMemory&) = delete;
    ~ForeignMemory() { VirtualFreeEx(process_.Get(), place_, 0, MEM_RELEASE); }

    LPARAM Place() const { return reinterpret_cast<LPARAM>(place_); }
    void Read(void* content) const {
        ReadProcessMemory(process_.Get(), place_, content, size_, nullptr);
    }

private:
    std::size_t size_;
    OwnedProcess process_;
    void* place_ = nullptr;
};

std::u16string TextOfPart(HWND statusBar, WPARAM part) {
    std::u16string text(1024, u'\0');
    const ForeignMemory memory(statusBar, text.size() * sizeof(char16_t));
    DWORD_PTR length = 0;
    SendMessageTimeoutW(statusBar, SB_GETTEXTW, part, memory.Place(), SMTO_ABORTIFHUNG, kPatience,
                        &length);
    memory.Read(text.data());
    text.resize(std::min<std::size_t>(LOWORD(length), text.size()));
    return text;
}

template <typename Condition>
bool HoldsWithin(const std::u16string& seconds, Condition&& condition) {
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > NumberIn(seconds) * 1000) {
            return false;
        }
        Sleep(20);
    }
    return true;
}

int AwaitFront(const Words& words) {
    HWND front = nullptr;
    const bool holds = HoldsWithin(words[2], [&] {
        front = GetForegroundWindow();
        return front != nullptr && IsNamed(front, words[1]) && Answers(front);
    });
    if (!holds) {
        Say(u"in front: " + Described(front));
    }
    return holds ? kHolds : kFails;
}

int AwaitShown(const Words& words) {
    return HoldsWithin(words[2], [&] { return Shown(words[1]) != nullptr; }) ? kHolds : kFails;
}

int AwaitGone(const Words& words) {
    return HoldsWithin(words[2], [&] { return Shown(words[1]) == nullptr; }) ? kHolds : kFails;
}

int AwaitFocus(const Words& words) {
    HWND focus = nullptr;
    const bool holds = HoldsWithin(words[3], [&] {
        HWND window = Shown(words[1]);
        focus = window == nullptr ? nullptr : FocusOf(window);
        return focus != nullptr && IsWindowVisible(focus) != FALSE && IsControl(focus, words[2]);
    });
    if (!holds) {
        Say(u"has the focus: " + Described(focus));
    }
    return holds ? kHolds : kFails;
}

int AwaitText(const Words& words) {
    std::u16string text;
    const bool holds = HoldsWithin(words[4], [&] {
        HWND control = ControlOf(words);
        text = control == nullptr ? std::u16string(u"nothing") : TextOfWindow(control);
        return control != nullptr && text.find(words[3]) != std::u16string::npos;
    });
    if (!holds) {
        Say(u"says: " + text);
    }
    return holds ? kHolds : kFails;
}

int AwaitPart(const Words& words) {
    std::u16string text;
    const bool holds = HoldsWithin(words[5], [&] {
        HWND bar = ControlOf(words);
        text = bar == nullptr ? std::u16string(u"nothing") : TextOfPart(bar, NumberIn(words[3]));
        return bar != nullptr && text == words[4];
    });
    if (!holds) {
        Say(u"says: " + text);
    }
    return holds ? kHolds : kFails;
}

int TellTexts(const Words& words) {
    HWND window = Shown(words[1]);
    for (HWND child = window == nullptr ? nullptr : GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        Say(TextOfWindow(child));
    }
    return window == nullptr ? kFails : kHolds;
}

int SayMiddle(HWND control, const RECT& box) {
    POINT middle{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    ClientToScreen(control, &middle);
    Say(DecimalText(middle.x) + u" " + DecimalText(middle.y));
    return kHolds;
}

int TellMiddle(const Words& words) {
    HWND control = ControlOf(words);
    RECT box{};
    return control != nullptr && GetClientRect(control, &box) != FALSE ? SayMiddle(control, box)
                                                                       : kFails;
}

int TellTab(const Words& words) {
    HWND tabs = ControlOf(words);
    RECT box{};
    if (tabs == nullptr) {
        return kFails;
    }
    const ForeignMemory memory(tabs, sizeof box);
    DWORD_PTR known = 0;
    SendMessageTimeoutW(tabs, TCM_GETITEMRECT, NumberIn(words[3]), memory.Place(), SMTO_ABORTIFHUNG,
                        kPatience, &known);
    memory.Read(&box);
    return known != 0 ? SayMiddle(tabs, box) : kFails;
}

int AskWhetherAllAnswer(const Words& words) {
    const std::vector<HWND> windows = Named(words[1]);
    for (HWND window : windows) {
        if (!Answers(window, kLongPatience)) {
            return kSilent;
        }
    }
    return windows.empty() ? kFails : kHolds;
}

int CloseAll(const Words& words) {
    const std::vector<HWND> windows = Named(words[1]);
    for (HWND window : windows) {
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
    return windows.empty() ? kFails : kHolds;
}

int Press(const Words& words) {
    HWND window = Shown(words[1]);
    return window != nullptr && PostMessageW(window, WM_COMMAND, NumberIn(words[2]), 0) != FALSE
               ? kHolds
               : kFails;
}

struct Question {
    const char16_t* name;
    std::size_t words; ///< with its name
    int (*answer)(const Words& words);
};

constexpr Question kQuestions[] = {
    {u"front", 3, AwaitFront},            // NAME SECONDS: it is in front and answers
    {u"shown", 3, AwaitShown},            // NAME SECONDS
    {u"gone", 3, AwaitGone},              // NAME SECONDS
    {u"focus", 4, AwaitFocus},            // NAME CONTROL SECONDS
    {u"text", 5, AwaitText},              // NAME CONTROL PART-OF-TEXT SECONDS
    {u"part", 6, AwaitPart},              // NAME STATUS-BAR INDEX TEXT SECONDS
    {u"texts", 2, TellTexts},             // NAME: of all its controls
    {u"middle", 3, TellMiddle},           // NAME CONTROL: "X Y" on the screen
    {u"tab", 4, TellTab},                 // NAME TABS INDEX: "X Y" on the screen
    {u"answers", 2, AskWhetherAllAnswer}, // NAME: all of that name, shown or not
    {u"close", 2, CloseAll},              // NAME
    {u"press", 3, Press},                 // NAME NUMBER: a button of a box
};

Words WordsIn(std::string_view line) {
    Words words;
    for (std::size_t at = 0; at <= line.size();) {
        const std::size_t end = std::min(line.find('\t', at), line.size());
        words.push_back(FromUtf8(line.substr(at, end - at)));
        at = end + 1;
    }
    return words;
}

int Answer(const Words& words) {
    for (const Question& each : kQuestions) {
        if (words.front() == each.name && words.size() == each.words) {
            return each.answer(words);
        }
    }
    Say(u"there is no such question");
    return kFails;
}

} // namespace

} // namespace talvix

int wmain() {
    for (std::string line; std::getline(std::cin, line) && line != "quit";) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        std::printf("=%d\n", talvix::Answer(talvix::WordsIn(line)));
        std::fflush(stdout);
    }
    return 0;
}
