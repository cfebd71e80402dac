#include "platform/win32/com/type_library.h"

#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/module.h"
#include "platform/win32/wide.h"

#include <oleauto.h>

#include <string>

namespace talvix {

namespace {

/// Loaded once and kept until the module goes: a library that is still held then has no meaning.
HRESULT Library(ComPtr<ITypeLib>& library) {
    static ITypeLib* loaded = nullptr;
    if (loaded == nullptr) {
        const HRESULT result = LoadTypeLibEx(Wide(ModulePath()), REGKIND_NONE, &loaded);
        if (FAILED(result)) {
            return result;
        }
    }
    library = ComPtr<ITypeLib>(loaded);
    return S_OK;
}

} // namespace

HRESULT FindTypeInfo(std::u16string_view name, ITypeInfo** info) {
    ComPtr<ITypeLib> library;
    const HRESULT result = Library(library);
    if (FAILED(result)) {
        return result;
    }
    std::u16string sought(name);
    MEMBERID member = MEMBERID_NIL;
    USHORT found = 1;
    const HRESULT answer = library->FindName(WideBuffer(sought), 0, info, &member, &found);
    return SUCCEEDED(answer) && found == 0 ? TYPE_E_ELEMENTNOTFOUND : answer;
}

HRESULT FindTypeInfo(REFGUID guid, ITypeInfo** info) {
    ComPtr<ITypeLib> library;
    const HRESULT result = Library(library);
    return FAILED(result) ? result : library->GetTypeInfoOfGuid(guid, info);
}

} // namespace talvix
