#include "platform/registration.h"

#include "automation/text.h"

namespace talvix {

namespace {

/// The system's marshaller of everything that is called as IDispatch.
constexpr std::u16string_view kDispatchMarshaller = u"{00020420-0000-0000-C000-000000000046}";

class Entries {
public:
    void Add(const std::u16string& key, std::u16string_view name, std::u16string_view text,
             bool shared) {
        list_.push_back({key, std::u16string(name), std::u16string(text), shared});
    }
    std::vector<RegistrationEntry> Take() { return std::move(list_); }

private:
    std::vector<RegistrationEntry> list_;
};

void AddClass(Entries& entries, const ServerIdentity& identity, std::u16string_view module) {
    const std::u16string key = u"CLSID\\" + identity.classId;
    entries.Add(key, u"", identity.description, false);
    entries.Add(key + u"\\InprocServer32", u"", module, false);
    entries.Add(key + u"\\InprocServer32", u"ThreadingModel", u"Apartment", false);
    entries.Add(key + u"\\ProgID", u"", identity.programId + u".1", false);
    entries.Add(key + u"\\VersionIndependentProgID", u"", identity.programId, false);
    entries.Add(key + u"\\TypeLib", u"", identity.libraryId, false);
    entries.Add(key + u"\\Version", u"", u"1.0", false);
    entries.Add(key + u"\\Programmable", u"", u"", false);
}

void AddControl(Entries& entries, const ServerIdentity& identity, std::u16string_view module) {
    const std::u16string key = u"CLSID\\" + identity.classId;
    entries.Add(key + u"\\Control", u"", u"", false);
    entries.Add(key + u"\\MiscStatus", u"", u"0", false);
    entries.Add(key + u"\\MiscStatus\\1", u"", DecimalText(identity.miscStatus), false);
    entries.Add(key + u"\\ToolboxBitmap32", u"", std::u16string(module) + u", 1", false);
}

void AddProgram(Entries& entries, const ServerIdentity& identity) {
    const std::u16string versioned = identity.programId + u".1";
    for (const std::u16string& name : {identity.programId, versioned}) {
        entries.Add(name, u"", identity.description, true);
        entries.Add(name + u"\\CLSID", u"", identity.classId, true);
    }
    entries.Add(identity.programId + u"\\CurVer", u"", versioned, true);
}

void AddLibrary(Entries& entries, const ServerIdentity& identity, std::u16string_view module) {
    const std::u16string key = u"TypeLib\\" + identity.libraryId + u"\\1.0";
    const std::u16string bits = identity.is64Bit ? u"win64" : u"win32";
    entries.Add(key, u"", identity.description, true);
    entries.Add(key + u"\\0\\" + bits, u"", module, false);
    entries.Add(key + u"\\FLAGS", u"", identity.isControl ? u"2" : u"0", true);
    entries.Add(key + u"\\HELPDIR", u"", module.substr(0, module.rfind(u'\\')), true);
}

/// Without these a client in another apartment would not get the interfaces that the type library
/// names.
void AddInterfaces(Entries& entries, const ServerIdentity& identity) {
    for (const InterfaceIdentity& each : identity.interfaces) {
        const std::u16string key = u"Interface\\" + each.id;
        entries.Add(key, u"", each.name, false);
        entries.Add(key + u"\\ProxyStubClsid32", u"", kDispatchMarshaller, false);
        entries.Add(key + u"\\TypeLib", u"", identity.libraryId, false);
        entries.Add(key + u"\\TypeLib", u"Version", u"1.0", false);
    }
}

} // namespace

std::vector<RegistrationEntry> RegistrationEntries(const ServerIdentity& identity,
                                                   std::u16string_view module) {
    Entries entries;
    AddClass(entries, identity, module);
    if (identity.isControl) {
        AddControl(entries, identity, module);
    }
    AddProgram(entries, identity);
    AddLibrary(entries, identity, module);
    AddInterfaces(entries, identity);
    return entries.Take();
}

} // namespace talvix
