#include "workbench/program/user_memory.h"

#include "platform/win32/locale.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <windows.h>

namespace talvix::workbench {

namespace {

constexpr const wchar_t* kKey = L"Software\\Talvix\\Workbench";
constexpr const wchar_t* kRecent = L"Recent";
constexpr DWORD kLongest = 65536;        // bytes
constexpr char16_t kBetweenFiles = u'|'; // no file's name may hold it

void RememberFiles(const std::vector<std::u16string>& files) {
    std::u16string text;
    for (const std::u16string& file : files) {
        text.append(text.empty() ? 0 : 1, kBetweenFiles).append(file);
    }
    Remember(kRecent, text);
}

std::vector<std::u16string> RecentFilesBut(std::u16string_view path) {
    const Win32Locale locale;
    std::vector<std::u16string> files = RecentFiles();
    std::erase_if(files, [&](const std::u16string& file) { return locale.SameText(file, path); });
    return files;
}

} // namespace

std::u16string Remembered(const wchar_t* name) {
    OwnedKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_QUERY_VALUE, key.Out()) != ERROR_SUCCESS) {
        return {};
    }
    std::u16string text(kLongest / sizeof(char16_t), u'\0');
    DWORD type = 0;
    DWORD bytes = kLongest;
    const LSTATUS status = RegQueryValueExW(key.Get(), name, nullptr, &type,
                                            reinterpret_cast<BYTE*>(text.data()), &bytes);
    text.resize(status == ERROR_SUCCESS && type == REG_SZ ? bytes / sizeof(char16_t) : 0);
    return text.substr(0, text.find(u'\0'));
}

void Remember(const wchar_t* name, const std::u16string& text) {
    OwnedKey key;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, key.Out(),
                        nullptr) == ERROR_SUCCESS) {
        RegSetValueExW(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>((text.size() + 1) * sizeof(char16_t)));
    }
}

std::vector<std::u16string> RecentFiles() {
    std::vector<std::u16string> files;
    const std::u16string text = Remembered(kRecent);
    for (std::size_t start = 0; start < text.size() && files.size() < kMostRecentFiles;) {
        const std::size_t end = std::min(text.find(kBetweenFiles, start), text.size());
        files.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return files;
}

void RememberFile(std::u16string_view path) {
    std::vector<std::u16string> files = RecentFilesBut(path);
    files.emplace(files.begin(), path);
    files.resize(std::min(files.size(), kMostRecentFiles));
    RememberFiles(files);
}

void ForgetFile(std::u16string_view path) {
    RememberFiles(RecentFilesBut(path));
}

} // namespace talvix::workbench
