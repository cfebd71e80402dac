#pragma once

#include "platform/registration.h"

#include <windows.h>

namespace talvix {

/// Whose registry the entries go to.
enum class RegistrationScope { Machine, User };

/// Writes all entries; when one cannot be written, everything is as it was before, an earlier
/// registration included.
HRESULT WriteRegistration(const std::vector<RegistrationEntry>& entries, RegistrationScope scope);

/// Takes the entries away, last one first, and every key that holds nothing else but the machine's
/// own. Shared entries stay while the server of the other bitness is registered.
HRESULT RemoveRegistration(const std::vector<RegistrationEntry>& entries, RegistrationScope scope);

/// "{…}" of a GUID.
std::u16string GuidText(REFGUID guid);

} // namespace talvix
