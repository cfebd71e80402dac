#pragma once

#include "platform/item_window.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>

#include <functional>
#include <oleidl.h>

namespace talvix {

/// File list and text of a data object, each up to its real end however long it is said to be.
DroppedData ReadDroppedData(IDataObject* data);

/// Takes every drop on a window and hands its data on; what may be dropped is not decided while it
/// is dragged.
class DropTarget : public Unknown<IDropTarget> {
public:
    using Taker = std::function<void(const DroppedData&)>;
    explicit DropTarget(Taker taker) : taker_(std::move(taker)) {}

    STDMETHODIMP DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override;
    STDMETHODIMP DragOver(DWORD keys, POINTL point, DWORD* effect) override;
    STDMETHODIMP DragLeave() override { return S_OK; }
    STDMETHODIMP Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override;

private:
    Taker taker_;
};

/// A window's registration as a target, for the length of its life.
class DropRegistration {
public:
    DropRegistration() = default;
    DropRegistration(HWND window, DropTarget::Taker taker);
    /// A thread without OLE, or a window that is a target already, gets none.
    DropRegistration(HWND window, IDropTarget* target);
    DropRegistration(const DropRegistration&) = delete;
    DropRegistration& operator=(const DropRegistration&) = delete;
    ~DropRegistration();

private:
    HWND window_ = nullptr;
};

} // namespace talvix
