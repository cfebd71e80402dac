#pragma once

#include "platform/registry.h"

namespace talvix {

class Win32Registry : public Registry {
public:
    std::optional<RegistryValue> Read(std::uint32_t root, std::u16string_view key,
                                      std::u16string_view name) override;
    void WriteText(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                   std::u16string_view text) override;
    void WriteNumber(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                     std::uint32_t number) override;
};

} // namespace talvix
