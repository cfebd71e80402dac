#pragma once

namespace talvix {

/// The user-interface thread's pending events.
class Timers {
public:
    virtual ~Timers() = default;
    /// Lets the events that are waiting run, and returns when none is left.
    virtual void RunPending() = 0;
};

} // namespace talvix
