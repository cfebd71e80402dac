#pragma once

#include <string_view>

namespace talvix {

/// The characters that no file's name may hold.
inline constexpr std::u16string_view kNotInFileNames = u"/\\*?|><:\"";

/// True for a name that a file can have directly in a folder: no path, no drive or stream, no
/// wildcard, no device (with or without extension, or blanks around it), not empty.
bool IsPlainFileName(std::u16string_view name);

} // namespace talvix
