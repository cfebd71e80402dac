#pragma once

#include <windows.h>

#include <utility>

namespace talvix {

/// Owns a handle of Windows and ends it as its traits say.
template <typename Traits>
class Owned {
public:
    using Handle = typename Traits::Handle;

    Owned() = default;
    explicit Owned(Handle handle) : handle_(handle) {}
    Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, Traits::None())) {}
    Owned& operator=(Owned&& other) noexcept {
        Reset(std::exchange(other.handle_, Traits::None()));
        return *this;
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { Reset(); }

    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Traits::None(); }
    void Reset(Handle handle = Traits::None()) {
        if (handle_ != Traits::None()) {
            Traits::End(handle_);
        }
        handle_ = handle;
    }
    /// The handle for somebody else who ends it.
    Handle Detach() { return std::exchange(handle_, Traits::None()); }
    /// Where a function of Windows is to put a new handle.
    Handle* Out() {
        Reset();
        return &handle_;
    }

private:
    Handle handle_ = Traits::None();
};

struct KeyTraits {
    using Handle = HKEY;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { RegCloseKey(handle); }
};
struct FindTraits {
    using Handle = HANDLE;
    static Handle None() { return INVALID_HANDLE_VALUE; }
    static void End(Handle handle) { FindClose(handle); }
};
struct FileTraits {
    using Handle = HANDLE;
    static Handle None() { return INVALID_HANDLE_VALUE; }
    static void End(Handle handle) { CloseHandle(handle); }
};
struct EventTraits {
    using Handle = HANDLE;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { CloseHandle(handle); }
};
struct LibraryTraits {
    using Handle = HMODULE;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { FreeLibrary(handle); }
};
struct MemoryTraits {
    using Handle = HGLOBAL;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { GlobalFree(handle); }
};
struct IconTraits {
    using Handle = HICON;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { DestroyIcon(handle); }
};
template <typename Object>
struct GdiTraits {
    using Handle = Object;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { DeleteObject(handle); }
};
struct MemoryDcTraits {
    using Handle = HDC;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { DeleteDC(handle); }
};
struct AcceleratorTraits {
    using Handle = HACCEL;
    static Handle None() { return nullptr; }
    static void End(Handle handle) { DestroyAcceleratorTable(handle); }
};

struct WindowTraits {
    using Handle = HWND;
    static Handle None() { return nullptr; }
    static void End(Handle window) { DestroyWindow(window); }
};

using OwnedKey = Owned<KeyTraits>;
using OwnedFind = Owned<FindTraits>;
using OwnedFile = Owned<FileTraits>;
using OwnedEvent = Owned<EventTraits>;
using OwnedProcess = Owned<EventTraits>;
using OwnedMemory = Owned<MemoryTraits>;
using OwnedLibrary = Owned<LibraryTraits>;
using OwnedIcon = Owned<IconTraits>;
using OwnedFont = Owned<GdiTraits<HFONT>>;
using OwnedBitmap = Owned<GdiTraits<HBITMAP>>;
using OwnedBrush = Owned<GdiTraits<HBRUSH>>;
using OwnedPen = Owned<GdiTraits<HPEN>>;
using OwnedMemoryDc = Owned<MemoryDcTraits>;
using OwnedWindow = Owned<WindowTraits>;
using OwnedAccelerators = Owned<AcceleratorTraits>;

} // namespace talvix
