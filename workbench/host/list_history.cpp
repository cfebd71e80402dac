#include "workbench/host/list_history.h"

#include <numeric>

namespace talvix::host {

void ListHistory::Keep(List before) {
    undone_.clear();
    earlier_.push_back(std::move(before));
    Shorten(earlier_);
}

std::optional<ListHistory::List> ListHistory::Step(std::deque<List>& from, std::deque<List>& to,
                                                   List now) {
    if (from.empty()) {
        return std::nullopt;
    }
    to.push_back(std::move(now));
    Shorten(to);
    List list = std::move(from.back());
    from.pop_back();
    return list;
}

void ListHistory::Shorten(std::deque<List>& lists) {
    const auto rows = [&] {
        return std::accumulate(lists.begin(), lists.end(), std::size_t{0},
                               [](std::size_t sum, const List& list) { return sum + list.size(); });
    };
    while (lists.size() > 1 && (lists.size() > kMostSteps || rows() > kMostRows)) {
        lists.pop_front();
    }
}

} // namespace talvix::host
