#pragma once

#include "platform/registry.h"

namespace talvix {

/// The number of a REG_DWORD value; 0 for any other type and for what is not there.
std::int32_t RegGetDWord(Registry& registry, std::uint32_t root, std::u16string_view key,
                         std::u16string_view name);
/// True for a REG_DWORD or REG_SZ value of any length.
bool RegValueExists(Registry& registry, std::uint32_t root, std::u16string_view key,
                    std::u16string_view name);
/// Writes a REG_DWORD value. A failure is not reported.
void RegSaveDWord(Registry& registry, std::uint32_t root, std::u16string_view key,
                  std::u16string_view name, std::int32_t number);

} // namespace talvix
