#include "grid/control/ole_object.h"

#include "grid/control/activation.h"
#include "grid/control/grid_window.h"

#include <olectl.h>

#include <talvix_grid_guids.h>

namespace talvix::grid {

STDMETHODIMP OleObjectPart::SetClientSite(IOleClientSite* site) {
    return activation_.SetClientSite(site);
}

STDMETHODIMP OleObjectPart::GetClientSite(IOleClientSite** site) {
    if (site == nullptr) {
        return E_POINTER;
    }
    *site = ComPtr<IOleClientSite>(activation_.ClientSite()).Detach();
    return S_OK;
}

STDMETHODIMP OleObjectPart::Close(DWORD) {
    const HRESULT result = activation_.Deactivate();
    if (activation_.adviseHolder) {
        activation_.adviseHolder->SendOnClose();
    }
    return result;
}

STDMETHODIMP OleObjectPart::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) {
    switch (verb) {
    case OLEIVERB_SHOW:
    case OLEIVERB_INPLACEACTIVATE:
        return activation_.Activate(false);
    case OLEIVERB_PRIMARY:
    case OLEIVERB_UIACTIVATE:
        return activation_.Activate(true);
    case OLEIVERB_HIDE:
        return activation_.Deactivate();
    default:
        return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
    }
}

STDMETHODIMP OleObjectPart::EnumVerbs(IEnumOLEVERB** verbs) {
    return OleRegEnumVerbs(CLSID_Grid, verbs);
}

STDMETHODIMP OleObjectPart::GetUserClassID(CLSID* id) {
    if (id == nullptr) {
        return E_POINTER;
    }
    *id = CLSID_Grid;
    return S_OK;
}

STDMETHODIMP OleObjectPart::GetUserType(DWORD form, LPOLESTR* name) {
    return OleRegGetUserType(CLSID_Grid, form, name);
}

STDMETHODIMP OleObjectPart::SetExtent(DWORD aspect, SIZEL* size) {
    if (aspect != DVASPECT_CONTENT || size == nullptr || size->cx < 0 || size->cy < 0) {
        return E_INVALIDARG;
    }
    activation_.extent = *size;
    return S_OK;
}

STDMETHODIMP OleObjectPart::GetExtent(DWORD aspect, SIZEL* size) {
    if (aspect != DVASPECT_CONTENT || size == nullptr) {
        return E_INVALIDARG;
    }
    *size = activation_.extent;
    return S_OK;
}

STDMETHODIMP OleObjectPart::Advise(IAdviseSink* sink, DWORD* connection) {
    if (!activation_.adviseHolder) {
        const HRESULT result = CreateOleAdviseHolder(activation_.adviseHolder.Out());
        if (FAILED(result)) {
            return result;
        }
    }
    return activation_.adviseHolder->Advise(sink, connection);
}

STDMETHODIMP OleObjectPart::Unadvise(DWORD connection) {
    return activation_.adviseHolder ? activation_.adviseHolder->Unadvise(connection)
                                    : OLE_E_NOCONNECTION;
}

STDMETHODIMP OleObjectPart::EnumAdvise(IEnumSTATDATA** connections) {
    if (connections == nullptr) {
        return E_POINTER;
    }
    *connections = nullptr;
    return activation_.adviseHolder ? activation_.adviseHolder->EnumAdvise(connections) : S_OK;
}

STDMETHODIMP OleObjectPart::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (status == nullptr) {
        return E_POINTER;
    }
    *status = aspect == DVASPECT_CONTENT ? kMiscStatus : 0;
    return S_OK;
}

} // namespace talvix::grid
