#pragma once

#include "core/attachment.h"

namespace talvix {

/// Receives the grid's events for one `Main`. Events that arrive after Detach are dropped: a grid
/// may still be handing out an event while the `Main` it was meant for ends.
class GridEvents : public EventSink {
public:
    explicit GridEvents(Attachment& attachment) : attachment_(&attachment) {}

    void Detach() { attachment_ = nullptr; }
    void OnEvent(std::u16string_view name, std::span<Value> arguments) override;

private:
    Attachment* attachment_;
};

} // namespace talvix
