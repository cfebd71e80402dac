#include "platform/win32/com/dispatch_interfaces.h"

#include <algorithm>

namespace talvix {

namespace {

std::span<const DispatchInterface> known; // the same whoever sets it

} // namespace

void SetDispatchInterfaces(std::span<const DispatchInterface> interfaces) {
    known = interfaces;
}

std::u16string_view KindOfInterface(REFIID id) {
    const auto found = std::find_if(known.begin(), known.end(), [&](const DispatchInterface& each) {
        return IsEqualGUID(each.id, id);
    });
    return found == known.end() ? std::u16string_view()
                                : std::u16string_view(found->name).substr(1);
}

} // namespace talvix
