#pragma once

#include "automation/value.h"

#include <cstdint>

namespace talvix {

inline constexpr std::int32_t kMissingFilePicture = 1;
inline constexpr std::int32_t kLinkPicture = 2;

/// The component's own small pictures, counted from 1.
class Pictures {
public:
    virtual ~Pictures() = default;
    /// A picture object that a grid cell can show; Failure for other numbers.
    virtual Value Picture(std::int32_t number) = 0;
};

} // namespace talvix
