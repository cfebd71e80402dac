#pragma once

#include "automation/failure.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace talvix {

/// What happened, line by line, over all fakes of a test.
class Journal {
public:
    void Write(std::u16string_view line) { lines_.emplace_back(line); }
    /// One call out of the component; the planned one fails.
    void Step(std::u16string_view what) {
        ++steps;
        if (onStep) {
            onStep(what);
        }
        if (failAt > 0 && (steps == failAt || steps == failAlso || (steps > failAt && failOn))) {
            failed = what;
            throw Failure(failure_number::kUnexpected, u"planned failure");
        }
    }
    int steps = 0;
    std::function<void(std::u16string_view what)> onStep; ///< what happens from inside a call
    std::function<void(std::u16string call)>
        onGridCall;              ///< told of each call of the grid's objects
    bool timersWereLeft = false; ///< by a form that has ended
    bool formsWereLeft = false;  ///< shown with nothing going on behind them any more
    bool isGridGone = false;     ///< the control was destroyed
    int failAt = 0;              ///< number of the step that fails, 0 for none
    int failAlso = 0;            ///< number of a second one
    bool failOn = false;         ///< all steps from there on fail
    std::u16string failed;       ///< what was to be done when it failed last
    void Clear() { lines_.clear(); }
    const std::vector<std::u16string>& Lines() const { return lines_; }
    /// Number of lines that begin with `start`.
    std::size_t Count(std::u16string_view start) const {
        std::size_t count = 0;
        for (const std::u16string& line : lines_) {
            count += line.starts_with(start) ? 1 : 0;
        }
        return count;
    }

private:
    std::vector<std::u16string> lines_;
};

using Lines = std::vector<std::u16string>;

} // namespace talvix
