#include "platform/win32/key_watch.h"

#include <algorithm>
#include <string>
#include <utility>

namespace talvix {

namespace {

constexpr DWORD kFresh = 50; // milliseconds that an answer holds: asking is a call into the system

bool IsThere(HKEY root, const std::wstring& path) {
    OwnedKey key;
    return RegOpenKeyExW(root, path.c_str(), 0, KEY_NOTIFY, key.Out()) != ERROR_FILE_NOT_FOUND;
}

/// The key, or the nearest above it that is there; "" for the root.
std::wstring NearestKey(HKEY root, std::wstring path) {
    while (!path.empty() && !IsThere(root, path)) {
        const std::size_t end = path.find_last_of(L'\\');
        path.resize(end == std::wstring::npos ? 0 : end);
    }
    return path;
}

/// Asks for an event when anything below a key changes, or, while the key is not there, when keys
/// come below the nearest one that is. Empty where that cannot be watched.
OwnedKey WatchKey(HKEY root, const std::wstring& path, HANDLE changed) {
    const std::wstring nearest = NearestKey(root, path);
    const bool isThere = nearest == path;
    const DWORD what = REG_NOTIFY_CHANGE_NAME | (isThere ? REG_NOTIFY_CHANGE_LAST_SET : 0UL);
    OwnedKey key;
    RegOpenKeyExW(root, nearest.c_str(), 0, KEY_NOTIFY, key.Out());
    const bool isWatched = key && RegNotifyChangeKeyValue(key.Get(), isThere ? TRUE : FALSE, what,
                                                          changed, TRUE) == ERROR_SUCCESS;
    const bool hasCome = NearestKey(root, path) != nearest; // in between: nobody would tell
    return isWatched && !hasCome ? std::move(key) : OwnedKey();
}

} // namespace

KeyWatch::KeyWatch(std::vector<Place> places)
    : places_(std::move(places)), changed_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

void KeyWatch::Arm() {
    keys_.clear(); // a key's former request ends with it, which sets the event
    ResetEvent(changed_.Get());
    // A request ends with the thread that made it, too; the event is set then.
    for (const Place& place : places_) {
        keys_.push_back(WatchKey(place.root, place.key, changed_.Get()));
    }
    watches_ = std::all_of(keys_.begin(), keys_.end(),
                           [](const OwnedKey& key) { return static_cast<bool>(key); });
}

bool KeyWatch::HasChanged() {
    const DWORD now = GetTickCount();
    if (watches_ && now - asked_ < kFresh) {
        return false;
    }
    asked_ = now;
    if (watches_ && WaitForSingleObject(changed_.Get(), 0) != WAIT_OBJECT_0) {
        return false;
    }
    Arm();
    return true;
}

} // namespace talvix
