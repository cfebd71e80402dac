#include "platform/win32/key_watch.h"

#include <algorithm>

namespace talvix {

namespace {

constexpr DWORD kFresh = 50; // milliseconds that an answer holds: asking is a call into the system

} // namespace

KeyWatch::KeyWatch(std::vector<Place> places)
    : places_(std::move(places)), changed_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

void KeyWatch::Arm() {
    ResetEvent(changed_.Get());
    keys_.clear(); // a key's former request ends with it
    for (const Place& place : places_) {
        OwnedKey key;
        RegOpenKeyExW(place.root, place.key, 0, KEY_NOTIFY, key.Out());
        keys_.push_back(std::move(key));
    }
    // A request ends with the thread that made it, too; the event is set then.
    watches_ = std::all_of(keys_.begin(), keys_.end(), [this](const OwnedKey& key) {
        return key && RegNotifyChangeKeyValue(key.Get(), TRUE,
                                              REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET,
                                              changed_.Get(), TRUE) == ERROR_SUCCESS;
    });
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
