#include "common/mod_registry.h"

namespace talvix {

Value RegGetString(Registry& registry, std::uint32_t root, std::u16string_view key,
                   std::u16string_view name) {
    const auto value = registry.Read(root, key, name);
    if (!value || value->type != kRegistryText) {
        return {};
    }
    return Value(value->text.substr(0, value->text.find(u'\0')));
}

void RegSaveString(Registry& registry, std::uint32_t root, std::u16string_view key,
                   std::u16string_view name, std::u16string_view text) {
    registry.WriteText(root, key, name, text);
}

} // namespace talvix
