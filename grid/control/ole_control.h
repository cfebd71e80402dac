#pragma once

#include "grid/control/activation.h"
#include "grid/control/part.h"
#include "grid/model/grid_objects.h"

#include <ocidl.h>

namespace talvix::grid {

/// Mnemonics (there are none), ambient properties and frozen events.
class OleControlPart : public Part<IOleControl> {
public:
    OleControlPart(IUnknown& identity, Activation& activation, SharedGrid model)
        : Part(identity), activation_(activation), model_(std::move(model)) {}

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
    STDMETHODIMP OnAmbientPropertyChange(DISPID) override {
        activation_.ReadAmbient();
        return S_OK;
    }
    STDMETHODIMP FreezeEvents(BOOL freeze) override {
        if (freeze != FALSE) {
            model_->events.Freeze();
        } else {
            model_->events.Thaw();
        }
        return S_OK;
    }

private:
    Activation& activation_;
    SharedGrid model_;
};

} // namespace talvix::grid
