#pragma once

#include "automation/late_object.h"

#include <memory>
#include <vector>

namespace talvix {

/// Hands events to all sinks that were connected when the event was raised: a sink may connect,
/// disconnect or end the source while it is being called.
class EventSource {
public:
    EventSource();

    Subscription Connect(const std::shared_ptr<EventSink>& sink);
    /// A sink that fails does not keep the others from hearing the event.
    void Raise(std::u16string_view name, std::span<Value> arguments) const noexcept;
    /// Frozen, the source tells nothing, and what happens meanwhile is not told later. Each freeze
    /// wants its own thaw.
    void Freeze() { ++freezes_; }
    void Thaw() { freezes_ -= freezes_ > 0 ? 1 : 0; }
    bool HasSinks() const { return !sinks_->empty(); }

private:
    using Sinks = std::vector<std::shared_ptr<EventSink>>;
    std::shared_ptr<Sinks> sinks_;
    int freezes_ = 0;
};

} // namespace talvix
