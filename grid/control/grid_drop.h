#pragma once

#include "grid/model/dropped_object.h"
#include "grid/model/grid_objects.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>

#include <oleidl.h>

namespace talvix::grid {

/// Tells the grid's listeners of what is dragged over it. The grid itself takes nothing: the effect
/// comes to a listener as 0, and one that wants the data sets it (1 copy, 2 move, 4 link).
class GridDrop : public Unknown<IDropTarget> {
public:
    GridDrop(SharedGrid model, HWND window) : model_(std::move(model)), window_(window) {}

    STDMETHODIMP DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override;
    STDMETHODIMP DragOver(DWORD keys, POINTL point, DWORD* effect) override;
    STDMETHODIMP DragLeave() override;
    STDMETHODIMP Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override;

private:
    enum class State : std::int16_t { Enter, Leave, Over };
    struct Hands {
        DWORD keys = 0;
        POINTL point{};
    };
    /// The effect that listeners ask for, of those that the source allows.
    DWORD RaiseOver(const Hands& hands, State state, DWORD allowed);
    HRESULT Answer(const Hands& hands, State state, DWORD* effect);

    SharedGrid model_;
    HWND window_;
    std::shared_ptr<DroppedObject> data_;
    Hands last_;
};

} // namespace talvix::grid
