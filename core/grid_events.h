#pragma once

#include "core/attachment.h"

#include <memory>

namespace talvix {

/// Turns the grid's events into document operations for one `Main`. Events that arrive after Detach
/// are dropped: a grid may still be handing out an event while the `Main` it was meant for ends.
class GridEvents : public EventSink {
public:
    explicit GridEvents(Attachment& attachment) : attachment_(&attachment) {}

    void Detach() { attachment_ = nullptr; }
    /// What is kept alive while an event is handled, as its host may let go of it meanwhile.
    void SetOwner(std::weak_ptr<void> owner) { owner_ = std::move(owner); }
    /// Arguments by reference are written back; a handler that fails leaves them as they were.
    void OnEvent(std::u16string_view name, std::span<Value> values) override;

private:
    Attachment* attachment_;
    std::weak_ptr<void> owner_;
};

} // namespace talvix
