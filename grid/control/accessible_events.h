#pragma once

#include "grid/control/accessible.h"

namespace talvix::grid {

/// The window's side of accessibility: answers who asks for the accessible object, and tells of
/// changes.
class AccessibleEvents {
public:
    explicit AccessibleEvents(SharedGrid model)
        : shared_(std::make_shared<AccessibleWindow>(AccessibleWindow{std::move(model)})) {}
    AccessibleEvents(const AccessibleEvents&) = delete;
    AccessibleEvents& operator=(const AccessibleEvents&) = delete;
    ~AccessibleEvents() { SetWindow(nullptr); }

    /// Null once the window is gone: objects that clients still hold are cut off.
    void SetWindow(HWND window) { shared_->window = window; }
    /// Answers WM_GETOBJECT; nothing for objects that are the system's.
    std::optional<LRESULT> GetObject(WPARAM wParam, LPARAM lParam) const;
    /// Compares the grid with what was told last and tells what is new.
    void TellChanges();
    /// The window has got the keyboard focus.
    void TellFocus();

private:
    SharedWindow shared_;
    RowRef current_;
    LONG rows_ = 0;
    std::uint64_t selection_ = 0; ///< version that was told
};

} // namespace talvix::grid
