#include "platform/win32/com/server_exports.h"

using talvix::RegistrationScope;

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object) {
    return talvix::GetServerClassObject(talvix::Server(), classId, id, object);
}

HRESULT WINAPI DllCanUnloadNow() {
    return talvix::CanUnloadServer();
}

HRESULT WINAPI DllRegisterServer() {
    return talvix::RegisterServer(talvix::Server(), RegistrationScope::Machine);
}

HRESULT WINAPI DllUnregisterServer() {
    return talvix::UnregisterServer(talvix::Server(), RegistrationScope::Machine);
}

HRESULT WINAPI DllInstall(BOOL install, const wchar_t* commandLine) {
    return talvix::InstallServer(talvix::Server(), install, commandLine);
}

} // extern "C"
