#pragma once

#include "platform/clock.h"
#include "platform/system_info.h"
#include "platform/timers.h"

namespace talvix {

class Win32SystemInfo : public SystemInfo {
public:
    std::optional<SystemVersion> Version() override;
    std::int32_t PixelsPerInch() override;
    std::u16string UniqueText() override;
};

class Win32Clock : public Clock {
public:
    Date Now() override;
};

class Win32Timers : public Timers {
public:
    /// A request to end the program stays in the queue for its own message loop.
    void RunPending() override;
};

} // namespace talvix
