#pragma once

#include "platform/win32/com/class_factory.h"
#include "platform/win32/com/dispatch_interfaces.h"
#include "platform/win32/com/registration.h"

namespace talvix {

/// What a DLL with one class answers through its five exports.
struct ServerClass {
    GUID classId;
    ServerIdentity identity;
    ClassFactory::Maker maker;
    std::span<const DispatchInterface> interfaces; ///< all that the type library has
};

/// The class of the module at hand; each DLL defines it.
const ServerClass& Server();

HRESULT GetServerClassObject(const ServerClass& server, REFCLSID classId, REFIID id, void** object);
HRESULT CanUnloadServer();
HRESULT RegisterServer(const ServerClass& server, RegistrationScope scope);
HRESULT UnregisterServer(const ServerClass& server, RegistrationScope scope);
/// `commandLine` is "user" for the registry of the user alone; nothing or "machine" for all users.
HRESULT InstallServer(const ServerClass& server, BOOL install, const wchar_t* commandLine);

} // namespace talvix
