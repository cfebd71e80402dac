#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace talvix {

/// A dispatch interface of a server's type library.
struct InterfaceIdentity {
    std::u16string id; ///< "{…}"
    std::u16string name;
};

/// What a COM server tells the registry about itself.
struct ServerIdentity {
    std::u16string classId;   ///< "{…}"
    std::u16string libraryId; ///< "{…}"
    std::u16string programId; ///< version-independent, such as "TalvixDMS.Main"
    std::u16string description;
    bool isControl = false;
    std::uint32_t miscStatus = 0; ///< of a control
    bool is64Bit = false;
    std::vector<InterfaceIdentity> interfaces;
};

/// A value of the registry below the classes root. `shared` entries serve the 32-bit and the 64-bit
/// server alike.
struct RegistrationEntry {
    std::u16string key;
    std::u16string name; ///< "" for the key's default value
    std::u16string text;
    bool shared = false;
};

/// All entries of a server whose module lies at `module`, parents before children.
std::vector<RegistrationEntry> RegistrationEntries(const ServerIdentity& identity,
                                                   std::u16string_view module);

} // namespace talvix
