#include "workbench/program/clipboard.h"

#include <cstring>

namespace talvix::workbench {

bool CopyText(HWND owner, const std::u16string& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(char16_t);
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (memory == nullptr || OpenClipboard(owner) == FALSE) {
        GlobalFree(memory);
        return false;
    }
    std::memcpy(GlobalLock(memory), text.c_str(), bytes);
    GlobalUnlock(memory);
    EmptyClipboard();
    const bool isThere = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
    CloseClipboard();
    if (!isThere) {
        GlobalFree(memory);
    }
    return isThere;
}

} // namespace talvix::workbench
