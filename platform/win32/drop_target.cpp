#include "platform/win32/drop_target.h"

#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/global_memory.h"
#include "platform/win32/wide.h"

#include <ole2.h>
#include <shlobj.h>

#include <algorithm>

namespace talvix {

namespace {

/// One form of a data object's content, given back at the end.
class Medium {
public:
    Medium(IDataObject* data, CLIPFORMAT format) {
        FORMATETC wanted{format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
        isThere_ = data != nullptr && SUCCEEDED(data->GetData(&wanted, &medium_)) &&
                   medium_.tymed == TYMED_HGLOBAL;
    }
    Medium(const Medium&) = delete;
    Medium& operator=(const Medium&) = delete;
    ~Medium() {
        if (isThere_) {
            ReleaseStgMedium(&medium_);
        }
    }
    HGLOBAL Get() const { return isThere_ ? medium_.hGlobal : nullptr; }

private:
    STGMEDIUM medium_{};
    bool isThere_ = false;
};

/// The units of the memory as far as the first NUL.
template <typename Unit>
std::basic_string_view<Unit> UpToNul(const LockedMemory& memory) {
    const std::basic_string_view<Unit> all(static_cast<const Unit*>(memory.Bytes()),
                                           memory.Size() / sizeof(Unit));
    return all.substr(0, std::min(all.find(Unit{}), all.size()));
}

std::u16string FromCodePage(std::string_view text) {
    const auto length = static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX));
    std::u16string wide(static_cast<std::size_t>(length), u'\0');
    const int units =
        length == 0 ? 0
                    : MultiByteToWideChar(CP_ACP, 0, text.data(), length, WideBuffer(wide), length);
    wide.resize(static_cast<std::size_t>(units));
    return wide;
}

std::optional<std::u16string> DroppedText(IDataObject* data) {
    const Medium wide(data, CF_UNICODETEXT);
    if (wide.Get() != nullptr) {
        const LockedMemory locked(wide.Get());
        return std::u16string(UpToNul<char16_t>(locked));
    }
    const Medium narrow(data, CF_TEXT);
    if (narrow.Get() == nullptr) {
        return std::nullopt;
    }
    const LockedMemory locked(narrow.Get());
    return FromCodePage(UpToNul<char>(locked));
}

/// Names behind a DROPFILES header, each ended by NUL, the last one by two.
template <typename Unit>
std::vector<std::u16string> NamesIn(std::basic_string_view<Unit> list) {
    std::vector<std::u16string> names;
    while (!list.empty() && list.front() != Unit{}) {
        const auto name = list.substr(0, std::min(list.find(Unit{}), list.size()));
        if constexpr (sizeof(Unit) == 1) {
            names.push_back(FromCodePage(name));
        } else {
            names.emplace_back(name);
        }
        list.remove_prefix(std::min(name.size() + 1, list.size()));
    }
    return names;
}

std::optional<std::vector<std::u16string>> DroppedFiles(IDataObject* data) {
    const Medium medium(data, CF_HDROP);
    const LockedMemory locked(medium.Get());
    if (locked.Bytes() == nullptr || locked.Size() < sizeof(DROPFILES)) {
        return std::nullopt;
    }
    const auto* header = static_cast<const DROPFILES*>(locked.Bytes());
    if (header->pFiles < sizeof(DROPFILES) || header->pFiles > locked.Size()) {
        return std::nullopt;
    }
    const char* start = static_cast<const char*>(locked.Bytes()) + header->pFiles;
    const std::size_t bytes = locked.Size() - header->pFiles;
    return header->fWide != FALSE
               ? NamesIn(std::u16string_view(reinterpret_cast<const char16_t*>(start),
                                             bytes / sizeof(char16_t)))
               : NamesIn(std::string_view(start, bytes));
}

} // namespace

DroppedData ReadDroppedData(IDataObject* data) {
    return {DroppedFiles(data), DroppedText(data)};
}

STDMETHODIMP DropTarget::DragEnter(IDataObject*, DWORD keys, POINTL point, DWORD* effect) {
    return DragOver(keys, point, effect);
}

STDMETHODIMP DropTarget::DragOver(DWORD, POINTL, DWORD* effect) {
    if (effect == nullptr) {
        return E_POINTER;
    }
    // Nothing is ever moved away from its source.
    *effect &= DROPEFFECT_COPY | DROPEFFECT_LINK;
    *effect = (*effect & DROPEFFECT_COPY) != 0 ? DROPEFFECT_COPY : *effect;
    return S_OK;
}

STDMETHODIMP DropTarget::Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) {
    const ComPtr<IDropTarget> alive(this);
    const HRESULT result = DragOver(keys, point, effect);
    return FAILED(result) ? result : Guarded([&] {
        taker_(ReadDroppedData(data));
        return S_OK;
    });
}

DropRegistration::DropRegistration(HWND window, DropTarget::Taker taker)
    : DropRegistration(window, ComPtr<IDropTarget>::Adopt(new DropTarget(std::move(taker))).Get()) {
}

DropRegistration::DropRegistration(HWND window, IDropTarget* target) {
    if (SUCCEEDED(RegisterDragDrop(window, target))) {
        window_ = window;
    }
}

DropRegistration::~DropRegistration() {
    if (window_ != nullptr) {
        RevokeDragDrop(window_);
    }
}

} // namespace talvix
