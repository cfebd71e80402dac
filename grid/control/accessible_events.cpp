#include "grid/control/accessible_events.h"

namespace talvix::grid {

std::optional<LRESULT> AccessibleEvents::GetObject(WPARAM wParam, LPARAM lParam) const {
    if (static_cast<DWORD>(lParam) != static_cast<DWORD>(OBJID_CLIENT)) {
        return std::nullopt;
    }
    const ComPtr<IAccessible> table = MakeAccessibleGrid(shared_);
    return LresultFromObject(__uuidof(IAccessible), wParam, table.Get());
}

void AccessibleEvents::TellFocus() {
    const LONG child = AccessibleChildOf(*shared_->model, shared_->model->rows.Current());
    NotifyWinEvent(EVENT_OBJECT_FOCUS, shared_->window, OBJID_CLIENT, child);
}

void AccessibleEvents::TellChanges() {
    RowModel& rows = shared_->model->rows;
    const auto count = static_cast<LONG>(rows.ShownNumbers().size());
    if (count != rows_) {
        rows_ = count;
        NotifyWinEvent(EVENT_OBJECT_REORDER, shared_->window, OBJID_CLIENT, CHILDID_SELF);
    }
    const RowRef current = rows.Current();
    if (!(current == current_)) {
        current_ = current;
        if (GetFocus() == shared_->window) {
            TellFocus();
        }
    }
    if (rows.SelectionVersion() == selection_) {
        return;
    }
    selection_ = rows.SelectionVersion();
    const std::vector<Range>& selected = rows.Ranges();
    if (selected.size() == 1 && selected.front().first == selected.front().second) {
        NotifyWinEvent(EVENT_OBJECT_SELECTION, shared_->window, OBJID_CLIENT,
                       AccessibleChildOf(*shared_->model, rows.At(selected.front().first)));
    } else {
        NotifyWinEvent(EVENT_OBJECT_SELECTIONWITHIN, shared_->window, OBJID_CLIENT, CHILDID_SELF);
    }
}

} // namespace talvix::grid
