#include "platform/win32/thread_windows.h"

#include "platform/win32/com/module.h"

namespace talvix {

namespace {

BOOL CALLBACK TakeVisible(HWND window, LPARAM found) {
    if (IsWindowVisible(window) == FALSE || IsWindowEnabled(window) == FALSE) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

ThreadWindowsDisabled::ThreadWindowsDisabled(HWND except) : except_(except) {
    EnumThreadWindows(GetCurrentThreadId(), Disable, reinterpret_cast<LPARAM>(this));
}

ThreadWindowsDisabled::~ThreadWindowsDisabled() {
    for (HWND window : disabled_) {
        EnableWindow(window, TRUE);
    }
    if (active_ != nullptr && IsWindow(active_) != FALSE) {
        SetActiveWindow(active_);
    }
}

BOOL CALLBACK ThreadWindowsDisabled::Disable(HWND window, LPARAM own) {
    auto& scope = *reinterpret_cast<ThreadWindowsDisabled*>(own);
    if (window != scope.except_ && IsWindowVisible(window) != FALSE &&
        IsWindowEnabled(window) != FALSE) {
        scope.disabled_.push_back(window);
        EnableWindow(window, FALSE);
    }
    return TRUE;
}

ModalOwner::ModalOwner() {
    if (owner_ == nullptr) {
        EnumThreadWindows(GetCurrentThreadId(), TakeVisible, reinterpret_cast<LPARAM>(&owner_));
    }
    if (owner_ == nullptr) {
        hidden_.Reset(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0,
                                      nullptr, nullptr, ModuleHandle(), nullptr));
        owner_ = hidden_.Get();
    }
}

} // namespace talvix
