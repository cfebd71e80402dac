#pragma once

#include "grid/control/activation.h"
#include "grid/control/grid_window.h"
#include "grid/control/part.h"

namespace talvix::grid {

/// What the container's frame asks of the control that has the focus.
class InPlaceActiveObjectPart : public Part<IOleInPlaceActiveObject> {
public:
    InPlaceActiveObjectPart(IUnknown& identity, Activation& activation)
        : Part(identity), activation_(activation) {}

    STDMETHODIMP GetWindow(HWND* window) override { return activation_.Window().Get(window); }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    /// Keys that move within the grid are the grid's, not the container's.
    STDMETHODIMP TranslateAccelerator(LPMSG message) override {
        return message != nullptr && activation_.Window().TakesKey(*message) ? S_OK : S_FALSE;
    }
    STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
    STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

private:
    Activation& activation_;
};

} // namespace talvix::grid
