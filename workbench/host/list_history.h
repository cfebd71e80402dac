#pragma once

#include "workbench/host/project.h"

#include <deque>
#include <optional>

namespace talvix::host {

/// Earlier states of a document list, kept while the project is open. The oldest go first when
/// there are too many steps or too many rows in all.
class ListHistory {
public:
    using List = std::vector<Document>;

    /// `before` is what the list was until a change; what had been undone cannot be redone any
    /// more.
    void Keep(List before);
    bool CanUndo() const { return !earlier_.empty(); }
    bool CanRedo() const { return !undone_.empty(); }
    /// The state before the last change, for which `now` can be had back by Redo; nothing without
    /// one.
    std::optional<List> Undo(List now) { return Step(earlier_, undone_, std::move(now)); }
    std::optional<List> Redo(List now) { return Step(undone_, earlier_, std::move(now)); }

    static constexpr std::size_t kMostSteps = 50;
    static constexpr std::size_t kMostRows = 500'000; ///< of all states but the last one together

private:
    static std::optional<List> Step(std::deque<List>& from, std::deque<List>& to, List now);
    static void Shorten(std::deque<List>& lists);

    std::deque<List> earlier_; ///< the last change at the end
    std::deque<List> undone_;
};

} // namespace talvix::host
