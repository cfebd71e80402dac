#pragma once

#include "platform/win32/owned.h"

#include <windows.h>

#include <vector>

namespace talvix {

/// Tells whether anything below some registry keys has changed since it was asked last, keys that
/// are not there yet (a new user's own classes) among them. Where a key cannot be watched, such as
/// one that may not be read, everything counts as changed every time.
class KeyWatch {
public:
    struct Place {
        HKEY root;
        const wchar_t* key;
    };
    explicit KeyWatch(std::vector<Place> places);
    /// True at the first call, too. A change is told of within 50 milliseconds.
    bool HasChanged();

private:
    void Arm();

    std::vector<Place> places_;
    std::vector<OwnedKey> keys_;
    OwnedEvent changed_; ///< set by a change below any of the keys
    bool watches_ = false;
    DWORD asked_ = 0;
};

} // namespace talvix
