#pragma once

#include "automation/value.h"

namespace talvix {

class Clock {
public:
    virtual ~Clock() = default;
    /// The current local date and time.
    virtual Date Now() = 0;
};

} // namespace talvix
