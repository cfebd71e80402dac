#pragma once

#include <windows.h>

namespace talvix {

/// What one thread at a time may enter, for `std::lock_guard` (which the names are for). The
/// products are built with the compiler's own Windows threads, which bring no `std::mutex` and no
/// second thread library into every DLL.
class CriticalSection {
public:
    CriticalSection() { InitializeCriticalSection(&section_); }
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;
    ~CriticalSection() { DeleteCriticalSection(&section_); }

    void lock() { EnterCriticalSection(&section_); }
    void unlock() { LeaveCriticalSection(&section_); }

private:
    CRITICAL_SECTION section_{};
};

} // namespace talvix
