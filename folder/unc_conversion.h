#pragma once

#include "automation/culture.h"
#include "automation/trace.h"
#include "platform/network.h"

#include <string>
#include <string_view>

namespace talvix {

/// The network form of a path on a mapped drive or in a folder that this machine shares; every
/// other path as it is.
std::u16string ConvertToUNC(Network& network, const Culture& culture, Trace& trace,
                            std::u16string_view path);

/// The folder that a share exposes, "" when its data does not tell.
std::u16string GetSharePath(std::u16string_view shareData);

} // namespace talvix
