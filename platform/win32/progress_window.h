#pragma once

#include "platform/dialogs.h"

#include <windows.h>

namespace talvix {

/// The progress form as a dialog of standard classes: a label and a button.
class Win32ProgressWindow : public ProgressWindow {
public:
    explicit Win32ProgressWindow(ProgressForm form) : form_(std::move(form)) {}

    void SetLabel(std::u16string_view text) override;
    void EnableTimer(ProgressTimer timer, bool on) override;
    void EnableCancel(bool on) override;
    bool IsVisible() const override;
    void ShowModal(ProgressEvents& events) override;
    void Hide() override;

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Handle(UINT message, WPARAM wParam);
    void Initialize();
    void RunTimer(ProgressTimer timer);

    ProgressForm form_;
    bool runs_[2] = {};
    HWND dialog_ = nullptr;
    ProgressEvents* events_ = nullptr;
};

} // namespace talvix
