#pragma once

#include <windows.h>

#include <string>

namespace talvix {

/// What keeps this module loaded: objects and server locks.
void LockModule();
void UnlockModule();
LONG ModuleLocks();

/// Keeps this module loaded until its process ends. The compiler's runtime takes a slot of
/// thread-local storage and handles for each thread, and gives neither back when its module goes: a
/// host that unloads a server and loads it anew some thousand times would run out of slots and be
/// ended.
void KeepModuleLoaded();

/// The module that this code is part of.
HINSTANCE ModuleHandle();
/// Full path of that module.
std::u16string ModulePath();

} // namespace talvix
