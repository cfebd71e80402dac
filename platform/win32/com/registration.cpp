#include "platform/win32/com/registration.h"

#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <objbase.h>

#include <algorithm>
#include <iterator>
#include <vector>

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

bool IsThere(const std::u16string& path, RegistrationScope scope) {
    OwnedKey key;
    return RegOpenKeyExW(RootOf(scope), Wide(kClasses + path), 0, KEY_READ, key.Out()) ==
           ERROR_SUCCESS;
}

/// "" above the topmost key.
std::u16string KeyAbove(const std::u16string& path) {
    const std::size_t end = path.rfind(u'\\');
    return path.substr(0, end == std::u16string::npos ? 0 : end);
}

/// Removes keys from `path` upwards to `top`, as long as they hold nothing.
void RemoveEmptyKeys(std::u16string path, std::u16string_view top, RegistrationScope scope) {
    for (; !path.empty() && path.size() >= top.size(); path = KeyAbove(path)) {
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
    }
}

/// The keys that hold all classes are the machine's own; a user may have had none of them.
std::u16string TopOfOurs(const std::u16string& path, RegistrationScope scope) {
    const std::size_t first = path.find(u'\\');
    const std::u16string top = path.substr(0, first);
    const bool isShared = top == u"CLSID" || top == u"TypeLib" || top == u"Interface";
    return scope == RegistrationScope::Machine && isShared && first != std::u16string::npos
               ? path.substr(0, path.find(u'\\', first + 1))
               : top;
}

/// What a 32-bit server writes for a user lies below a key of its own.
void RemoveEmptyView(RegistrationScope scope) {
    if (scope == RegistrationScope::User) {
        RemoveEmptyKeys(u"Wow6432Node", {}, scope);
    }
}

/// What stood in an entry's place before it was written.
struct Former {
    std::u16string missing; ///< the topmost key that was not there; "" when all were
    bool hadValue = false;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};

Former FormerOf(const RegistrationEntry& entry, RegistrationScope scope) {
    Former former;
    for (std::u16string path = entry.key; !path.empty() && !IsThere(path, scope);
         path = KeyAbove(path)) {
        former.missing = path;
    }
    OwnedKey key;
    DWORD bytes = 0;
    if (RegOpenKeyExW(RootOf(scope), Wide(kClasses + entry.key), 0, KEY_READ, key.Out()) !=
            ERROR_SUCCESS ||
        RegQueryValueExW(key.Get(), Wide(entry.name), nullptr, nullptr, nullptr, &bytes) !=
            ERROR_SUCCESS) {
        return former;
    }
    former.data.resize(bytes);
    former.hadValue = RegQueryValueExW(key.Get(), Wide(entry.name), nullptr, &former.type,
                                       former.data.data(), &bytes) == ERROR_SUCCESS;
    return former;
}

void TakeBack(const RegistrationEntry& entry, const Former& former, RegistrationScope scope) {
    OwnedKey key;
    if (RegOpenKeyExW(RootOf(scope), Wide(kClasses + entry.key), 0, KEY_SET_VALUE, key.Out()) ==
        ERROR_SUCCESS) {
        if (former.hadValue) {
            RegSetValueExW(key.Get(), Wide(entry.name), 0, former.type, former.data.data(),
                           static_cast<DWORD>(former.data.size()));
        } else {
            RegDeleteValueW(key.Get(), Wide(entry.name));
        }
        key.Reset();
    }
    if (!former.missing.empty()) {
        RemoveEmptyKeys(entry.key, former.missing, scope);
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
    RemoveEmptyKeys(entry.key, TopOfOurs(entry.key, scope), scope);
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
    std::vector<Former> formers;
    std::transform(entries.begin(), entries.end(), std::back_inserter(formers),
                   [&](const RegistrationEntry& entry) { return FormerOf(entry, scope); });
    for (std::size_t at = 0; at < entries.size(); ++at) {
        const LSTATUS status = WriteEntry(entries[at], scope);
        if (status != ERROR_SUCCESS) {
            for (std::size_t written = at + 1; written > 0; --written) {
                TakeBack(entries[written - 1], formers[written - 1], scope);
            }
            RemoveEmptyView(scope);
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
    RemoveEmptyView(scope);
    return S_OK;
}

std::u16string GuidText(REFGUID guid) {
    std::u16string text(39, u'\0');
    StringFromGUID2(guid, WideBuffer(text), static_cast<int>(text.size()));
    text.resize(38);
    return text;
}

} // namespace talvix
