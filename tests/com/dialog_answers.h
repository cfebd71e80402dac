#pragma once

#include "platform/win32/critical_section.h"
#include "tests/com/thread.h"

#include <windows.h>

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace talvix {

/// Answers the dialogs that this process shows, from a thread of its own, as a user would from
/// outside: waits for a window of a title and presses a button in it.
class DialogAnswers {
public:
    /// `button` answers every dialog that no answer was laid ready for.
    explicit DialogAnswers(int button = IDCANCEL);
    DialogAnswers(const DialogAnswers&) = delete;
    DialogAnswers& operator=(const DialogAnswers&) = delete;
    ~DialogAnswers();

    using Step = std::function<void(HWND dialog)>;
    /// What is done with the next dialog of the title; several are done in their order.
    void Answer(std::u16string_view title, Step step);
    void Answer(std::u16string_view title, int button) { Answer(title, Press(button)); }
    static Step Press(int button);

    /// "title|text" of every dialog that was answered, in order.
    std::vector<std::u16string> Seen() const;

    static std::u16string TextOfWindow(HWND window);

private:
    void Watch();
    void Handle(HWND dialog);

    mutable CriticalSection guard_;
    std::map<std::u16string, std::vector<Step>> steps_;
    std::vector<std::u16string> seen_;
    std::vector<HWND> handled_;
    Step otherwise_;
    bool ends_ = false;
    Thread watcher_;
};

} // namespace talvix
