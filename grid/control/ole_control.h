#pragma once

#include "grid/control/activation.h"
#include "grid/control/part.h"

#include <ocidl.h>

namespace talvix::grid {

/// Mnemonics (there are none), ambient properties and frozen events.
class OleControlPart : public Part<IOleControl> {
public:
    OleControlPart(IUnknown& identity, Activation& activation)
        : Part(identity), activation_(activation) {}

    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override {
        if (info == nullptr || info->cb < sizeof *info) {
            return E_INVALIDARG;
        }
        info->hAccel = nullptr;
        info->cAccel = 0;
        info->dwFlags = CTRLINFO_EATS_RETURN; // Enter opens documents
        return S_OK;
    }
    STDMETHODIMP OnMnemonic(LPMSG) override { return S_OK; }
    STDMETHODIMP OnAmbientPropertyChange(DISPID) override { return S_OK; }
    STDMETHODIMP FreezeEvents(BOOL freeze) override {
        activation_.eventsFrozen = freeze != FALSE;
        return S_OK;
    }

private:
    Activation& activation_;
};

} // namespace talvix::grid
