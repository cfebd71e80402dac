#include "workbench/program/remembered_layout.h"

#include "automation/failure.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <windows.h>

namespace talvix::workbench {

namespace {

constexpr const wchar_t* kKey = L"Software\\Talvix\\Workbench";
constexpr const wchar_t* kLayout = L"Layout";
constexpr DWORD kLongest = 65536; // bytes

std::u16string Remembered() {
    OwnedKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_QUERY_VALUE, key.Out()) != ERROR_SUCCESS) {
        return {};
    }
    std::u16string text(kLongest / sizeof(char16_t), u'\0');
    DWORD type = 0;
    DWORD bytes = kLongest;
    const LSTATUS status = RegQueryValueExW(key.Get(), kLayout, nullptr, &type,
                                            reinterpret_cast<BYTE*>(text.data()), &bytes);
    text.resize(status == ERROR_SUCCESS && type == REG_SZ ? bytes / sizeof(char16_t) : 0);
    return text.substr(0, text.find(u'\0'));
}

std::u16string LayoutOf(const Late& grid) {
    const Value layout = grid.Call(u"SaveLayout");
    const auto* text = layout.If<std::u16string>();
    return text == nullptr ? std::u16string() : *text;
}

} // namespace

std::u16string RestoreLayout(const Late& grid) {
    try {
        if (const std::u16string remembered = Remembered(); !remembered.empty()) {
            grid.Call(u"LoadLayout", remembered);
        }
    } catch (const Failure&) { // whoever damaged it: the columns stand as they are designed
    }
    return LayoutOf(grid);
}

void RememberLayout(const Late& grid, const std::u16string& restored) {
    const std::u16string layout = LayoutOf(grid);
    OwnedKey key;
    if (layout == restored || RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_SET_VALUE,
                                              nullptr, key.Out(), nullptr) != ERROR_SUCCESS) {
        return;
    }
    RegSetValueExW(key.Get(), kLayout, 0, REG_SZ, reinterpret_cast<const BYTE*>(layout.c_str()),
                   static_cast<DWORD>((layout.size() + 1) * sizeof(char16_t)));
}

} // namespace talvix::workbench
