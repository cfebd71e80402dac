#include "automation/event_source.h"

#include <algorithm>
#include <new>

namespace talvix {

EventSource::EventSource() : sinks_(std::make_shared<Sinks>()) {}

Subscription EventSource::Connect(const std::shared_ptr<EventSink>& sink) {
    sinks_->push_back(sink);
    const std::weak_ptr<Sinks> sinks = sinks_;
    return {sink.get(), [sinks, sink](void*) {
                const auto left = sinks.lock();
                if (!left) {
                    return;
                }
                const auto own = std::find(left->begin(), left->end(), sink);
                if (own != left->end()) {
                    left->erase(own);
                }
            }};
}

void EventSource::Raise(std::u16string_view name, std::span<Value> arguments) const noexcept {
    if (freezes_ > 0) {
        return;
    }
    Sinks snapshot;
    try {
        snapshot = *sinks_;
    } catch (const std::bad_alloc&) { // nobody hears it
        return;
    }
    for (const std::shared_ptr<EventSink>& sink : snapshot) {
        try {
            sink->OnEvent(name, arguments);
        } catch (...) { // the listener's trouble, not the control's
        }
    }
}

} // namespace talvix
