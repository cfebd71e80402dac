#pragma once

#include "platform/win32/owned.h"

#include <windows.h>

#include <vector>

namespace talvix {

/// Keeps the other top-level windows of this thread from taking input for the length of a block, as
/// a modal window without an owner does not.
class ThreadWindowsDisabled {
public:
    /// `except` stays as it is; null for none.
    explicit ThreadWindowsDisabled(HWND except);
    ThreadWindowsDisabled(const ThreadWindowsDisabled&) = delete;
    ThreadWindowsDisabled& operator=(const ThreadWindowsDisabled&) = delete;
    ~ThreadWindowsDisabled();

private:
    static BOOL CALLBACK Disable(HWND window, LPARAM own);

    HWND except_;
    HWND active_ = GetActiveWindow();
    std::vector<HWND> disabled_;
};

/// The window of this thread that a modal window stands over: the active one, else one that is to
/// be seen, else a hidden one of its own, as a window without an owner has a place in the task bar.
class ModalOwner {
public:
    ModalOwner();
    HWND Get() const { return owner_; }

private:
    HWND owner_ = GetActiveWindow();
    OwnedWindow hidden_;
};

} // namespace talvix
