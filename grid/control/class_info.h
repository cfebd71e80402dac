#pragma once

#include "grid/control/part.h"

#include <ocidl.h>

namespace talvix::grid {

/// Tells clients where the type information of the class and its events stands.
class ClassInfoPart : public Part<IProvideClassInfo2> {
public:
    explicit ClassInfoPart(IUnknown& identity) : Part(identity) {}

    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;

    static const IID& DispatchId();
    static const IID& EventsId();
};

} // namespace talvix::grid
