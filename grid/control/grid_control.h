#pragma once

#include "grid/control/activation.h"
#include "grid/control/class_info.h"
#include "grid/control/connection_points.h"
#include "grid/control/data_object.h"
#include "grid/control/grid_window.h"
#include "grid/control/in_place_active_object.h"
#include "grid/control/in_place_object.h"
#include "grid/control/ole_control.h"
#include "grid/control/ole_object.h"
#include "grid/control/persist_stream_init.h"
#include "grid/control/view_object.h"
#include "grid/model/grid_objects.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/locale.h"

namespace talvix::grid {

/// The grid object that knows the control it belongs to, as long as that lives.
class ControlGridObject : public GridObject {
public:
    ControlGridObject(SharedGrid grid, IUnknown* identity)
        : GridObject(std::move(grid)), identity_(identity) {}
    void* Face() const override { return identity_; }
    void Detach() { identity_ = nullptr; }

private:
    IUnknown* identity_;
};

/// The ActiveX control: identity and interfaces in one place, one interface per file beside it.
class GridControl : public Unknown<IDispatch, ILateObject> {
public:
    GridControl();

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;
    const void* STDMETHODCALLTYPE Module() override { return ModuleMark(); }
    LateObject* STDMETHODCALLTYPE Target() override { return object_.get(); }

protected:
    ~GridControl() override;
    void* Find(REFIID id) override;

private:
    IUnknown& Self() { return *static_cast<IDispatch*>(this); }

    SharedGrid model_;
    std::shared_ptr<ControlGridObject> object_;
    DispatchAnswers answers_;
    GridWindow window_;
    Activation activation_;
    OleObjectPart oleObject_;
    OleControlPart oleControl_;
    InPlaceObjectPart inPlaceObject_;
    InPlaceActiveObjectPart inPlaceActiveObject_;
    ViewObjectPart viewObject_;
    PersistStreamInitPart persistStreamInit_;
    DataObjectPart dataObject_;
    ClassInfoPart classInfo_;
    ConnectionPointsPart connectionPoints_;
};

/// A new grid as a COM object.
ComPtr<IUnknown> MakeGrid();

} // namespace talvix::grid
