#pragma once

#include "grid/control/part.h"

#include <ocidl.h>

namespace talvix::grid {

/// The control keeps nothing of its own in its container: hosts set it up anew each time.
class PersistStreamInitPart : public Part<IPersistStreamInit> {
public:
    explicit PersistStreamInitPart(IUnknown& identity) : Part(identity) {}

    STDMETHODIMP GetClassID(CLSID* id) override;
    STDMETHODIMP IsDirty() override { return S_FALSE; }
    STDMETHODIMP Load(IStream*) override { return S_OK; }
    STDMETHODIMP Save(IStream*, BOOL) override { return S_OK; }
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override {
        if (size == nullptr) {
            return E_POINTER;
        }
        size->QuadPart = 0;
        return S_OK;
    }
    STDMETHODIMP InitNew() override { return S_OK; }
};

} // namespace talvix::grid
