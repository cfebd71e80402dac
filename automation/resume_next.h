#pragma once

#include "automation/failure.h"
#include "automation/trace.h"

#include <string_view>

namespace talvix {

/// Runs the statements of one procedure with errors ignored: a failing statement is skipped and
/// noted in the trace, the next one runs.
class ResumeNext {
public:
    ResumeNext(Trace& trace, std::u16string_view procedure)
        : trace_(trace), procedure_(procedure) {}

    /// Runs one statement; false when it failed.
    template <typename Statement>
    bool operator()(Statement&& statement) noexcept {
        try {
            statement();
            return true;
        } catch (...) {
            Skipped();
            return false;
        }
    }
    /// Runs one condition; a failing one counts as false.
    template <typename Condition>
    bool If(Condition&& condition) noexcept {
        bool result = false;
        (*this)([&] { result = condition(); });
        return result;
    }

private:
    void Skipped() noexcept;

    Trace& trace_;
    std::u16string_view procedure_;
};

} // namespace talvix
