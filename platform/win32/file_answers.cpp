#include "platform/win32/file_answers.h"

#include "automation/text.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <shellapi.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace talvix {

namespace {

constexpr UINT kSmallIcon = SHGFI_SYSICONINDEX | SHGFI_ICON | SHGFI_SMALLICON;
/// With SHGFI_EXETYPE the call is defined for that flag alone; shells that mind answer without it.
constexpr UINT kType =
    SHGFI_SYSICONINDEX | SHGFI_EXETYPE | SHGFI_TYPENAME | SHGFI_DISPLAYNAME | SHGFI_SHELLICONSIZE;
constexpr UINT kTypeWithoutExeType = kType & ~static_cast<UINT>(SHGFI_EXETYPE);

/// Asks with an icon handed out, which is given back at once.
DWORD_PTR AskWithIcon(const std::u16string& path, SHFILEINFOW& info) {
    const DWORD_PTR list = SHGetFileInfoW(Wide(path), 0, &info, sizeof info, kSmallIcon);
    const OwnedIcon handedOut(info.hIcon);
    return list;
}

std::u16string AskForType(const std::u16string& path, UINT flags) {
    SHFILEINFOW info{};
    SHGetFileInfoW(Wide(path), 0, &info, sizeof info, flags);
    info.szTypeName[std::size(info.szTypeName) - 1] = 0;
    return TextOf(info.szTypeName);
}

/// A text of the registry; "" where there is none. `name` is null for the key's default value.
std::u16string RegistryText(HKEY root, const std::u16string& key, const wchar_t* name = nullptr) {
    OwnedKey opened;
    if (RegOpenKeyExW(root, Wide(key), 0, KEY_QUERY_VALUE, opened.Out()) != ERROR_SUCCESS) {
        return {};
    }
    std::u16string text(300, u'\0');
    DWORD type = 0;
    auto bytes = static_cast<DWORD>(text.size() * sizeof(char16_t));
    const LSTATUS status = RegQueryValueExW(opened.Get(), name, nullptr, &type,
                                            reinterpret_cast<BYTE*>(text.data()), &bytes);
    const bool isText = status == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ);
    text.resize(isText ? std::min<std::size_t>(bytes / sizeof(char16_t), text.size()) : 0);
    return text.substr(0, text.find(u'\0'));
}

bool KeyExists(const std::u16string& key) {
    OwnedKey opened;
    return RegOpenKeyExW(HKEY_CLASSES_ROOT, Wide(key), 0, KEY_READ, opened.Out()) == ERROR_SUCCESS;
}

std::vector<std::u16string> NamesOfValues(const std::u16string& key) {
    std::vector<std::u16string> names;
    OwnedKey opened;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, Wide(key), 0, KEY_QUERY_VALUE, opened.Out()) !=
        ERROR_SUCCESS) {
        return names;
    }
    wchar_t name[256];
    DWORD units = std::size(name);
    while (RegEnumValueW(opened.Get(), static_cast<DWORD>(names.size()), name, &units, nullptr,
                         nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        names.push_back(TextOf(name));
        units = std::size(name);
    }
    return names;
}

/// With its dot; "" for a name without one.
std::u16string_view ExtensionOf(std::u16string_view path) {
    const std::size_t at = path.find_last_of(u".\\:");
    return at == std::u16string_view::npos || path[at] != u'.' ? std::u16string_view()
                                                               : path.substr(at);
}

/// What the shell takes a file of the extension for: what the user has chosen goes before what is
/// registered, and where neither is there what the user has opened such files with.
std::vector<std::u16string> ClassesBehind(const std::u16string& extension,
                                          const std::u16string& choices) {
    std::vector<std::u16string> classes = {
        RegistryText(HKEY_CURRENT_USER, choices + u"\\UserChoice", L"ProgId"),
        RegistryText(HKEY_CLASSES_ROOT, extension)};
    std::erase(classes, u"");
    return classes.empty() ? NamesOfValues(choices + u"\\OpenWithProgids") : classes;
}

bool ClassCarriesOwnIcon(const std::u16string& fileClass) {
    const std::u16string icon = RegistryText(HKEY_CLASSES_ROOT, fileClass + u"\\DefaultIcon");
    return icon.find(u"%1") != std::u16string::npos ||
           KeyExists(fileClass + u"\\shellex\\IconHandler");
}

} // namespace

std::optional<std::int32_t> Win32FileAnswers::AskForIcon(std::u16string_view path) {
    SHFILEINFOW info{};
    const bool isKnown = AskWithIcon(std::u16string(path), info) != 0;
    return isKnown ? std::optional<std::int32_t>(info.iIcon) : std::nullopt;
}

std::optional<std::u16string> Win32FileAnswers::AskForTypeName(std::u16string_view path) {
    const std::u16string file(path);
    if (!mindsExeType_) {
        std::u16string text = AskForType(file, kType);
        if (!text.empty()) {
            return text;
        }
    }
    std::u16string text = AskForType(file, kTypeWithoutExeType);
    mindsExeType_ = !text.empty();
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

bool Win32FileAnswers::CarriesOwnIcon(std::u16string_view path) {
    static constexpr const char16_t* carriers[] = {u".exe", u".ico", u".cur", u".ani",
                                                   u".lnk", u".scr", u".url"};
    const std::u16string extension(ExtensionOf(path));
    if (extension.empty() ||
        std::any_of(std::begin(carriers), std::end(carriers),
                    [&](const char16_t* carrier) { return SameName(extension, carrier); }) ||
        KeyExists(extension + u"\\shellex\\IconHandler")) {
        return true;
    }
    const auto classes = ClassesBehind(extension, TextOf(kChoices) + u"\\" + extension);
    return std::any_of(classes.begin(), classes.end(), ClassCarriesOwnIcon);
}

std::int64_t Win32FileAnswers::SmallIconList() {
    SHFILEINFOW info{};
    return static_cast<std::int64_t>(AskWithIcon(u"C:\\", info));
}

} // namespace talvix
