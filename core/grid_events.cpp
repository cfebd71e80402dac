#include "core/grid_events.h"

namespace talvix {

void GridEvents::OnEvent(std::u16string_view name, std::span<Value>) {
    if (attachment_ != nullptr) {
        attachment_->trace.Note(u"DMSGrid", name);
    }
}

} // namespace talvix
