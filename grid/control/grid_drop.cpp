#include "grid/control/grid_drop.h"

#include "grid/control/grid_input.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/drop_target.h"

#include <array>

namespace talvix::grid {

namespace {

std::shared_ptr<DroppedObject> CopyOf(IDataObject* data) {
    DroppedData dropped = ReadDroppedData(data);
    return std::make_shared<DroppedObject>(std::move(dropped.files), std::move(dropped.text));
}

std::int16_t ButtonsOf(DWORD keys) {
    return static_cast<std::int16_t>(((keys & MK_LBUTTON) != 0 ? 1 : 0) +
                                     ((keys & MK_RBUTTON) != 0 ? 2 : 0) +
                                     ((keys & MK_MBUTTON) != 0 ? 4 : 0));
}

std::int16_t ShiftKeysOf(DWORD keys) {
    return static_cast<std::int16_t>(((keys & MK_SHIFT) != 0 ? 1 : 0) +
                                     ((keys & MK_CONTROL) != 0 ? 2 : 0) +
                                     (GetKeyState(VK_MENU) < 0 ? 4 : 0));
}

/// The first six arguments of both events; State follows in one of them.
std::array<Value, 7> ArgumentsOf(HWND window, const std::shared_ptr<DroppedObject>& data,
                                 DWORD keys, POINTL screen) {
    POINT point{screen.x, screen.y};
    ScreenToClient(window, &point);
    return {data,
            std::int32_t{0},
            ButtonsOf(keys),
            ShiftKeysOf(keys),
            static_cast<float>(point.x),
            static_cast<float>(point.y),
            Value()};
}

DWORD EffectIn(const Value& argument, DWORD allowed) {
    const auto* effect = argument.If<std::int32_t>();
    return effect == nullptr ? DROPEFFECT_NONE : static_cast<DWORD>(*effect) & allowed;
}

} // namespace

DWORD GridDrop::RaiseOver(const Hands& hands, State state, DWORD allowed) {
    auto arguments = ArgumentsOf(window_, data_, hands.keys, hands.point);
    arguments[6] = static_cast<std::int16_t>(state);
    model_->events.Raise(u"OLEDragOver", arguments);
    return EffectIn(arguments[1], allowed);
}

HRESULT GridDrop::Answer(const Hands& hands, State state, DWORD* effect) {
    if (effect == nullptr) {
        return E_POINTER;
    }
    const ComPtr<IDropTarget> alive(this);
    const DWORD allowed = std::exchange(*effect, DROPEFFECT_NONE);
    last_ = hands;
    return Guarded([&] {
        *effect = RaiseOver(hands, state, allowed);
        return S_OK;
    });
}

STDMETHODIMP GridDrop::DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) {
    const HRESULT read = Guarded([&] {
        data_ = CopyOf(data);
        return S_OK;
    });
    return FAILED(read) ? read : Answer({keys, point}, State::Enter, effect);
}

STDMETHODIMP GridDrop::DragOver(DWORD keys, POINTL point, DWORD* effect) {
    return Answer({keys, point}, State::Over, effect);
}

STDMETHODIMP GridDrop::DragLeave() {
    DWORD nothing = DROPEFFECT_NONE;
    const HRESULT result = Answer(last_, State::Leave, &nothing);
    data_.reset();
    return result;
}

STDMETHODIMP GridDrop::Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) {
    if (effect == nullptr) {
        return E_POINTER;
    }
    const ComPtr<IDropTarget> alive(this);
    const DWORD allowed = std::exchange(*effect, DROPEFFECT_NONE);
    return Guarded([&] {
        data_.reset();
        auto arguments = ArgumentsOf(window_, CopyOf(data), keys, point);
        model_->events.Raise(u"OLEDragDrop", std::span(arguments).first(6));
        *effect = EffectIn(arguments[1], allowed);
        return S_OK;
    });
}

} // namespace talvix::grid
