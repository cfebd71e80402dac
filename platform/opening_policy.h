#pragma once

#include "platform/registry.h"

#include <string>
#include <string_view>

namespace talvix {

/// What an administrator wants users to be asked about before it is opened. Nothing is asked where
/// nothing is set.
struct OpeningPolicy {
    std::u16string allowedSchemes; ///< "http;https;mailto": all other schemes ask; "" allows all
    std::u16string askedTypes;     ///< ".exe;.bat": files of these types ask
};

/// The switches "AllowedSchemes" and "AskTypes" below Software\Policies\Talvix\DMS, of the machine
/// or, where it has none, of the user. They are never written.
OpeningPolicy ReadOpeningPolicy(Registry& registry);

/// True when the user is to be asked before `what`, a path or an address, is opened. Names are
/// compared without case; dots and blanks at the end of a path do not hide its type.
bool AsksBeforeOpening(const OpeningPolicy& policy, std::u16string_view what);

} // namespace talvix
