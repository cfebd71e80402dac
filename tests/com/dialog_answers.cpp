#include "tests/com/dialog_answers.h"

#include "platform/win32/wide.h"

#include <algorithm>

namespace talvix {

namespace {

constexpr int kMessageText = 65535; // the text's number in a message box

BOOL CALLBACK CollectDialogs(HWND window, LPARAM found) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t name[32]{};
    GetClassNameW(window, name, 32);
    if (process == GetCurrentProcessId() && IsWindowVisible(window) != FALSE &&
        TextOf(name) == u"#32770") {
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    }
    return TRUE;
}

} // namespace

DialogAnswers::DialogAnswers(int button)
    : otherwise_(Press(button)), watcher_([this] { Watch(); }) {}

DialogAnswers::~DialogAnswers() {
    {
        const std::lock_guard lock(guard_);
        ends_ = true;
    }
    watcher_.Join();
}

void DialogAnswers::Answer(std::u16string_view title, Step step) {
    const std::lock_guard lock(guard_);
    steps_[std::u16string(title)].push_back(std::move(step));
}

DialogAnswers::Step DialogAnswers::Press(int button) {
    return
        [button](HWND dialog) { PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0); };
}

std::vector<std::u16string> DialogAnswers::Seen() const {
    const std::lock_guard lock(guard_);
    return seen_;
}

std::u16string DialogAnswers::TextOfWindow(HWND window) {
    std::u16string text(2000, u'\0');
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(WideBuffer(text)),
                        SMTO_ABORTIFHUNG, 2000, &length);
    text.resize(length);
    return text;
}

void DialogAnswers::Watch() {
    for (;;) {
        {
            const std::lock_guard lock(guard_);
            if (ends_) {
                return;
            }
        }
        std::vector<HWND> dialogs;
        EnumWindows(CollectDialogs, reinterpret_cast<LPARAM>(&dialogs));
        std::erase_if(handled_, [&](HWND window) {
            return std::find(dialogs.begin(), dialogs.end(), window) == dialogs.end();
        });
        for (HWND dialog : dialogs) {
            if (std::find(handled_.begin(), handled_.end(), dialog) == handled_.end()) {
                handled_.push_back(dialog);
                Handle(dialog);
            }
        }
        Sleep(5);
    }
}

void DialogAnswers::Handle(HWND dialog) {
    const std::u16string title = TextOfWindow(dialog);
    const std::u16string text = TextOfWindow(GetDlgItem(dialog, kMessageText));
    Step step = otherwise_;
    {
        const std::lock_guard lock(guard_);
        seen_.push_back(title + u"|" + text);
        std::vector<Step>& ready = steps_[title];
        if (!ready.empty()) {
            step = ready.front();
            ready.erase(ready.begin());
        }
    }
    step(dialog);
}

} // namespace talvix
