#pragma once

#include "platform/file_classes.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace talvix {

struct ShellCopy {
    std::int32_t result = 0; ///< 0 for success
    bool aborted = false;    ///< the user ended it
};

/// What the desktop shell knows about files and does with them.
class Shell {
public:
    virtual ~Shell() = default;

    /// What files of one class have in common; for paths that are known to lead to a file.
    virtual FileClasses& Classes() = 0;
    /// The shell's name for the type of whatever a path leads to; "" when there is none.
    virtual std::u16string TypeName(std::u16string_view path) = 0;
    /// Handle of the system image list of small icons as a number; 0 when there is none.
    virtual std::int64_t SmallIconList() = 0;
    /// Copies a file with the shell's own progress, confirmation and error dialogs.
    virtual ShellCopy Copy(std::u16string_view source, std::u16string_view target) = 0;
    /// Hands a file, folder or address over to what is registered for opening it.
    virtual void Open(std::u16string_view what, std::u16string_view workingFolder) = 0;
    /// Shows the properties sheet of a path; 0 when it could not be started. `owner` is a window's
    /// handle, 0 for none.
    virtual std::int32_t ShowProperties(std::u16string_view path, std::int64_t owner) = 0;
};

} // namespace talvix
