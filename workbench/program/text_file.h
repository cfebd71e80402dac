#pragma once

#include <string_view>

namespace talvix::workbench {

/// Writes a text with its byte order mark, in the place of a file that is there. Failure with a
/// German text when the file cannot be written.
void WriteTextFile(std::u16string_view path, std::u16string_view text);

} // namespace talvix::workbench
