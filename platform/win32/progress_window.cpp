#include "platform/win32/progress_window.h"

#include "automation/failure.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/com/module.h"
#include "platform/win32/dialog_template.h"
#include "platform/win32/thread_windows.h"
#include "platform/win32/visual_styles.h"
#include "platform/win32/wide.h"

namespace talvix {

namespace {

constexpr WORD kLabel = 100;
constexpr UINT_PTR kFirstTimer = 1;
constexpr ProgressTimer kTimers[] = {ProgressTimer::DMSTimer, ProgressTimer::LabelTimer};

DialogTemplate Template(const ProgressForm& form) {
    DialogTemplate made(WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_CENTER,
                        {0, 0, 240, 52}, form.caption);
    made.Add(DialogTemplate::kStaticKind, kLabel, SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_ENDELLIPSIS,
             {8, 10, 224, 10}, form.label);
    made.Add(DialogTemplate::kButtonKind, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, {182, 32, 50, 14},
             form.cancelButton);
    return made;
}

} // namespace

void Win32ProgressWindow::SetLabel(std::u16string_view text) {
    form_.label = text;
    if (dialog_ != nullptr) {
        SetDlgItemTextW(dialog_, kLabel, Wide(form_.label));
        UpdateWindow(GetDlgItem(dialog_, kLabel));
    }
}

void Win32ProgressWindow::EnableTimer(ProgressTimer timer, bool on) {
    runs_[static_cast<int>(timer)] = on;
    if (dialog_ != nullptr) {
        RunTimer(timer);
    }
}

void Win32ProgressWindow::RunTimer(ProgressTimer timer) {
    const UINT_PTR id = kFirstTimer + static_cast<UINT_PTR>(timer);
    if (runs_[static_cast<int>(timer)]) {
        SetTimer(dialog_, id, timer == ProgressTimer::DMSTimer ? form_.dmsTimer : form_.labelTimer,
                 nullptr);
    } else {
        KillTimer(dialog_, id);
    }
}

void Win32ProgressWindow::EnableCancel(bool on) {
    if (dialog_ != nullptr) {
        EnableWindow(GetDlgItem(dialog_, IDCANCEL), on ? TRUE : FALSE);
    }
}

bool Win32ProgressWindow::IsVisible() const {
    return dialog_ != nullptr && IsWindowVisible(dialog_) != FALSE;
}

void Win32ProgressWindow::ShowModal(ProgressEvents& events) {
    const VisualStyles styles;
    const ModalOwner owner;
    const ThreadWindowsDisabled others(owner.Get());
    const DialogTemplate description = Template(form_);
    events_ = &events;
    const INT_PTR result = DialogBoxIndirectParamW(ModuleHandle(), description.Get(), owner.Get(),
                                                   Procedure, reinterpret_cast<LPARAM>(this));
    dialog_ = nullptr;
    events_ = nullptr;
    if (result < 0) {
        throw Failure(failure_number::kUnexpected, u"The progress form cannot be shown");
    }
}

void Win32ProgressWindow::Hide() {
    if (dialog_ != nullptr) {
        EndDialog(dialog_, 0);
    }
}

void Win32ProgressWindow::Initialize() {
    CenterOverOwner(dialog_);
    for (const ProgressTimer timer : kTimers) {
        RunTimer(timer);
    }
}

INT_PTR CALLBACK Win32ProgressWindow::Procedure(HWND dialog, UINT message, WPARAM wParam,
                                                LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        reinterpret_cast<Win32ProgressWindow*>(lParam)->dialog_ = dialog;
    }
    auto* own = reinterpret_cast<Win32ProgressWindow*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    INT_PTR handled = FALSE;
    if (own != nullptr) {
        Guarded([&] {
            handled = own->Handle(message, wParam);
            return S_OK;
        });
    }
    return handled;
}

INT_PTR Win32ProgressWindow::Handle(UINT message, WPARAM wParam) {
    switch (message) {
    case WM_INITDIALOG:
        Initialize();
        return TRUE;
    case WM_TIMER:
        for (const ProgressTimer timer : kTimers) {
            if (wParam == kFirstTimer + static_cast<UINT_PTR>(timer)) {
                events_->Timer(timer);
            }
        }
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL) { // the button, Esc or the close box
            events_->CancelButton_Click();
        }
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace talvix
