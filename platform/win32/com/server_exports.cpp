#include "platform/win32/com/server_exports.h"

#include "automation/text.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/wide.h"

#include <olectl.h>

namespace talvix {

namespace {

std::vector<RegistrationEntry> EntriesOf(const ServerClass& server) {
    ServerIdentity identity = server.identity;
    for (const DispatchInterface& each : server.interfaces) {
        identity.interfaces.push_back({GuidText(each.id), each.name});
    }
    return RegistrationEntries(identity, ModulePath());
}

} // namespace

HRESULT GetServerClassObject(const ServerClass& server, REFCLSID classId, REFIID id,
                             void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    if (classId != server.classId) {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    KeepModuleLoaded();
    SetDispatchInterfaces(server.interfaces);
    return Guarded([&] { return MakeCom<ClassFactory>(server.maker)->QueryInterface(id, object); });
}

HRESULT CanUnloadServer() {
    return ModuleLocks() == 0 ? S_OK : S_FALSE;
}

HRESULT RegisterServer(const ServerClass& server, RegistrationScope scope) {
    return Guarded([&] {
        const HRESULT result = WriteRegistration(EntriesOf(server), scope);
        return SUCCEEDED(result) || result == E_ACCESSDENIED ? result : SELFREG_E_CLASS;
    });
}

HRESULT UnregisterServer(const ServerClass& server, RegistrationScope scope) {
    return Guarded([&] { return RemoveRegistration(EntriesOf(server), scope); });
}

HRESULT InstallServer(const ServerClass& server, BOOL install, const wchar_t* commandLine) {
    const std::u16string given = TextOf(commandLine);
    const std::u16string_view wanted = Trim(given);
    const bool forUser = SameName(wanted, u"user");
    if (!forUser && !wanted.empty() && !SameName(wanted, u"machine")) {
        return E_INVALIDARG;
    }
    const RegistrationScope scope = forUser ? RegistrationScope::User : RegistrationScope::Machine;
    return install != FALSE ? RegisterServer(server, scope) : UnregisterServer(server, scope);
}

} // namespace talvix
