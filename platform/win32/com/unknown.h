#pragma once

#include "platform/win32/com/module.h"

#include <windows.h>
#include <unknwn.h>

namespace talvix {

/// The reference count of an object with one or more interfaces. It keeps its module loaded. A new
/// object has one reference. All objects here belong to one apartment, so counting needs no
/// interlocked steps: COM calls them on their own thread only.
template <typename First, typename... More>
class Unknown : public First, public More... {
public:
    Unknown() { LockModule(); }
    Unknown(const Unknown&) = delete;
    Unknown& operator=(const Unknown&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = Find(id);
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = --references_;
        if (left == 0) {
            references_ = 1; // whoever is called on the way out may take and give references
            delete this;
        }
        return static_cast<ULONG>(left);
    }

protected:
    virtual ~Unknown() { UnlockModule(); }
    /// The interface with this id, without a reference; null when there is none.
    virtual void* Find(REFIID id) {
        if (id == IID_IUnknown || id == __uuidof(First)) {
            return static_cast<First*>(this);
        }
        void* found = nullptr;
        ((found = found == nullptr && id == __uuidof(More) ? static_cast<More*>(this) : found),
         ...);
        return found;
    }

private:
    LONG references_ = 1;
};

} // namespace talvix
