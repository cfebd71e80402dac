#pragma once

#include "platform/objects.h"

namespace talvix {

class Win32Objects : public Objects {
public:
    Object Create(std::u16string_view programId) override;
};

} // namespace talvix
