#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace talvix {

struct SystemVersion {
    std::uint32_t platform = 2; ///< 0 Win32s, 1 the Windows 95 line, 2 the NT line
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
};

class SystemInfo {
public:
    virtual ~SystemInfo() = default;

    /// Nothing when the system does not tell.
    virtual std::optional<SystemVersion> Version() = 0;
    /// Vertical pixels per logical inch of the screen (LOGPIXELSY), 96 at 100 %.
    virtual std::int32_t PixelsPerInch() = 0;
    /// A text of letters and digits that no other call yields, here or on another machine.
    virtual std::u16string UniqueText() = 0;
};

} // namespace talvix
