#pragma once

#include "automation/value.h"
#include "platform/registry.h"

namespace talvix {

/// The text of a REG_SZ value up to its first NUL; Empty for any other type and for what is not
/// there.
Value RegGetString(Registry& registry, std::uint32_t root, std::u16string_view key,
                   std::u16string_view name);
/// Writes a REG_SZ value without its closing NUL. A failure is not reported.
void RegSaveString(Registry& registry, std::uint32_t root, std::u16string_view key,
                   std::u16string_view name, std::u16string_view text);

} // namespace talvix
