#pragma once

#include "automation/trace.h"
#include "platform/registry.h"

namespace talvix {

inline constexpr const char16_t* kTalvixKey = u"Software\\Talvix";

/// True when the "FileIconsDisabled" setting is exactly 1. The user's value goes before the
/// machine's.
bool FileIconsDisabled(Registry& registry, Trace& trace);

} // namespace talvix
