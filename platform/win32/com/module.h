#pragma once

#include <windows.h>

#include <string>

namespace talvix {

/// What keeps this module loaded: objects and server locks.
void LockModule();
void UnlockModule();
LONG ModuleLocks();

/// The module that this code is part of.
HINSTANCE ModuleHandle();
/// Full path of that module.
std::u16string ModulePath();

} // namespace talvix
