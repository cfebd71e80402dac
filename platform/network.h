#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace talvix {

/// One folder that this machine shares.
struct Share {
    std::u16string name;
    /// Lines divided by NUL characters, each a key, "=" and a value.
    std::u16string data;
};
/// In the order in which the system lists them.
using ShareTable = std::shared_ptr<const std::vector<Share>>;

/// What this machine is called, has mapped and shares.
class Network {
public:
    virtual ~Network() = default;

    /// The remote name behind a drive ("X:"); nothing for a local drive or one that is not mapped.
    virtual std::optional<std::u16string> RemoteName(std::u16string_view drive) = 0;
    virtual std::optional<std::u16string> ComputerName() = 0;
    /// Null when the table cannot be read. The same object as long as the table is unchanged.
    virtual ShareTable Shares() = 0;
};

} // namespace talvix
