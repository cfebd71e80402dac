#pragma once

#include "platform/win32/com/com_ptr.h"

#include <windows.h>
#include <ocidl.h>

namespace talvix::grid {

class GridWindow;

/// Where the control stands in its container: site, extent, and how far it is activated.
class Activation {
public:
    Activation(IUnknown& control, GridWindow& window, IOleInPlaceActiveObject& activeObject);
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;

    HRESULT SetClientSite(IOleClientSite* site);
    IOleClientSite* ClientSite() const { return site_.Get(); }
    /// Makes the control's window in the container's, with the keyboard focus when `withFocus`.
    HRESULT Activate(bool withFocus);
    HRESULT DeactivateUi();
    HRESULT Deactivate();
    /// Ends every connection with the container.
    void Close();
    HRESULT SetRects(const RECT& place, const RECT& clip);
    bool IsActive() const { return isActive_; }
    /// Asks the container whether users may act on the control: not while a form is designed, nor
    /// while the container has ended all use. A container that does not say lets them.
    void ReadAmbient();
    GridWindow& Window() { return window_; }

    /// Extent in 1/100 millimetre.
    SIZEL extent{8000, 5000};
    ComPtr<IAdviseSink> viewAdvise;
    DWORD viewAspects = 0;
    DWORD viewFlags = 0;
    ComPtr<IOleAdviseHolder> adviseHolder;

private:
    HRESULT Show();
    HRESULT EnterWindow(IOleInPlaceSite* site);
    HRESULT TakeFocus();
    bool AmbientFlag(DISPID id, bool otherwise) const;

    IUnknown& control_;
    GridWindow& window_;
    IOleInPlaceActiveObject& activeObject_;
    ComPtr<IOleClientSite> site_;
    ComPtr<IOleInPlaceSite> inPlaceSite_;
    ComPtr<IOleInPlaceFrame> frame_;
    ComPtr<IOleInPlaceUIWindow> document_;
    bool isActive_ = false;
    bool isUiActive_ = false;
};

/// 1/100 millimetres of a number of pixels, and back.
LONG HimetricFromPixels(LONG pixels, int dpi);
LONG PixelsFromHimetric(LONG himetric, int dpi);

} // namespace talvix::grid
