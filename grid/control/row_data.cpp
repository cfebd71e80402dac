#include "grid/control/row_data.h"

#include "grid/control/list_enumerator.h"
#include "platform/win32/com/unknown.h"
#include "platform/win32/global_memory.h"
#include "platform/win32/ole_scope.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <ole2.h>
#include <shlobj.h>

namespace talvix::grid {

namespace {

/// A list of files as the shell has it: a header, each path with its NUL, one NUL more.
OwnedMemory FilesMemory(const std::vector<std::u16string>& files) {
    DROPFILES head{};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    std::u16string list;
    for (const std::u16string& file : files) {
        list.append(file).push_back(u'\0');
    }
    list.push_back(u'\0');
    return MemoryOf({reinterpret_cast<const char*>(&head), sizeof head}, list);
}

OwnedMemory MemoryFor(const RowData& rows, UINT format) {
    if (format == CF_UNICODETEXT && !rows.text.empty()) {
        return MemoryOfText(rows.text);
    }
    return format == CF_HDROP && !rows.files.empty() ? FilesMemory(rows.files) : OwnedMemory();
}

constexpr UINT kFormats[] = {CF_HDROP, CF_UNICODETEXT};

std::vector<FORMATETC> FormatsOf(const RowData& rows) {
    std::vector<FORMATETC> formats;
    for (const UINT format : kFormats) {
        if (format == CF_HDROP ? !rows.files.empty() : !rows.text.empty()) {
            formats.push_back(
                {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL});
        }
    }
    return formats;
}

struct FormatTraits {
    using Element = FORMATETC;
    using Result = FORMATETC;
    static Result HandOut(const Element& element) { return element; }
};
using FormatEnumerator = ListEnumerator<IEnumFORMATETC, FormatTraits>;

class RowDataObject : public Unknown<IDataObject> {
public:
    explicit RowDataObject(RowData rows) : rows_(std::move(rows)) {}

    STDMETHODIMP GetData(FORMATETC* wanted, STGMEDIUM* medium) override {
        if (wanted == nullptr || medium == nullptr) {
            return E_INVALIDARG;
        }
        *medium = STGMEDIUM{};
        const HRESULT known = QueryGetData(wanted);
        if (FAILED(known)) {
            return known;
        }
        medium->hGlobal = MemoryFor(rows_, wanted->cfFormat).Detach();
        medium->tymed = medium->hGlobal == nullptr ? TYMED_NULL : TYMED_HGLOBAL;
        return medium->hGlobal == nullptr ? E_OUTOFMEMORY : S_OK;
    }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
    STDMETHODIMP QueryGetData(FORMATETC* wanted) override {
        if (wanted == nullptr) {
            return E_INVALIDARG;
        }
        for (const FORMATETC& own : FormatsOf(rows_)) {
            if (wanted->cfFormat == own.cfFormat && (wanted->tymed & TYMED_HGLOBAL) != 0 &&
                wanted->dwAspect == DVASPECT_CONTENT) {
                return S_OK;
            }
        }
        return DV_E_FORMATETC;
    }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override {
        if (out == nullptr) {
            return E_INVALIDARG;
        }
        out->ptd = nullptr;
        return DATA_S_SAMEFORMATETC;
    }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        if (formats == nullptr) {
            return E_INVALIDARG;
        }
        *formats = nullptr;
        if (direction != DATADIR_GET) {
            return E_NOTIMPL;
        }
        *formats = new FormatEnumerator(FormatsOf(rows_));
        return S_OK;
    }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

private:
    RowData rows_;
};

class RowDropSource : public Unknown<IDropSource> {
public:
    STDMETHODIMP QueryContinueDrag(BOOL escaped, DWORD keys) override {
        if (escaped != FALSE || (keys & MK_RBUTTON) != 0) {
            return DRAGDROP_S_CANCEL;
        }
        return (keys & MK_LBUTTON) == 0 ? DRAGDROP_S_DROP : S_OK;
    }
    STDMETHODIMP GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

} // namespace

bool CopyToClipboard(HWND owner, const RowData& rows) {
    if (rows.IsEmpty()) {
        return false;
    }
    const ClipboardScope clipboard(owner);
    for (const UINT format : kFormats) {
        clipboard.Put(format, MemoryFor(rows, format));
    }
    return static_cast<bool>(clipboard);
}

ComPtr<IDataObject> MakeDataObject(const RowData& rows) {
    return ComPtr<IDataObject>::Adopt(new RowDataObject(rows));
}

void DragOut(const RowData& rows) {
    if (rows.files.empty()) {
        return;
    }
    const OleScope ole;
    const ComPtr<IDataObject> data = MakeDataObject(rows);
    const auto source = ComPtr<IDropSource>::Adopt(new RowDropSource());
    DWORD effect = DROPEFFECT_NONE;
    DoDragDrop(data.Get(), source.Get(), DROPEFFECT_COPY, &effect);
}

} // namespace talvix::grid
