#include "workbench/program/control_host.h"

#include "automation/failure.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/wide.h"

#include <string>

namespace talvix::workbench {

namespace {

/// From the system's own folder, never by its bare name.
HMODULE ContainerModule() {
    static const HMODULE module = [] {
        std::u16string path(MAX_PATH + 1, u'\0');
        path.resize(GetSystemDirectoryW(WideBuffer(path), static_cast<UINT>(path.size())));
        path += u"\\atl.dll";
        return LoadLibraryW(Wide(path));
    }();
    if (module == nullptr) {
        throw Failure(failure_number::kUnexpected,
                      u"Der Steuerelement-Container des Systems (atl.dll) fehlt.");
    }
    return module;
}

template <typename Function>
Function Export(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(ContainerModule(), name)));
}

} // namespace

HWND CreateControlHost(HWND parent) {
    Export<BOOL(WINAPI*)()>("AtlAxWinInit")();
    const HWND host = CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin", L"",
                                      WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_TABSTOP, 0, 0,
                                      10, 10, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (host == nullptr) {
        throw Failure(failure_number::kUnexpected,
                      u"Das Fenster für das Gitter kann nicht erzeugt werden.");
    }
    return host;
}

void AttachControl(IUnknown* control, HWND host) {
    using Attach = HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**);
    ComPtr<IUnknown> container; // some containers attach nothing without a place for it
    const HRESULT result = Export<Attach>("AtlAxAttachControl")(control, host, container.Out());
    if (FAILED(result)) {
        throw Failure(result, u"Das Gitter kann nicht angezeigt werden.");
    }
}

} // namespace talvix::workbench
