#include "workbench/program/command_line.h"

#include "automation/text.h"

namespace talvix::workbench {

namespace {

/// Takes the rest of "/name:rest"; false for another switch.
bool Take(const std::u16string& argument, std::u16string_view name, std::u16string& rest) {
    const bool isIt = SameName(Left(argument, name.size()), name) && argument.size() > name.size();
    if (isIt) {
        rest = argument.substr(name.size());
    }
    return isIt;
}

} // namespace

CommandLine ReadCommandLine(const std::vector<std::u16string>& arguments) {
    CommandLine line;
    for (const std::u16string& argument : arguments) {
        if (Take(argument, u"/folder:", line.folder) ||
            Take(argument, u"/summary:", line.summary)) {
            continue;
        }
        if (SameName(argument, u"/exit")) {
            line.exit = true;
        } else if (argument.starts_with(u"/") || !line.file.empty()) {
            line.error = u"Die Angabe \"" + argument + u"\" ist nicht bekannt.";
        } else {
            line.file = argument;
        }
    }
    if (!line.file.empty() && !line.folder.empty()) {
        line.error = u"Entweder eine Projektdatei oder /folder: angeben, nicht beides.";
    }
    return line;
}

} // namespace talvix::workbench
