#include "platform/win32/shell.h"

#include "automation/text.h"
#include "platform/literal_path.h"
#include "platform/opening_policy.h"
#include "platform/win32/files.h"
#include "platform/win32/messages.h"
#include "platform/win32/owned.h"
#include "platform/win32/registry.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <shellapi.h>

#include <algorithm>
#include <iterator>

namespace talvix {

namespace {

constexpr UINT kSmallIcon = SHGFI_SYSICONINDEX | SHGFI_ICON | SHGFI_SMALLICON;
/// With SHGFI_EXETYPE the call is defined for that flag alone; shells that mind answer without it.
constexpr UINT kType =
    SHGFI_SYSICONINDEX | SHGFI_EXETYPE | SHGFI_TYPENAME | SHGFI_DISPLAYNAME | SHGFI_SHELLICONSIZE;
constexpr UINT kTypeWithoutExeType = kType & ~static_cast<UINT>(SHGFI_EXETYPE);

/// Asks with an icon handed out, which is given back at once.
DWORD_PTR AskForIcon(const std::u16string& path, SHFILEINFOW& info) {
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

std::u16string DefaultValue(const std::u16string& key) {
    OwnedKey opened;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, Wide(key), 0, KEY_QUERY_VALUE, opened.Out()) !=
        ERROR_SUCCESS) {
        return {};
    }
    std::u16string text(300, u'\0');
    DWORD type = 0;
    auto bytes = static_cast<DWORD>(text.size() * sizeof(char16_t));
    const LSTATUS status = RegQueryValueExW(opened.Get(), nullptr, nullptr, &type,
                                            reinterpret_cast<BYTE*>(text.data()), &bytes);
    const bool isText = status == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ);
    text.resize(isText ? std::min<std::size_t>(bytes / sizeof(char16_t), text.size()) : 0);
    return text.substr(0, text.find(u'\0'));
}

bool KeyExists(const std::u16string& key) {
    OwnedKey opened;
    return RegOpenKeyExW(HKEY_CLASSES_ROOT, Wide(key), 0, KEY_READ, opened.Out()) == ERROR_SUCCESS;
}

/// With its dot; "" for a name without one.
std::u16string_view ExtensionOf(std::u16string_view path) {
    const std::size_t at = path.find_last_of(u".\\:");
    return at == std::u16string_view::npos || path[at] != u'.' ? std::u16string_view()
                                                               : path.substr(at);
}

bool CarriesOwnIcon(const std::u16string& extension) {
    static constexpr const char16_t* carriers[] = {u".exe", u".ico", u".cur", u".ani",
                                                   u".lnk", u".scr", u".url"};
    if (std::any_of(std::begin(carriers), std::end(carriers),
                    [&](const char16_t* carrier) { return SameName(extension, carrier); })) {
        return true;
    }
    const std::u16string fileClass = DefaultValue(extension);
    return DefaultValue(fileClass + u"\\DefaultIcon").find(u"%1") != std::u16string::npos ||
           (!fileClass.empty() && KeyExists(fileClass + u"\\shellex\\IconHandler")) ||
           KeyExists(extension + u"\\shellex\\IconHandler");
}

std::int32_t AskForIconIndex(std::u16string_view path) {
    SHFILEINFOW info{};
    AskForIcon(std::u16string(path), info);
    return info.iIcon;
}

} // namespace

std::int32_t Win32Shell::SmallIconIndex(std::u16string_view path) {
    FileClass* known = ClassOf(path);
    if (known == nullptr || known->hasOwnIcon) {
        return AskForIconIndex(path);
    }
    if (!known->icon) {
        known->icon = AskForIconIndex(path);
    }
    return *known->icon;
}

std::u16string Win32Shell::TypeName(std::u16string_view path) {
    FileClass* known = ClassOf(path);
    if (known == nullptr) {
        return AskForTypeName(std::u16string(path));
    }
    if (!known->typeName) {
        known->typeName = AskForTypeName(std::u16string(path));
    }
    return *known->typeName;
}

std::u16string Win32Shell::AskForTypeName(const std::u16string& path) {
    if (!mindsExeType_) {
        std::u16string text = AskForType(path, kType);
        if (!text.empty()) {
            return text;
        }
    }
    std::u16string text = AskForType(path, kTypeWithoutExeType);
    mindsExeType_ = !text.empty();
    return text;
}

bool Win32Shell::HasOwnIcon(std::u16string_view path) {
    const FileClass* known = ClassOf(path);
    return known == nullptr || known->hasOwnIcon;
}

Win32Shell::FileClass* Win32Shell::ClassOf(std::u16string_view path) {
    if (watch_.HasChanged()) {
        classes_.clear();
    }
    const std::u16string_view extension = ExtensionOf(path);
    const DWORD attributes = GetFileAttributesW(Wide(ExtendedPath(path)));
    if (extension.empty() || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return nullptr; // a path that is not there has all attributes
    }
    std::u16string key(extension);
    CharLowerBuffW(WideBuffer(key), static_cast<DWORD>(key.size()));
    const auto [found, isNew] = classes_.try_emplace(std::move(key));
    if (isNew) {
        found->second.hasOwnIcon = CarriesOwnIcon(std::u16string(extension));
    }
    return &found->second;
}

std::int64_t Win32Shell::SmallIconList() {
    SHFILEINFOW info{};
    return static_cast<std::int64_t>(AskForIcon(u"C:\\", info));
}

ShellCopy Win32Shell::Copy(std::u16string_view source, std::u16string_view target) {
    // Lists of paths, ended by an empty one.
    const std::u16string from = PlainPath(source) + u'\0';
    const std::u16string to = PlainPath(target) + u'\0';
    SHFILEOPSTRUCTW operation{};
    operation.hwnd = GetActiveWindow();
    operation.wFunc = FO_COPY;
    operation.pFrom = Wide(from);
    operation.pTo = Wide(to);
    operation.fFlags = FOF_FILESONLY;
    const int result = SHFileOperationW(&operation);
    return {result, operation.fAnyOperationsAborted != FALSE};
}

void Win32Shell::Open(std::u16string_view what, std::u16string_view workingFolder) {
    Win32Registry registry;
    if (AsksBeforeOpening(ReadOpeningPolicy(registry), what)) {
        const std::u16string question =
            u"Soll „" + std::u16string(what) + u"“ wirklich geöffnet werden?";
        if (Win32Messages().Show(question, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2,
                                 u"Dokument öffnen") != IDYES) {
            return;
        }
    }
    ShellExecuteW(nullptr, L"open", Wide(std::u16string(what)), nullptr,
                  Wide(std::u16string(workingFolder)), SW_SHOW);
}

std::int32_t Win32Shell::ShowProperties(std::u16string_view path, std::int64_t owner) {
    const std::u16string file(path);
    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_INVOKEIDLIST | SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
    execution.hwnd = reinterpret_cast<HWND>(static_cast<LONG_PTR>(owner));
    execution.lpVerb = L"properties";
    execution.lpFile = Wide(file);
    execution.lpParameters = L"";
    execution.lpDirectory = L"";
    const BOOL started = ShellExecuteExW(&execution);
    if (execution.hProcess != nullptr) {
        CloseHandle(execution.hProcess);
    }
    return started;
}

} // namespace talvix
