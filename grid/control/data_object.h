#pragma once

#include "grid/control/part.h"
#include "grid/control/row_data.h"
#include "grid/model/grid_objects.h"
#include "platform/win32/com/guards.h"

namespace talvix::grid {

/// The control's data, for containers that ask for it: the selected rows as they are at the moment.
class DataObjectPart : public Part<IDataObject> {
public:
    DataObjectPart(IUnknown& identity, SharedGrid model)
        : Part(identity), model_(std::move(model)) {}

    STDMETHODIMP GetData(FORMATETC* wanted, STGMEDIUM* medium) override {
        return Ask([&](IDataObject& data) { return data.GetData(wanted, medium); });
    }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
    STDMETHODIMP QueryGetData(FORMATETC* wanted) override {
        return Ask([&](IDataObject& data) { return data.QueryGetData(wanted); });
    }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) override {
        return Ask([&](IDataObject& data) { return data.GetCanonicalFormatEtc(in, out); });
    }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        return Ask([&](IDataObject& data) { return data.EnumFormatEtc(direction, formats); });
    }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

private:
    template <typename Question>
    HRESULT Ask(Question&& question) {
        return Guarded([&] { return question(*MakeDataObject(SelectedData(*model_)).Get()); });
    }

    SharedGrid model_;
};

} // namespace talvix::grid
