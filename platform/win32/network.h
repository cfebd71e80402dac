#pragma once

#include "platform/network.h"
#include "platform/win32/owned.h"

#include <windows.h>

namespace talvix {

/// The share table is kept as long as its key's last-write time stays, the computer's name for good
/// (it changes with a restart only).
class Win32Network : public Network {
public:
    std::optional<std::u16string> RemoteName(std::u16string_view drive) override;
    std::optional<std::u16string> ComputerName() override;
    ShareTable Shares() override;

private:
    std::optional<std::u16string> computer_;
    OwnedKey key_;
    ShareTable shares_;
    FILETIME written_{};
};

} // namespace talvix
