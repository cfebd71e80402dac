#pragma once

#include <windows.h>

#include <string>

namespace talvix {

/// The system's own words for an error number or result code, without a line end.
std::u16string SystemText(DWORD error);

} // namespace talvix
