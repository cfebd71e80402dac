#pragma once

#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>
#include <unknwn.h>

namespace talvix {

/// Makes objects of one class. Aggregation is refused.
class ClassFactory : public Unknown<IClassFactory> {
public:
    /// Makes one object; its first interface pointer.
    using Maker = ComPtr<IUnknown> (*)();
    explicit ClassFactory(Maker maker) : maker_(maker) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override;
    STDMETHODIMP LockServer(BOOL lock) override;

private:
    Maker maker_;
};

} // namespace talvix
