#include "platform/win32/messages.h"

#include "platform/win32/wide.h"

#include <windows.h>

namespace talvix {

std::int32_t Win32Messages::Show(std::u16string_view text, std::int32_t style,
                                 std::u16string_view title) {
    const std::u16string shownTitle(title.empty() ? std::u16string_view(u"TalvixDMS") : title);
    // Over the active window of this thread, which takes no input meanwhile; the box of a thread
    // without windows stands alone.
    return MessageBoxW(GetActiveWindow(), Wide(std::u16string(text)), Wide(shownTitle),
                       static_cast<UINT>(style) | MB_TASKMODAL);
}

} // namespace talvix
