#pragma once

#include <string>
#include <string_view>

namespace talvix {

/// The absolute form of a path by Windows' rules, with every drive but the current one at its root.
std::u16string FullPathOf(std::u16string_view path, std::u16string_view currentFolder);

} // namespace talvix
