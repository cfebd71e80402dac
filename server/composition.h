#pragma once

#include "core/forms.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/trace.h"
#include "platform/win32/win32_platform.h"

#include <windows.h>

#include <memory>

namespace talvix {

/// What all `Main` objects of one thread share. It lives from the first of them to the last.
struct Composition {
    Win32Platform platform;
    Win32Trace trace{platform.registry};
    Forms forms{platform.ports, trace};

    static std::shared_ptr<Composition> OfThisThread();
};

/// A new `Main` as a COM object.
ComPtr<IUnknown> MakeMain();

} // namespace talvix
