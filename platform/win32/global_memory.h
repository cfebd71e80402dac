#pragma once

#include "platform/win32/owned.h"

#include <windows.h>

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace talvix {

/// The bytes of memory that is handed between programs, for the length of a block; none where the
/// handle is null.
class LockedMemory {
public:
    explicit LockedMemory(HGLOBAL memory)
        : memory_(memory),
          bytes_(memory == nullptr ? nullptr : GlobalLock(memory)),
          size_(bytes_ == nullptr ? 0 : GlobalSize(memory)) {}
    LockedMemory(const LockedMemory&) = delete;
    LockedMemory& operator=(const LockedMemory&) = delete;
    ~LockedMemory() {
        if (bytes_ != nullptr) {
            GlobalUnlock(memory_);
        }
    }
    void* Bytes() const { return bytes_; }
    std::size_t Size() const { return size_; }

private:
    HGLOBAL memory_;
    void* bytes_;
    std::size_t size_;
};

/// A copy of both parts, one behind the other; null when no memory is left.
inline OwnedMemory MemoryOf(std::string_view head, std::u16string_view text) {
    const std::size_t textBytes = text.size() * sizeof(char16_t);
    OwnedMemory memory(GlobalAlloc(GMEM_MOVEABLE, head.size() + textBytes));
    const LockedMemory locked(memory.Get());
    if (locked.Bytes() == nullptr) {
        return {};
    }
    head.copy(static_cast<char*>(locked.Bytes()), head.size());
    std::memcpy(static_cast<char*>(locked.Bytes()) + head.size(), text.data(), textBytes);
    return memory;
}

/// The text with its NUL, as CF_UNICODETEXT has it.
inline OwnedMemory MemoryOfText(const std::u16string& text) {
    return MemoryOf({}, {text.c_str(), text.size() + 1});
}

/// The clipboard, emptied and held for the length of a block.
class ClipboardScope {
public:
    explicit ClipboardScope(HWND owner) : isOpen_(OpenClipboard(owner) != FALSE) {
        if (isOpen_) {
            EmptyClipboard();
        }
    }
    ClipboardScope(const ClipboardScope&) = delete;
    ClipboardScope& operator=(const ClipboardScope&) = delete;
    ~ClipboardScope() {
        if (isOpen_) {
            CloseClipboard();
        }
    }
    /// False when somebody else holds it.
    explicit operator bool() const { return isOpen_; }
    /// False when the clipboard did not take it.
    bool Put(UINT format, OwnedMemory memory) const {
        if (!isOpen_ || !memory || SetClipboardData(format, memory.Get()) == nullptr) {
            return false;
        }
        memory.Detach(); // now the clipboard's
        return true;
    }

private:
    bool isOpen_;
};

} // namespace talvix
