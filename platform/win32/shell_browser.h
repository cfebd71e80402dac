#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace talvix {

/// The shell's folder browser. It keeps nothing between calls.
class CShellBrowser {
public:
    /// The chosen folder, "" when cancelled or not to be shown. `flags` are the browser's own
    /// (BIF_...); an empty root is the desktop, an empty start folder none.
    std::u16string Browse(HWND owner, UINT flags, const std::u16string& title,
                          const std::u16string& root, std::u16string_view startFolder) const;
};

} // namespace talvix
