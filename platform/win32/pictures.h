#pragma once

#include "platform/pictures.h"

namespace talvix {

/// The pictures are icon resources of this module, numbered 1 and 2.
class Win32Pictures : public Pictures {
public:
    Value Picture(std::int32_t number) override;

private:
    Value pictures_[2];
};

} // namespace talvix
