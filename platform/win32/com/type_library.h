#pragma once

#include <windows.h>
#include <oaidl.h>

#include <string_view>

namespace talvix {

/// The description of a type of this module's embedded type library, by its name. A module without
/// the library or the type answers with TYPE_E_ELEMENTNOTFOUND. The library is loaded at first use.
HRESULT FindTypeInfo(std::u16string_view name, ITypeInfo** info);

/// The same by the type's GUID.
HRESULT FindTypeInfo(REFGUID guid, ITypeInfo** info);

} // namespace talvix
