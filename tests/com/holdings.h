#pragma once

#include <windows.h>

#include <cstdint>
#include <ostream>
#include <vector>
#include <winternl.h>

namespace talvix {

/// What this process holds of the system. The functions that count for a program are not told
/// everywhere (Wine 8 answers 0), and so the tables themselves are counted.
struct Holdings {
    std::size_t handles = 0;
    std::size_t gdi = 0;
    std::size_t windows = 0;

    /// Memory of all heaps that is in use, in bytes. Not part of what is compared: the system keeps
    /// some for the next time.
    static std::size_t BytesInUse() {
        HANDLE heaps[100]{};
        const DWORD count = GetProcessHeaps(100, heaps);
        std::size_t bytes = 0;
        for (DWORD at = 0; at < count && at < 100; ++at) {
            PROCESS_HEAP_ENTRY entry{};
            while (HeapWalk(heaps[at], &entry) != FALSE) {
                bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
            }
        }
        return bytes;
    }
    static Holdings Now() { return {CountHandles(), CountGdiObjects(), CountWindows()}; }
    bool operator==(const Holdings&) const = default;

private:
    /// SystemHandleInformation: a count, then entries whose first word is the process.
    static std::size_t CountHandles() {
        struct Entry {
            std::uint16_t process;
            std::uint16_t trace;
            std::uint8_t type;
            std::uint8_t flags;
            std::uint16_t handle;
            void* object;
            std::uint32_t access;
        };
        constexpr auto kHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);
        using Query = LONG(WINAPI*)(SYSTEM_INFORMATION_CLASS, void*, ULONG, ULONG*);
        static const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
        std::vector<std::uint64_t> room(1 << 17);
        if (query(kHandles, room.data(), static_cast<ULONG>(room.size() * 8), nullptr) < 0) {
            return 0;
        }
        const std::uint32_t count = *reinterpret_cast<const std::uint32_t*>(room.data());
        const auto* entries = reinterpret_cast<const Entry*>(
            reinterpret_cast<const char*>(room.data()) + sizeof(void*));
        std::size_t own = 0;
        for (std::uint32_t at = 0; at < count; ++at) {
            own += entries[at].process == static_cast<std::uint16_t>(GetCurrentProcessId()) ? 1 : 0;
        }
        return own;
    }

    /// The table of GDI objects that every process shares: its place stands in the process's block.
    static std::size_t CountGdiObjects() {
        struct Entry {
            std::uint64_t object;
            std::uint16_t process;
            std::uint16_t count;
            std::uint16_t unique;
            std::uint8_t type;
            std::uint8_t flags;
            std::uint64_t user;
        };
        constexpr std::size_t kEntries = 0x10000;
        const auto* entries = static_cast<const Entry*>(GdiTable());
        std::size_t own = 0;
        for (std::size_t at = 0; entries != nullptr && at < kEntries; ++at) {
            own += entries[at].type != 0 ? 1 : 0;
        }
        return own;
    }

    /// A 32-bit program on a 64-bit system has a second block, which its thread's block leads to;
    /// the table stands there.
    static const void* GdiTable() {
        constexpr std::size_t kSecondThreadBlock = 0xF70;
        constexpr std::size_t kBlockOfThread64 = 0x60;
        constexpr std::size_t kTable64 = 0xF8;
        constexpr std::size_t kTable32 = 0x94;
        const auto at = [](std::uint64_t place) {
            return reinterpret_cast<const char*>(static_cast<std::uintptr_t>(place));
        };
        const auto* thread = reinterpret_cast<const char*>(NtCurrentTeb());
        const auto* block = reinterpret_cast<const char*>(NtCurrentTeb()->ProcessEnvironmentBlock);
        if (sizeof(void*) == 8) {
            return at(*reinterpret_cast<const std::uint64_t*>(block + kTable64));
        }
        const auto second = *reinterpret_cast<const std::uint32_t*>(thread + kSecondThreadBlock);
        if (second == 0) {
            return at(*reinterpret_cast<const std::uint32_t*>(block + kTable32));
        }
        block = at(*reinterpret_cast<const std::uint64_t*>(at(second) + kBlockOfThread64));
        return at(*reinterpret_cast<const std::uint64_t*>(block + kTable64));
    }

    static BOOL CALLBACK CountOwn(HWND window, LPARAM count) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        *reinterpret_cast<std::size_t*>(count) += process == GetCurrentProcessId() ? 1 : 0;
        return TRUE;
    }
    static std::size_t CountWindows() {
        std::size_t count = 0;
        EnumChildWindows(GetDesktopWindow(), CountOwn, reinterpret_cast<LPARAM>(&count));
        HWND hidden = nullptr;
        while ((hidden = FindWindowExW(HWND_MESSAGE, hidden, nullptr, nullptr)) != nullptr) {
            CountOwn(hidden, reinterpret_cast<LPARAM>(&count));
        }
        return count;
    }
};

inline void PrintTo(const Holdings& holdings, std::ostream* out) {
    *out << holdings.handles << " handles, " << holdings.gdi << " GDI objects, " << holdings.windows
         << " windows";
}

} // namespace talvix
