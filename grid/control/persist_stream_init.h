#pragma once

#include "grid/control/part.h"
#include "grid/model/grid_objects.h"

#include <ocidl.h>

namespace talvix::grid {

/// Keeps switches, columns and layout in a container's stream, rows never. A stream that is none of
/// ours, or cut short, is refused and leaves the grid as it is.
class PersistStreamInitPart : public Part<IPersistStreamInit> {
public:
    PersistStreamInitPart(IUnknown& identity, SharedGrid model)
        : Part(identity), model_(std::move(model)) {}

    STDMETHODIMP GetClassID(CLSID* id) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearsDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
    STDMETHODIMP InitNew() override;

private:
    SharedGrid model_;
    std::u16string saved_; ///< the state that the container has
};

} // namespace talvix::grid
