#pragma once

#include "automation/failure.h"

#include <windows.h>

#include <new>

namespace talvix {

// Where an exception ends on its way to COM: on 32 bit one that leaves a COM method ends the host.
// (Members that never fail are guarded where they are answered.)

/// Plumbing: the work's own result code, or an honest one for what was thrown.
template <typename Work>
HRESULT Guarded(Work&& work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const Failure& failure) {
        return FAILED(failure.Number()) ? failure.Number() : E_FAIL;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

} // namespace talvix
