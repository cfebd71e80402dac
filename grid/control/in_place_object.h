#pragma once

#include "grid/control/activation.h"
#include "grid/control/grid_window.h"
#include "grid/control/part.h"

namespace talvix::grid {

/// The control's window within the container's.
class InPlaceObjectPart : public Part<IOleInPlaceObject> {
public:
    InPlaceObjectPart(IUnknown& identity, Activation& activation)
        : Part(identity), activation_(activation) {}

    STDMETHODIMP GetWindow(HWND* window) override { return activation_.Window().Get(window); }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP InPlaceDeactivate() override { return activation_.Deactivate(); }
    STDMETHODIMP UIDeactivate() override { return activation_.DeactivateUi(); }
    STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override {
        return place == nullptr || clip == nullptr ? E_INVALIDARG
                                                   : activation_.SetRects(*place, *clip);
    }
    STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }

private:
    Activation& activation_;
};

} // namespace talvix::grid
