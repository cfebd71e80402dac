#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace talvix::workbench {

/// What the component's trace says from the making of this on, while the trace is switched on.
class TraceTail {
public:
    TraceTail();
    /// Its lines since then; none while it is switched off.
    std::vector<std::u16string> Lines() const;

private:
    std::u16string path_;
    std::int64_t start_ = 0;
};

} // namespace talvix::workbench
