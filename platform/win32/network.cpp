#include "platform/win32/network.h"

#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <winnetwk.h>

namespace talvix {

namespace {

constexpr const wchar_t* kShares = L"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Shares";
constexpr DWORD kRemoteNameUnits = 520;
constexpr DWORD kComputerNameUnits = 255;
constexpr DWORD kShareNameUnits = 1024;
constexpr DWORD kShareDataUnits = 500;

/// The list ends at the first value that cannot be taken, one that is too long included.
std::vector<Share> ReadShares(HKEY key) {
    std::vector<Share> shares;
    std::u16string name(kShareNameUnits, u'\0');
    std::u16string data(kShareDataUnits, u'\0');
    for (DWORD index = 0;; ++index) {
        DWORD nameUnits = kShareNameUnits;
        DWORD bytes = kShareDataUnits * sizeof(char16_t);
        const LSTATUS status = RegEnumValueW(key, index, WideBuffer(name), &nameUnits, nullptr,
                                             nullptr, reinterpret_cast<BYTE*>(data.data()), &bytes);
        if (status != ERROR_SUCCESS) {
            return shares;
        }
        shares.push_back({name.substr(0, nameUnits), data.substr(0, bytes / sizeof(char16_t))});
    }
}

/// True for a drive that stands for a volume of this machine: those are devices of that name, which
/// no redirector's are. Asking the network providers takes many times longer.
bool IsLocalVolume(const std::u16string& drive) {
    constexpr std::u16string_view kVolume = u"\\Device\\HarddiskVolume";
    std::u16string device(kRemoteNameUnits, u'\0');
    return QueryDosDeviceW(Wide(drive), WideBuffer(device), kRemoteNameUnits) != 0 &&
           device.starts_with(kVolume);
}

} // namespace

std::optional<std::u16string> Win32Network::RemoteName(std::u16string_view drive) {
    if (IsLocalVolume(std::u16string(drive))) {
        return std::nullopt;
    }
    std::u16string name(kRemoteNameUnits, u'\0');
    DWORD units = kRemoteNameUnits;
    if (WNetGetConnectionW(Wide(std::u16string(drive)), WideBuffer(name), &units) != NO_ERROR) {
        return std::nullopt;
    }
    return name.substr(0, name.find(u'\0'));
}

std::optional<std::u16string> Win32Network::ComputerName() {
    if (!computer_) {
        std::u16string name(kComputerNameUnits, u'\0');
        DWORD units = kComputerNameUnits;
        if (GetComputerNameW(WideBuffer(name), &units) != FALSE) {
            computer_ = name.substr(0, units);
        }
    }
    return computer_;
}

ShareTable Win32Network::Shares() {
    const auto lastWrite = [this](FILETIME& written) {
        return key_ &&
               RegQueryInfoKeyW(key_.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, &written) == ERROR_SUCCESS;
    };
    FILETIME written{};
    if (!lastWrite(written)) { // not open yet, or the key was made anew
        shares_ = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kShares, 0, KEY_READ, key_.Out()) != ERROR_SUCCESS ||
            !lastWrite(written)) {
            return nullptr;
        }
    }
    if (shares_ == nullptr || CompareFileTime(&written, &written_) != 0) {
        shares_ = std::make_shared<const std::vector<Share>>(ReadShares(key_.Get()));
        written_ = written;
    }
    return shares_;
}

} // namespace talvix
