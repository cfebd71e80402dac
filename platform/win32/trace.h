#pragma once

#include "automation/trace.h"
#include "platform/registry.h"

#include <string>

namespace talvix {

/// Writes to the debugger and to "TalvixDMS.log" in the temporary folder while the DWORD "Trace"
/// under HKEY_CURRENT_USER\Software\Talvix\DMS is not 0. The switch is read once.
class Win32Trace : public Trace {
public:
    explicit Win32Trace(Registry& registry);
    void Note(std::u16string_view procedure, std::u16string_view text) override;

private:
    std::u16string file_; ///< "" while switched off
};

} // namespace talvix
