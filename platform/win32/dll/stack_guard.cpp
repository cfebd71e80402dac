// The value that guarded functions lay behind their buffers, and what they do when it has changed.
// The compiler's own library (libssp) takes the value from the system's cryptographic provider: in
// every process that loads one of the servers first, two more libraries would be loaded for that,
// which takes longer than everything else until the first object is there.
#include <windows.h>

#include <cstdint>
#include <ntsecapi.h> // RtlGenRandom, as the system's C library reaches random numbers

namespace {

constexpr UINT kOverrun = 0xC0000409; // STATUS_STACK_BUFFER_OVERRUN

} // namespace

extern "C" {

std::uintptr_t __stack_chk_guard = 0; // NOLINT: the compiler's name

[[noreturn]] void __stack_chk_fail() { // NOLINT: the compiler's name
    TerminateProcess(GetCurrentProcess(), kOverrun);
    __builtin_trap();
}

/// Before every other constructor; it is not guarded itself.
__attribute__((constructor(101), no_stack_protector)) void MakeStackGuard() {
    if (RtlGenRandom(&__stack_chk_guard, sizeof __stack_chk_guard) == FALSE) {
        LARGE_INTEGER count{};
        QueryPerformanceCounter(&count); // and where the system has laid this library
        __stack_chk_guard = static_cast<std::uintptr_t>(count.QuadPart) * 0x9E3779B1U ^
                            reinterpret_cast<std::uintptr_t>(&__stack_chk_guard) ^
                            GetCurrentThreadId();
    }
}
}
