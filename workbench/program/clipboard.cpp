#include "workbench/program/clipboard.h"

#include <cstring>

namespace talvix::workbench {

bool CopyText(HWND owner, const std::u16string& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(char16_t);
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (memory == nullptr) {
        return false;
    }
    std::memcpy(GlobalLock(memory), text.c_str(), bytes);
    GlobalUnlock(memory);
    bool isThere = false;
    if (OpenClipboard(owner) != FALSE) {
        EmptyClipboard();
        isThere = SetClipboardData(CF_UNICODETEXT, memory) != nullptr; // now the clipboard's
        CloseClipboard();
    }
    if (!isThere) {
        GlobalFree(memory);
    }
    return isThere;
}

} // namespace talvix::workbench
