// What the first object costs a process, each time in a process of its own.
#include "automation/text.h"
#include "bench/rigs.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <shellapi.h>

#include <cstdio>

namespace talvix::bench {

namespace {

constexpr const wchar_t* kMinimalClass =
    L"Software\\Classes\\CLSID\\{5B1C3A52-7A0B-4C7E-9C43-2D1C9E0F6B11}";
constexpr GUID kMinimalId{
    0x5B1C3A52, 0x7A0B, 0x4C7E, {0x9C, 0x43, 0x2D, 0x1C, 0x9E, 0x0F, 0x6B, 0x11}};
constexpr const wchar_t* kMainId = L"TalvixDMS.Main";

std::u16string OwnPath() {
    std::u16string path(MAX_PATH, u'\0');
    path.resize(GetModuleFileNameW(nullptr, WideBuffer(path), MAX_PATH));
    return path;
}

void RegisterMinimal() {
    const std::u16string own = OwnPath();
    const std::u16string server = own.substr(0, own.rfind(u'\\')) + u"\\talvix_minimal.dll";
    const std::wstring key = std::wstring(kMinimalClass) + L"\\InprocServer32";
    OwnedKey opened;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    opened.Out(), nullptr);
    RegSetValueExW(opened.Get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(Wide(server)),
                   static_cast<DWORD>((server.size() + 1) * sizeof(char16_t)));
}

void UnregisterMinimal() {
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, (std::wstring(kMinimalClass) + L"\\InprocServer32").c_str());
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kMinimalClass);
}

/// Seconds that a process of this program says to have needed for `what`.
double InOwnProcess(const char16_t* what) {
    std::u16string command = u"\"" + OwnPath() + u"\" once " + what;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    Require(CreateProcessW(nullptr, WideBuffer(command), nullptr, nullptr, FALSE, 0, nullptr,
                           nullptr, &startup, &process) != FALSE,
            "starting a process");
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD microseconds = 0;
    GetExitCodeProcess(process.hProcess, &microseconds);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    Require(microseconds > 10, "creation");
    return microseconds / 1e6;
}

double CreateMinimal() {
    IUnknown* object = nullptr;
    const double start = Now();
    const HRESULT result = CoCreateInstance(kMinimalId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                            reinterpret_cast<void**>(&object));
    return SUCCEEDED(result) && object != nullptr ? Since(start) : 0;
}

double CreateMain() {
    CLSID id{};
    CLSIDFromProgID(kMainId, &id);
    ComPtr<IUnknown> object;
    const double start = Now();
    const HRESULT result =
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.OutAny());
    return SUCCEEDED(result) ? Since(start) : 0;
}

double LoadMain() {
    const std::u16string own = OwnPath();
    const std::u16string server = own.substr(0, own.rfind(u'\\')) + u"\\TalvixDMS.dll";
    const double start = Now();
    const HMODULE loaded = LoadLibraryW(Wide(server));
    return loaded != nullptr ? Since(start) : 0;
}

double AttachAndInit() {
    const double start = Now();
    const ServerRig rig(u"C:\\");
    rig.main.Call(u"Init");
    return Since(start);
}

/// The shell starts with the question that yields its list of icons: it is the one that `InitSGDMS`
/// asks, so that both sides start it in the same way.
double ShellAndControl() {
    const double start = Now();
    SHFILEINFOW info{};
    SHGetFileInfoW(L"C:\\", 0, &info, sizeof info,
                   SHGFI_SYSICONINDEX | SHGFI_ICON | SHGFI_SMALLICON);
    const OwnedIcon icon(info.hIcon);
    const HostRig rig(u"C:\\");
    return info.hIcon != nullptr ? Since(start) : 0;
}

} // namespace

int CreateOnce(const std::string& what) {
    TellTimes(ProfiledRow() != nullptr);
    double time = 0;
    if (what == "minimal") {
        time = CreateMinimal();
    } else if (what == "main") {
        time = CreateMain();
    } else if (what == "load") {
        time = LoadMain();
    } else if (what == "attach") {
        time = AttachAndInit();
    } else if (what == "shell") {
        time = ShellAndControl();
    }
    return static_cast<int>(time * 1e6);
}

int CreationBench() {
    RegisterMinimal();
    Compare(
        {"create", "first creation of `Main` in a process / of a minimal server's object", 2},
        [] { return InOwnProcess(u"main"); }, [] { return InOwnProcess(u"minimal"); }, 15);
    Compare(
        {"load", "loading its DLL alone / the same", 0}, [] { return InOwnProcess(u"load"); },
        [] { return InOwnProcess(u"minimal"); }, 15);
    Compare(
        {"attach", "attaching and `Init` without rows / shell start and creation of the grids",
         1.2},
        [] { return InOwnProcess(u"attach"); }, [] { return InOwnProcess(u"shell"); }, 15);
    UnregisterMinimal();
    return 0;
}

} // namespace talvix::bench
