#include "grid/control/class_info.h"

#include "grid/control/persist_stream_init.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/com/type_library.h"

#include <talvix_grid_guids.h>

namespace talvix::grid {

STDMETHODIMP PersistStreamInitPart::GetClassID(CLSID* id) {
    if (id == nullptr) {
        return E_POINTER;
    }
    *id = CLSID_Grid;
    return S_OK;
}

STDMETHODIMP ClassInfoPart::GetClassInfo(ITypeInfo** info) {
    if (info == nullptr) {
        return E_POINTER;
    }
    *info = nullptr;
    return Guarded([&] { return FindTypeInfo(CLSID_Grid, info); });
}

STDMETHODIMP ClassInfoPart::GetGUID(DWORD kind, GUID* guid) {
    if (guid == nullptr) {
        return E_POINTER;
    }
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
        return E_INVALIDARG;
    }
    *guid = DIID_DTalvixGridEvents;
    return S_OK;
}

const IID& ClassInfoPart::DispatchId() {
    return DIID__Grid;
}

const IID& ClassInfoPart::EventsId() {
    return DIID_DTalvixGridEvents;
}

} // namespace talvix::grid
