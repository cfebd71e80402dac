#include "platform/win32/objects.h"

#include "automation/failure.h"
#include "automation/late.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/wide.h"

#include <windows.h>

namespace talvix {

Object Win32Objects::Create(std::u16string_view programId) {
    const std::u16string name(programId);
    CLSID id{};
    HRESULT result = CLSIDFromProgID(Wide(name), &id);
    ComPtr<IDispatch> object;
    if (SUCCEEDED(result)) {
        result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                  IID_IDispatch, object.OutAny());
    }
    if (FAILED(result)) {
        throw Failure(result, u"An object of the class \"" + name + u"\" cannot be created");
    }
    return Late(WrapDispatch(object.Get())).AsObject();
}

} // namespace talvix
