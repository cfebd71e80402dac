#include "grid/control/activation.h"

#include "grid/control/grid_window.h"
#include "platform/win32/com/variant.h"

#include <olectl.h>

namespace talvix::grid {

namespace {

constexpr int kHimetricPerInch = 2540;

} // namespace

LONG HimetricFromPixels(LONG pixels, int dpi) {
    return MulDiv(pixels, kHimetricPerInch, dpi);
}

LONG PixelsFromHimetric(LONG himetric, int dpi) {
    return MulDiv(himetric, dpi, kHimetricPerInch);
}

Activation::Activation(IUnknown& control, GridWindow& window, IOleInPlaceActiveObject& activeObject)
    : control_(control), window_(window), activeObject_(activeObject) {}

HRESULT Activation::SetClientSite(IOleClientSite* site) {
    if (site == nullptr) {
        Deactivate();
    }
    site_ = ComPtr<IOleClientSite>(site);
    ReadAmbient();
    return S_OK;
}

bool Activation::AmbientFlag(DISPID id, bool otherwise) const {
    const auto container = ComPtr<IDispatch>::From(site_.Get());
    DISPPARAMS none{};
    Variant answer;
    const bool isTold = container && SUCCEEDED(container->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT,
                                                                 DISPATCH_PROPERTYGET, &none,
                                                                 answer.Get(), nullptr, nullptr));
    return isTold && answer.Get()->vt == VT_BOOL ? answer.Get()->boolVal != VARIANT_FALSE
                                                 : otherwise;
}

void Activation::ReadAmbient() {
    window_.SetInert(!AmbientFlag(DISPID_AMBIENT_USERMODE, true) ||
                     AmbientFlag(DISPID_AMBIENT_UIDEAD, false));
}

HRESULT Activation::Activate(bool withFocus) {
    if (!site_) {
        return E_UNEXPECTED;
    }
    const ComPtr<IUnknown> alive(&control_);
    if (!isActive_) {
        const HRESULT result = Show();
        if (FAILED(result)) {
            return result;
        }
    }
    return withFocus ? TakeFocus() : S_OK;
}

HRESULT Activation::Show() {
    inPlaceSite_ = ComPtr<IOleInPlaceSite>::From(site_.Get());
    if (!inPlaceSite_) {
        return E_NOINTERFACE;
    }
    if (inPlaceSite_->CanInPlaceActivate() != S_OK) {
        return E_FAIL;
    }
    inPlaceSite_->OnInPlaceActivate();
    const HRESULT result = EnterWindow(inPlaceSite_.Get());
    if (FAILED(result)) {
        inPlaceSite_->OnInPlaceDeactivate();
        return result;
    }
    isActive_ = true;
    site_->ShowObject();
    return S_OK;
}

HRESULT Activation::EnterWindow(IOleInPlaceSite* site) {
    HWND parent = nullptr;
    RECT place{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    HRESULT result = site->GetWindow(&parent);
    if (FAILED(result)) {
        return result;
    }
    result = site->GetWindowContext(frame_.Out(), document_.Out(), &place, &clip, &info);
    if (FAILED(result)) {
        return result;
    }
    return window_.Create(parent, place, [this] { Activate(true); }) ? S_OK : E_FAIL;
}

HRESULT Activation::TakeFocus() {
    if (isUiActive_) {
        window_.Focus();
        return S_OK;
    }
    isUiActive_ = true;
    inPlaceSite_->OnUIActivate();
    window_.Focus();
    if (frame_) {
        frame_->SetActiveObject(&activeObject_, nullptr);
    }
    if (document_) {
        document_->SetActiveObject(&activeObject_, nullptr);
    }
    return S_OK;
}

HRESULT Activation::DeactivateUi() {
    if (!isUiActive_) {
        return S_OK;
    }
    isUiActive_ = false;
    if (document_) {
        document_->SetActiveObject(nullptr, nullptr);
    }
    if (frame_) {
        frame_->SetActiveObject(nullptr, nullptr);
    }
    inPlaceSite_->OnUIDeactivate(FALSE);
    return S_OK;
}

HRESULT Activation::Deactivate() {
    if (!isActive_) {
        return S_OK;
    }
    const ComPtr<IUnknown> alive(&control_);
    DeactivateUi();
    isActive_ = false;
    window_.Destroy();
    const ComPtr<IOleInPlaceSite> site = std::move(inPlaceSite_);
    frame_ = nullptr;
    document_ = nullptr;
    site->OnInPlaceDeactivate();
    return S_OK;
}

void Activation::Close() {
    Deactivate();
    window_.Destroy();
    site_ = nullptr;
    viewAdvise = nullptr;
    adviseHolder = nullptr;
}

HRESULT Activation::SetRects(const RECT& place, const RECT&) {
    window_.Move(place);
    return S_OK;
}

} // namespace talvix::grid
