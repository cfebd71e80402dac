#include "grid/control/grid_control.h"

namespace talvix::grid {

namespace {

/// A model together with the user's language rules that it refers to.
struct LocalisedModel {
    Win32Locale locale;
    GridModel model{locale};
};

SharedGrid MakeModel() {
    const auto localised = std::make_shared<LocalisedModel>();
    return {localised, &localised->model};
}

} // namespace

GridControl::GridControl()
    : model_(MakeModel()),
      object_(std::make_shared<ControlGridObject>(model_, &Self())),
      answers_(object_),
      window_(model_),
      activation_(Self(), window_, inPlaceActiveObject_),
      oleObject_(Self(), activation_),
      oleControl_(Self(), activation_, model_),
      inPlaceObject_(Self(), activation_),
      inPlaceActiveObject_(Self(), activation_),
      viewObject_(Self(), window_, activation_),
      persistStreamInit_(Self(), model_),
      dataObject_(Self(), model_),
      classInfo_(Self()),
      connectionPoints_(Self(), model_) {
    window_.SetOwner(&Self());
}

GridControl::~GridControl() {
    window_.SetOwner(nullptr);
    object_->Detach();
    activation_.Close();
}

void* GridControl::Find(REFIID id) {
    if (void* own = Unknown::Find(id)) {
        return own;
    }
    struct Entry {
        const IID* id;
        void* part;
    };
    const Entry entries[] = {
        {&IID_IOleObject, static_cast<IOleObject*>(&oleObject_)},
        {&IID_IOleControl, static_cast<IOleControl*>(&oleControl_)},
        {&IID_IOleWindow, static_cast<IOleInPlaceObject*>(&inPlaceObject_)},
        {&IID_IOleInPlaceObject, static_cast<IOleInPlaceObject*>(&inPlaceObject_)},
        {&IID_IOleInPlaceActiveObject,
         static_cast<IOleInPlaceActiveObject*>(&inPlaceActiveObject_)},
        {&IID_IViewObject, static_cast<IViewObjectEx*>(&viewObject_)},
        {&IID_IViewObject2, static_cast<IViewObjectEx*>(&viewObject_)},
        {&IID_IViewObjectEx, static_cast<IViewObjectEx*>(&viewObject_)},
        {&IID_IPersist, static_cast<IPersistStreamInit*>(&persistStreamInit_)},
        {&IID_IPersistStreamInit, static_cast<IPersistStreamInit*>(&persistStreamInit_)},
        {&IID_IDataObject, static_cast<IDataObject*>(&dataObject_)},
        {&IID_IProvideClassInfo, static_cast<IProvideClassInfo2*>(&classInfo_)},
        {&IID_IProvideClassInfo2, static_cast<IProvideClassInfo2*>(&classInfo_)},
        {&IID_IConnectionPointContainer,
         static_cast<IConnectionPointContainer*>(&connectionPoints_)},
    };
    for (const Entry& entry : entries) {
        if (id == *entry.id) {
            return entry.part;
        }
    }
    return id == ClassInfoPart::DispatchId() ? static_cast<IDispatch*>(this) : nullptr;
}

STDMETHODIMP GridControl::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) {
        return E_POINTER;
    }
    *count = 1;
    return S_OK;
}

STDMETHODIMP GridControl::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    return answers_.TypeInfo(index, info);
}

STDMETHODIMP GridControl::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return answers_.IdsOfNames(id, names, count, ids);
}

STDMETHODIMP GridControl::Invoke(DISPID member, REFIID id, LCID, WORD flags, DISPPARAMS* parameters,
                                 VARIANT* result, EXCEPINFO* exception, UINT*) {
    const ComPtr<GridControl> alive(this);
    return answers_.Invoke(member, id, flags, parameters, result, exception);
}

ComPtr<IUnknown> MakeGrid() {
    return ComPtr<IUnknown>::Adopt(static_cast<IDispatch*>(new GridControl()));
}

} // namespace talvix::grid
