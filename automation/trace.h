#pragma once

#include <string_view>

namespace talvix {

/// Takes notes of what was skipped and decided, for the people who look after an installation.
class Trace {
public:
    virtual ~Trace() = default;
    virtual void Note(std::u16string_view procedure, std::u16string_view text) = 0;
};

} // namespace talvix
