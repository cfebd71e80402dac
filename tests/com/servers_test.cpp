#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/registration.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <talvix_dms_guids.h>
#include <talvix_grid_guids.h>

namespace talvix {

namespace {

struct Product {
    const char16_t* file;
    const char16_t* programId;
    GUID classId;
    GUID libraryId;
    std::span<const DispatchInterface> interfaces;
};

const Product kProducts[] = {
    {u"TalvixDMS.dll", u"TalvixDMS.Main", CLSID_Main, LIBID_TalvixDMS, kInterfacesOfTalvixDMS},
    {u"TalvixGrid.ocx", u"TalvixGrid.Grid", CLSID_Grid, LIBID_TalvixGrid, kInterfacesOfTalvixGrid}};

std::vector<std::u16string> KeysOf(const Product& product) {
    std::vector<std::u16string> keys{u"CLSID\\" + GuidText(product.classId),
                                     u"TypeLib\\" + GuidText(product.libraryId), product.programId,
                                     std::u16string(product.programId) + u".1"};
    for (const DispatchInterface& each : product.interfaces) {
        keys.push_back(u"Interface\\" + GuidText(each.id));
    }
    return keys;
}

/// The products are not registered for the length of a block.
struct Unregistered {
    Unregistered() { CallAll("DllUnregisterServer"); }
    Unregistered(const Unregistered&) = delete;
    Unregistered& operator=(const Unregistered&) = delete;
    ~Unregistered() { CallAll("DllRegisterServer"); }
    static void CallAll(const char* name) {
        for (const Product& product : kProducts) {
            CallExport(product.file, name);
        }
    }
};

std::vector<std::u16string> MachineSnapshot(const Product& product) {
    return RegistrySnapshot(HKEY_LOCAL_MACHINE, KeysOf(product));
}

HRESULT Install(const Product& product, BOOL install, const wchar_t* commandLine) {
    using DllInstall = HRESULT(WINAPI*)(BOOL, const wchar_t*);
    HMODULE module = LoadLibraryW(Wide(ProductFolder() + product.file));
    const auto call =
        reinterpret_cast<DllInstall>(reinterpret_cast<void*>(GetProcAddress(module, "DllInstall")));
    const HRESULT result = call(install, commandLine);
    FreeLibrary(module);
    return result;
}

ComPtr<ITypeLib> LibraryOf(const Product& product) {
    ComPtr<ITypeLib> library;
    LoadTypeLibEx(Wide(ProductFolder() + product.file), REGKIND_NONE, library.Out());
    return library;
}

struct MemberName {
    std::u16string name;
    MEMBERID id;
};

std::vector<MemberName> MembersOf(ITypeInfo* info) {
    std::vector<MemberName> members;
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    const auto add = [&](MEMBERID id) {
        Bstr name;
        info->GetDocumentation(id, name.Out(), nullptr, nullptr, nullptr);
        if (members.empty() || members.back().id != id) { // a put follows its get
            members.push_back({name.Text(), id});
        }
    };
    for (UINT at = 0; at < attributes->cFuncs; ++at) {
        FUNCDESC* function = nullptr;
        info->GetFuncDesc(at, &function);
        add(function->memid);
        info->ReleaseFuncDesc(function);
    }
    for (UINT at = 0; at < attributes->cVars; ++at) {
        VARDESC* variable = nullptr;
        info->GetVarDesc(at, &variable);
        add(variable->memid);
        info->ReleaseVarDesc(variable);
    }
    info->ReleaseTypeAttr(attributes);
    return members;
}

/// Every member of the object's type information is answered by name with the number it has there.
void ExpectNumbersAgree(IDispatch* object) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(object->GetTypeInfo(0, 0, info.Out()), S_OK);
    for (const MemberName& member : MembersOf(info.Get())) {
        if (member.id < 0) {
            continue; // the enumerator is reached by its number alone
        }
        auto* name = const_cast<wchar_t*>(Wide(member.name));
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), S_OK) << ToUtf8(member.name);
        EXPECT_EQ(id, member.id) << ToUtf8(member.name);
    }
}

} // namespace

TEST(Registration, UnregisteringLeavesTheRegistryAsItWas) {
    for (const Product& product : kProducts) {
        ASSERT_EQ(CallExport(product.file, "DllUnregisterServer"), S_OK);
        const std::vector<std::u16string> before = MachineSnapshot(product);
        ASSERT_EQ(CallExport(product.file, "DllRegisterServer"), S_OK);
        const std::vector<std::u16string> registered = MachineSnapshot(product);
        EXPECT_GT(registered.size(), before.size() + 10 + 4 * product.interfaces.size());
        ASSERT_EQ(CallExport(product.file, "DllRegisterServer"), S_OK);
        EXPECT_EQ(MachineSnapshot(product), registered);
        ASSERT_EQ(CallExport(product.file, "DllUnregisterServer"), S_OK);
        EXPECT_EQ(MachineSnapshot(product), before);
        ASSERT_EQ(CallExport(product.file, "DllRegisterServer"), S_OK);
    }
}

TEST(Registration, WhatOthersHaveWrittenStays) {
    const Product& product = kProducts[0];
    OwnedKey key;
    const std::u16string path = u"Software\\Classes\\" + KeysOf(product)[0] + u"\\Fremd";
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, Wide(path), 0, nullptr, 0, KEY_WRITE, nullptr,
                              key.Out(), nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(CallExport(product.file, "DllUnregisterServer"), S_OK);
    const std::vector<std::u16string> left = MachineSnapshot(product);
    EXPECT_TRUE(std::any_of(left.begin(), left.end(),
                            [&](const std::u16string& line) { return line == path; }));
    key.Reset();
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, Wide(path));
    ASSERT_EQ(CallExport(product.file, "DllRegisterServer"), S_OK);
    ASSERT_EQ(CallExport(product.file, "DllUnregisterServer"), S_OK);
    ASSERT_EQ(CallExport(product.file, "DllRegisterServer"), S_OK);
}

TEST(Registration, PerUserWritesTheSameKeysForTheUser) {
    for (const Product& product : kProducts) {
        ASSERT_EQ(Install(product, TRUE, L"user"), S_OK);
        const std::vector<std::u16string> user =
            RegistrySnapshot(HKEY_CURRENT_USER, KeysOf(product));
        const std::vector<std::u16string> machine =
            MachineSnapshot(product); // may hold the other bitness as well
        EXPECT_GT(user.size(), 20U);
        EXPECT_TRUE(std::all_of(user.begin(), user.end(), [&](const std::u16string& line) {
            return std::find(machine.begin(), machine.end(), line) != machine.end();
        }));
        ASSERT_EQ(Install(product, FALSE, L"user"), S_OK);
        EXPECT_TRUE(RegistrySnapshot(HKEY_CURRENT_USER, KeysOf(product)).empty());
        EXPECT_EQ(Install(product, TRUE, L"nobody"), E_INVALIDARG);
    }
}

TEST(Registration, PerUserLeavesNoKeyThatWasNotThereBefore) {
    for (const wchar_t* empty : {L"CLSID", L"TypeLib", L"Interface"}) {
        RegDeleteKeyW(HKEY_CURRENT_USER, (std::wstring(L"Software\\Classes\\") + empty).c_str());
    }
    const std::vector<std::u16string> before = RegistrySnapshot(HKEY_CURRENT_USER, {u""});
    for (const Product& product : kProducts) {
        ASSERT_EQ(Install(product, TRUE, L"user"), S_OK);
    }
    EXPECT_GT(RegistrySnapshot(HKEY_CURRENT_USER, {u""}).size(), before.size() + 40);
    for (const Product& product : kProducts) {
        ASSERT_EQ(Install(product, FALSE, L"user"), S_OK);
    }
    EXPECT_EQ(RegistrySnapshot(HKEY_CURRENT_USER, {u""}), before);
}

TEST(Registration, AFailureLeavesWhatWasThereBefore) {
    const std::u16string tooLong(300, u'x'); // names of keys have at most 255 characters
    const auto entriesOf = [&](std::u16string_view module, bool fails) {
        std::vector<RegistrationEntry> entries = {
            {u"TalvixProbe.Ding", u"", u"Ein Ding", true},
            {u"TalvixProbe.Ding\\CLSID", u"", u"{C}", true},
            {u"TalvixProbe.Ding\\Server", u"", std::u16string(module), false}};
        if (fails) {
            entries.push_back({u"TalvixProbe.Ding\\Neu\\Innen", u"Wert", u"x", false});
            entries.push_back({u"TalvixProbe.Ding\\" + tooLong, u"", u"x", false});
        }
        return entries;
    };
    const auto snapshot = [] { return RegistrySnapshot(HKEY_CURRENT_USER, {u"TalvixProbe.Ding"}); };
    constexpr RegistrationScope kUser = RegistrationScope::User;
    EXPECT_TRUE(FAILED(WriteRegistration(entriesOf(u"C:\\alt.dll", true), kUser)));
    EXPECT_TRUE(snapshot().empty()) << "of a first registration nothing stays";
    ASSERT_EQ(WriteRegistration(entriesOf(u"C:\\alt.dll", false), kUser), S_OK);
    OwnedKey foreign;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes\\TalvixProbe.Ding\\Server", 0, nullptr,
                    0, KEY_WRITE, nullptr, foreign.Out(), nullptr);
    const DWORD number = 7; // what others have put in place of a text comes back as it was
    RegSetValueExW(foreign.Get(), nullptr, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                   sizeof number);
    const std::vector<std::u16string> before = snapshot();
    ASSERT_GE(before.size(), 3U);
    EXPECT_TRUE(FAILED(WriteRegistration(entriesOf(u"D:\\neu.dll", true), kUser)));
    EXPECT_EQ(snapshot(), before) << "of a second one the first stays";
    foreign.Reset();
    RemoveRegistration(entriesOf(u"C:\\alt.dll", false), kUser);
    EXPECT_TRUE(snapshot().empty());
}

TEST(Registration, ProgramIdsLeadToTheClassWithAndWithoutVersion) {
    for (const Product& product : kProducts) {
        for (const std::u16string& name :
             {std::u16string(product.programId), std::u16string(product.programId) + u".1"}) {
            CLSID id{};
            EXPECT_EQ(CLSIDFromProgID(Wide(name), &id), S_OK);
            EXPECT_EQ(id, product.classId);
        }
    }
}

TEST(Registration, TheTypeLibrariesAreRegistered) {
    for (const Product& product : kProducts) {
        ComPtr<ITypeLib> library;
        EXPECT_EQ(LoadRegTypeLib(product.libraryId, 1, 0, 0, library.Out()), S_OK);
    }
}

TEST(ClassObject, RefusesOtherClassesAndAggregation) {
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    HMODULE module = LoadLibraryW(Wide(ProductFolder() + u"TalvixDMS.dll"));
    const auto get = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(get(CLSID_Grid, IID_IClassFactory, factory.OutAny()), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(get(CLSID_Main, IID_IClassFactory, nullptr), E_POINTER);
    ASSERT_EQ(get(CLSID_Main, IID_IClassFactory, factory.OutAny()), S_OK);
    ComPtr<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, object.OutAny()),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, object.OutAny()), E_NOINTERFACE);
    factory = nullptr;
    FreeLibrary(module);
}

TEST(Unloading, IsRefusedWhileAnythingLives) {
    for (const Product& product : kProducts) {
        HMODULE module = LoadLibraryW(Wide(ProductFolder() + product.file));
        using Export = HRESULT(WINAPI*)();
        const auto canUnload = reinterpret_cast<Export>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
        EXPECT_EQ(canUnload(), S_OK);
        {
            const Late object = CreateByName(product.programId);
            EXPECT_EQ(canUnload(), S_FALSE);
        }
        EXPECT_EQ(canUnload(), S_OK);
        {
            ComPtr<IClassFactory> factory;
            ASSERT_EQ(CoGetClassObject(product.classId, CLSCTX_INPROC_SERVER, nullptr,
                                       IID_IClassFactory, factory.OutAny()),
                      S_OK);
            factory->LockServer(TRUE);
        }
        EXPECT_EQ(canUnload(), S_FALSE);
        {
            ComPtr<IClassFactory> factory;
            ASSERT_EQ(CoGetClassObject(product.classId, CLSCTX_INPROC_SERVER, nullptr,
                                       IID_IClassFactory, factory.OutAny()),
                      S_OK);
            factory->LockServer(FALSE);
        }
        EXPECT_EQ(canUnload(), S_OK);
        FreeLibrary(module);
    }
}

TEST(Unloading, AServerWithoutObjectsGoesWithItsLastHandle) {
    const TemporaryFolder folder;
    for (const Product& product : kProducts) {
        const std::u16string copy = folder.Path() + u"\\" + product.file; // nobody else's
        ASSERT_NE(CopyFileW(Wide(ProductFolder() + product.file), Wide(copy), TRUE), FALSE);
        HMODULE module = LoadLibraryW(Wide(copy));
        ASSERT_NE(module, nullptr);
        using Export = HRESULT(WINAPI*)();
        const auto canUnload = reinterpret_cast<Export>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
        EXPECT_EQ(canUnload(), S_OK);
        EXPECT_EQ(GetModuleHandleW(Wide(copy)), module);
        FreeLibrary(module);
        EXPECT_EQ(GetModuleHandleW(Wide(copy)), nullptr);
    }
}

TEST(TypeLibrary, MainHasThe21MethodsInTheirOrderAndTwoPublicMembers) {
    const std::vector<std::u16string> expected = {u"ReferenceLibraries",
                                                  u"DereferenceLibraries",
                                                  u"InitSGDMS",
                                                  u"Init",
                                                  u"btnOpenFolder_Click",
                                                  u"AddDMSItem",
                                                  u"AddFile",
                                                  u"FillActionCombo",
                                                  u"NewDMSItem",
                                                  u"DeleteDMSItem",
                                                  u"OpenDocument",
                                                  u"AddFilesFromProjectFolder",
                                                  u"AddFilesFromProjectFolderEvent",
                                                  u"btnOpenDocument_Click",
                                                  u"btnNewDocument_Click",
                                                  u"btnChangeDocument_Click",
                                                  u"btnDeleteDocument_Click",
                                                  u"btnExportDocuments_Click",
                                                  u"MkDirs",
                                                  u"btnDMSSetStore_Click",
                                                  u"btnDMSDeletetStore_Click",
                                                  u"StopImport",
                                                  u"strAddingFile"};
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(LibraryOf(kProducts[0])->GetTypeInfoOfGuid(DIID__Main, info.Out()), S_OK);
    const std::vector<MemberName> members = MembersOf(info.Get());
    ASSERT_EQ(members.size(), expected.size());
    for (std::size_t at = 0; at < expected.size(); ++at) {
        EXPECT_EQ(members[at].name, expected[at]);
        EXPECT_EQ(members[at].id, static_cast<MEMBERID>(at) + 1);
    }
}

TEST(TypeLibrary, NumbersAgreeWithWhatTheObjectsAnswer) {
    for (const Product& product : kProducts) {
        ComPtr<IDispatch> object;
        ASSERT_EQ(CreateByName(product.programId, object), S_OK);
        ExpectNumbersAgree(object.Get());
    }
    ComPtr<IDispatch> grid;
    ASSERT_EQ(CreateByName(u"TalvixGrid.Grid", grid), S_OK);
    for (const auto* source : {L"Columns", L"Rows", L"Groups", L"Selection"}) {
        auto* name = const_cast<wchar_t*>(source);
        DISPID id = 0;
        DISPPARAMS none{};
        VARIANT result{};
        ASSERT_EQ(grid->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), S_OK);
        ASSERT_EQ(
            grid->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr),
            S_OK);
        ExpectNumbersAgree(result.pdispVal);
        VariantClear(&result);
    }
}

TEST(Activation, WorksByManifestWithoutRegistration) {
    const Unregistered unregistered;
    const std::u16string manifest = ProductFolder() + u"TalvixWorkbench.exe.manifest";
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.lpSource = Wide(manifest);
    HANDLE context = CreateActCtxW(&description);
    ASSERT_NE(context, INVALID_HANDLE_VALUE) << "no manifest beside the products";
    ULONG_PTR cookie = 0;
    ASSERT_NE(ActivateActCtx(context, &cookie), FALSE);
    for (const Product& product : kProducts) {
        ComPtr<IDispatch> object;
        EXPECT_EQ(CreateByName(product.programId, object), S_OK) << ToUtf8(product.programId);
    }
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
}

TEST(Products, CarryTheirVersion) {
    for (const Product& product : kProducts) {
        const std::u16string path = ProductFolder() + product.file;
        DWORD unused = 0;
        EXPECT_GT(GetFileVersionInfoSizeW(Wide(path), &unused), 0U);
    }
}

} // namespace talvix
