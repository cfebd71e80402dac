#pragma once

#include "automation/value.h"

#include <string_view>

namespace talvix {

/// Objects of classes that are registered on this machine.
class Objects {
public:
    virtual ~Objects() = default;
    /// A new object by its program identifier. Failure when there is no such class or it cannot be
    /// created.
    virtual Object Create(std::u16string_view programId) = 0;
};

} // namespace talvix
