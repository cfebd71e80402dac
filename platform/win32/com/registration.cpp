#include "platform/win32/com/registration.h"

#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <objbase.h>

#include <algorithm>

namespace talvix {

namespace {

constexpr const char16_t* kClasses = u"Software\\Classes\\";

HKEY RootOf(RegistrationScope scope) {
    return scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

LSTATUS WriteEntry(const RegistrationEntry& entry, RegistrationScope scope) {
    OwnedKey key;
    const std::u16string path = kClasses + entry.key;
    const LSTATUS status = RegCreateKeyExW(RootOf(scope), Wide(path), 0, nullptr, 0, KEY_SET_VALUE,
                                           nullptr, key.Out(), nullptr);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    return RegSetValueExW(key.Get(), Wide(entry.name), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(entry.text.c_str()),
                          static_cast<DWORD>((entry.text.size() + 1) * sizeof(char16_t)));
}

struct KeyContent {
    DWORD keys = 0;
    DWORD values = 0;
};

KeyContent ContentOf(HKEY key) {
    KeyContent content;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &content.keys, nullptr, nullptr,
                     &content.values, nullptr, nullptr, nullptr, nullptr);
    return content;
}

/// Removes keys from `path` upwards, as long as they hold nothing.
void RemoveEmptyKeys(std::u16string path, RegistrationScope scope) {
    while (!path.empty()) {
        const std::u16string full = kClasses + path;
        OwnedKey key;
        if (RegOpenKeyExW(RootOf(scope), Wide(full), 0, KEY_READ, key.Out()) == ERROR_SUCCESS) {
            const KeyContent content = ContentOf(key.Get());
            if (content.keys != 0 || content.values != 0) {
                return;
            }
            key.Reset();
            RegDeleteKeyW(RootOf(scope), Wide(full));
        }
        const std::size_t up = path.rfind(u'\\');
        path.resize(up == std::u16string::npos ? 0 : up);
        if (path == u"CLSID" || path == u"TypeLib" || path == u"Interface") {
            return; // the system's own
        }
    }
}

/// A key that still has keys below it serves somebody else: its values stay.
void RemoveEntry(const RegistrationEntry& entry, RegistrationScope scope) {
    OwnedKey key;
    const std::u16string path = kClasses + entry.key;
    if (RegOpenKeyExW(RootOf(scope), Wide(path), 0, KEY_READ | KEY_SET_VALUE, key.Out()) !=
        ERROR_SUCCESS) {
        return;
    }
    if (ContentOf(key.Get()).keys == 0) {
        RegDeleteValueW(key.Get(), Wide(entry.name));
    }
    key.Reset();
    RemoveEmptyKeys(entry.key, scope);
}

/// True when the class is registered for the other bitness, seen through the other view.
bool OtherBitnessIsRegistered(const std::vector<RegistrationEntry>& entries,
                              RegistrationScope scope) {
    constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    const auto server =
        std::find_if(entries.begin(), entries.end(), [](const RegistrationEntry& entry) {
            return entry.name == u"ThreadingModel";
        });
    BOOL onWow64 = FALSE;
    IsWow64Process(GetCurrentProcess(), &onWow64);
    const bool hasOtherView = sizeof(void*) == 8 || onWow64 != FALSE;
    if (server == entries.end() || !hasOtherView) {
        return false;
    }
    OwnedKey key;
    const std::u16string path = kClasses + server->key;
    return RegOpenKeyExW(RootOf(scope), Wide(path), 0, KEY_READ | kOtherView, key.Out()) ==
           ERROR_SUCCESS;
}

void Remove(const std::vector<RegistrationEntry>& entries, RegistrationScope scope, bool shared) {
    std::for_each(entries.rbegin(), entries.rend(), [&](const RegistrationEntry& entry) {
        if (entry.shared == shared) {
            RemoveEntry(entry, scope);
        }
    });
}

} // namespace

HRESULT WriteRegistration(const std::vector<RegistrationEntry>& entries, RegistrationScope scope) {
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const LSTATUS status = WriteEntry(*entry, scope);
        if (status != ERROR_SUCCESS) {
            RemoveRegistration({entries.begin(), entry}, scope);
            return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
        }
    }
    return S_OK;
}

HRESULT RemoveRegistration(const std::vector<RegistrationEntry>& entries, RegistrationScope scope) {
    Remove(entries, scope, false);
    // Asked only now: where the views are not split, our own class would have been found.
    if (!OtherBitnessIsRegistered(entries, scope)) {
        Remove(entries, scope, true);
    }
    return S_OK;
}

std::u16string GuidText(REFGUID guid) {
    std::u16string text(39, u'\0');
    StringFromGUID2(guid, WideBuffer(text), static_cast<int>(text.size()));
    text.resize(38);
    return text;
}

} // namespace talvix
