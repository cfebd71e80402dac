#include "workbench/program/clipboard.h"

#include "platform/win32/global_memory.h"

namespace talvix::workbench {

bool CopyText(HWND owner, const std::u16string& text) {
    OwnedMemory memory = MemoryOfText(text);
    if (!memory) {
        return false;
    }
    const ClipboardScope clipboard(owner);
    return clipboard.Put(CF_UNICODETEXT, std::move(memory));
}

} // namespace talvix::workbench
