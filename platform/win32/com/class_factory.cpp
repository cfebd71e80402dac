#include "platform/win32/com/class_factory.h"

#include "platform/win32/com/guards.h"

namespace talvix {

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    if (outer != nullptr) {
        return CLASS_E_NOAGGREGATION;
    }
    return Guarded([&] { return maker_()->QueryInterface(id, object); });
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) {
    if (lock != FALSE) {
        LockModule();
    } else {
        UnlockModule();
    }
    return S_OK;
}

} // namespace talvix
