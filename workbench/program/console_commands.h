#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace talvix::workbench {

/// What a command answers to the system.
enum class ExitCode {
    Done = 0,
    Failed = 1,
    NotUnderstood = 2,
    InUse = 3,       ///< somebody else works on the project
    NotAProject = 4, ///< damaged, foreign, newer or not there
    Found = 5        ///< "check" has found something
};

/// Where a command writes: results, and what went wrong.
struct ConsoleOutput {
    std::function<void(std::u16string_view)> text;
    std::function<void(std::u16string_view)> error;
};

/// Carries out one command without a window. Nothing is changed by a command that is not
/// understood.
ExitCode RunCommand(const std::vector<std::u16string>& arguments, const ConsoleOutput& output);

} // namespace talvix::workbench
