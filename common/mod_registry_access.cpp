#include "common/mod_registry_access.h"

namespace talvix {

std::int32_t RegGetDWord(Registry& registry, std::uint32_t root, std::u16string_view key,
                         std::u16string_view name) {
    const auto value = registry.Read(root, key, name);
    return value && value->type == kRegistryNumber ? static_cast<std::int32_t>(value->number) : 0;
}

bool RegValueExists(Registry& registry, std::uint32_t root, std::u16string_view key,
                    std::u16string_view name) {
    const auto value = registry.Read(root, key, name);
    return value && (value->type == kRegistryNumber || value->type == kRegistryText);
}

void RegSaveDWord(Registry& registry, std::uint32_t root, std::u16string_view key,
                  std::u16string_view name, std::int32_t number) {
    registry.WriteNumber(root, key, name, static_cast<std::uint32_t>(number));
}

} // namespace talvix
