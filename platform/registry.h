#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace talvix {

inline constexpr std::uint32_t kCurrentUser = 0x80000001U;
inline constexpr std::uint32_t kLocalMachine = 0x80000002U;

inline constexpr std::uint32_t kRegistryText = 1;   ///< REG_SZ
inline constexpr std::uint32_t kRegistryNumber = 4; ///< REG_DWORD

struct RegistryValue {
    std::uint32_t type = 0;
    std::u16string text; ///< the stored units of a text value, its closing NUL included if stored
    std::uint32_t number = 0; ///< of a number value
};

/// Single values of the registry, read and written in place.
class Registry {
public:
    virtual ~Registry() = default;

    /// Nothing for a missing key or value. Values of other types come with their type alone.
    virtual std::optional<RegistryValue> Read(std::uint32_t root, std::u16string_view key,
                                              std::u16string_view name) = 0;
    /// Writes a text without its closing NUL, creating the key path where it is absent.
    virtual void WriteText(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                           std::u16string_view text) = 0;
    virtual void WriteNumber(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                             std::uint32_t number) = 0;
};

} // namespace talvix
