#pragma once

#include "automation/failure.h"

#include <windows.h>

#include <new>
#include <utility>

namespace talvix {

// The only two places where an exception ends on its way to COM. On 32 bit an exception that leaves
// a COM method ends the host.

/// Plumbing: the work's own result code, or an honest one for what was thrown.
template <typename Work> HRESULT Guarded(Work&& work) noexcept {
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

/// Automation members that never fail: the result is initialised first, then the work may fill it.
template <typename Out, typename Work> HRESULT Answered(Out& out, Out initial, Work&& work) noexcept {
    try {
        out = std::move(initial);
        work();
    } catch (...) { // what failed is in the trace; the host hears of nothing
    }
    return S_OK;
}

} // namespace talvix
