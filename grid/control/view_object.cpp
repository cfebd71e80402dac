#include "grid/control/view_object.h"

#include "grid/control/activation.h"
#include "grid/control/grid_window.h"
#include "platform/win32/com/guards.h"

namespace talvix::grid {

STDMETHODIMP ViewObjectPart::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC draw,
                                  LPCRECTL bounds, LPCRECTL, WINBOOL(CALLBACK*)(ULONG_PTR),
                                  ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT || draw == nullptr || bounds == nullptr) {
        return DV_E_DVASPECT;
    }
    return Guarded([&] {
        const RECT place{bounds->left, bounds->top, bounds->right, bounds->bottom};
        window_.DrawTo(draw, place);
        return S_OK;
    });
}

STDMETHODIMP ViewObjectPart::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    activation_.viewAspects = aspects;
    activation_.viewFlags = flags;
    activation_.viewAdvise = ComPtr<IAdviseSink>(sink);
    return S_OK;
}

STDMETHODIMP ViewObjectPart::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects != nullptr) {
        *aspects = activation_.viewAspects;
    }
    if (flags != nullptr) {
        *flags = activation_.viewFlags;
    }
    if (sink != nullptr) {
        *sink = ComPtr<IAdviseSink>(activation_.viewAdvise).Detach();
    }
    return S_OK;
}

STDMETHODIMP ViewObjectPart::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) {
    if (aspect != DVASPECT_CONTENT || size == nullptr) {
        return DV_E_DVASPECT;
    }
    *size = activation_.extent;
    return S_OK;
}

STDMETHODIMP ViewObjectPart::GetViewStatus(DWORD* status) {
    if (status == nullptr) {
        return E_POINTER;
    }
    *status = VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND;
    return S_OK;
}

STDMETHODIMP ViewObjectPart::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG,
                                           DWORD* result) {
    if (aspect != DVASPECT_CONTENT || bounds == nullptr || result == nullptr) {
        return E_INVALIDARG;
    }
    *result = PtInRect(bounds, point) != FALSE ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

} // namespace talvix::grid
