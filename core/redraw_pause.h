#pragma once

#include "automation/resume_next.h"
#include "core/grid.h"

namespace talvix {

/// The grid does not draw for the length of a block, whatever ends it.
class RedrawPause {
public:
    RedrawPause(Grid grid, Trace& trace, std::u16string_view procedure)
        : grid_(std::move(grid)), next_(trace, procedure) {
        next_([&] { grid_.SetRedraw(false); });
    }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;
    /// Tries twice: a grid that stays dark is of no use.
    ~RedrawPause() {
        const auto draw = [&] { grid_.SetRedraw(true); };
        if (!next_(draw)) {
            next_(draw);
        }
    }

private:
    Grid grid_;
    ResumeNext next_;
};

} // namespace talvix
