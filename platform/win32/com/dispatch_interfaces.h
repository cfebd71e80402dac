#pragma once

#include <windows.h>

#include <span>
#include <string_view>

namespace talvix {

/// A dispatch interface of a type library by its name there.
struct DispatchInterface {
    const char16_t* name;
    GUID id;
};

/// Tells which interfaces this module's type library names; `interfaces` has to last.
void SetDispatchInterfaces(std::span<const DispatchInterface> interfaces);
/// The kind of objects that the type library names the interface with this id for; "" when it
/// names none. Clients that are bound to the library ask for it and then call it as IDispatch.
std::u16string_view KindOfInterface(REFIID id);

} // namespace talvix
