#pragma once

#include "grid/control/part.h"

#include <ocidl.h>

namespace talvix::grid {

class Activation;
class GridWindow;

/// Drawing without a window: printing, design time, metafiles.
class ViewObjectPart : public Part<IViewObjectEx> {
public:
    ViewObjectPart(IUnknown& identity, GridWindow& window, Activation& activation)
        : Part(identity), window_(window), activation_(activation) {}

    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                      HDC target, HDC draw, LPCRECTL bounds, LPCRECTL metafileBounds,
                      WINBOOL(CALLBACK* goOn)(ULONG_PTR), ULONG_PTR goOnWith) override;
    STDMETHODIMP GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;
    STDMETHODIMP GetRect(DWORD, LPRECTL) override { return E_NOTIMPL; }
    STDMETHODIMP GetViewStatus(DWORD* status) override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG close,
                               DWORD* result) override;
    STDMETHODIMP QueryHitRect(DWORD, LPCRECT, LPCRECT, LONG, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*,
                                  LPSIZEL) override {
        return E_NOTIMPL;
    }

private:
    GridWindow& window_;
    Activation& activation_;
};

} // namespace talvix::grid
