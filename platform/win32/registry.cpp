#include "platform/win32/registry.h"

#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <cstring>
#include <vector>

namespace talvix {

namespace {

/// Root handles are numbers that Windows extends with their sign on 64 bit.
HKEY Root(std::uint32_t root) {
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(root)));
}

void Write(std::uint32_t root, std::u16string_view key, std::u16string_view name, DWORD type,
           const void* content, std::size_t bytes) {
    OwnedKey opened;
    const std::u16string path(key);
    const std::u16string value(name);
    if (RegCreateKeyExW(Root(root), Wide(path), 0, nullptr, 0, KEY_SET_VALUE, nullptr, opened.Out(),
                        nullptr) == ERROR_SUCCESS) {
        RegSetValueExW(opened.Get(), Wide(value), 0, type, static_cast<const BYTE*>(content),
                       static_cast<DWORD>(bytes));
    }
}

} // namespace

std::optional<RegistryValue> Win32Registry::Read(std::uint32_t root, std::u16string_view key,
                                                 std::u16string_view name) {
    OwnedKey opened;
    const std::u16string path(key);
    const std::u16string value(name);
    RegistryValue read;
    DWORD bytes = 0;
    DWORD type = 0;
    if (RegOpenKeyExW(Root(root), Wide(path), 0, KEY_QUERY_VALUE, opened.Out()) != ERROR_SUCCESS ||
        RegQueryValueExW(opened.Get(), Wide(value), nullptr, &type, nullptr, &bytes) !=
            ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::vector<BYTE> content(bytes + sizeof(char16_t));
    read.type = type;
    if (RegQueryValueExW(opened.Get(), Wide(value), nullptr, &type, content.data(), &bytes) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    if (read.type == kRegistryText) {
        read.text.resize(bytes / sizeof(char16_t));
        std::memcpy(read.text.data(), content.data(), read.text.size() * sizeof(char16_t));
    } else if (read.type == kRegistryNumber && bytes >= sizeof read.number) {
        std::memcpy(&read.number, content.data(), sizeof read.number);
    }
    return read;
}

void Win32Registry::WriteText(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                              std::u16string_view text) {
    Write(root, key, name, REG_SZ, text.data(), text.size() * sizeof(char16_t));
}

void Win32Registry::WriteNumber(std::uint32_t root, std::u16string_view key,
                                std::u16string_view name, std::uint32_t number) {
    Write(root, key, name, REG_DWORD, &number, sizeof number);
}

} // namespace talvix
