#pragma once

#include <string>
#include <vector>

namespace talvix::workbench {

/// What the program was started for.
struct CommandLine {
    std::u16string file;    ///< project to open
    std::u16string folder;  ///< /folder:PATH: a new project with this folder, read in at once
    std::u16string summary; ///< /summary:FILE: where a summary of the list goes after the start
    bool exit = false;      ///< /exit: ends after that
    std::u16string error;   ///< what was not understood, in German; "" when all was
};

CommandLine ReadCommandLine(const std::vector<std::u16string>& arguments);

} // namespace talvix::workbench
