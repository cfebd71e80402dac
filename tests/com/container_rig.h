#pragma once

#include "automation/coercion.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/locale.h"
#include "platform/win32/system.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"

#include <gtest/gtest.h>

namespace talvix {

class Recorder : public EventSink {
public:
    void OnEvent(std::u16string_view name, std::span<Value> arguments) override {
        names += std::u16string(name) + u" ";
        if (name == u"BeforeClickSort" && refuse) {
            arguments[1] = true;
        }
        if (name == u"MouseDown") {
            place = {std::get<std::int32_t>(arguments[2].Content()),
                     std::get<std::int32_t>(arguments[3].Content())};
        }
    }
    std::u16string names;
    std::pair<std::int32_t, std::int32_t> place;
    bool refuse = false;
};

/// The grid in the system's own control container, in a window that is really there.
struct ContainerRig {
    ContainerRig() {
        const HMODULE atl = LoadLibraryW(L"atl.dll");
        using Init = BOOL(WINAPI*)();
        using Attach = HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**);
        reinterpret_cast<Init>(reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxWinInit")))();
        frame = CreateWindowExW(0, L"AtlAxWin", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 10,
                                10, 640, 300, nullptr, nullptr, nullptr, nullptr);
        const auto attach = reinterpret_cast<Attach>(
            reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxAttachControl")));
        EXPECT_EQ(attach(dynamic_cast<const DispatchObject&>(*grid.AsObject()).Dispatch(), frame,
                         container.Out()),
                  S_OK);
        window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(Number(grid.Call(u"hWnd"))));
        const Late column = grid[u"Columns"](u"Add", u"Name");
        column.Set(u"Width", 200);
        for (const auto* name : {u"c", u"a", u"b"}) {
            grid[u"Rows"][u"Add"].SetAt(u"Value", u"Name", name);
        }
        subscription = grid.AsObject()->Subscribe(recorder, {});
        Pump();
    }
    ~ContainerRig() {
        subscription.reset();
        DestroyWindow(frame);
    }
    int Number(const Value& value) const { return ToLong(value, locale); }
    void Pump() { Win32Timers().RunPending(); }
    void Send(UINT message, WPARAM wParam, int x, int y) {
        SendMessageW(window, message, wParam, MAKELPARAM(x, y));
        Pump();
    }
    void Click(int x, int y) {
        Send(WM_LBUTTONDOWN, MK_LBUTTON, x, y);
        Send(WM_LBUTTONUP, 0, x, y);
    }
    std::u16string Current() const {
        const Late row(grid.Call(u"CurrentRow"));
        return row ? ToText(row.Call(u"Value", u"Name"), locale) : u"";
    }
    /// Middle of a row's line in pixels, found through the control's own hit test.
    int MiddleOf(int row) const {
        for (int y = 0; y < 300; ++y) {
            if (Number(grid(u"HitTest", 20, y * 0.75).Call(u"Row")) == row) {
                return y + 4;
            }
        }
        return -1;
    }
    Win32Locale locale;
    Late grid = CreateByName(u"TalvixGrid.Grid");
    ComPtr<IUnknown> container;
    HWND frame = nullptr;
    HWND window = nullptr;
    std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
    Subscription subscription;
};

} // namespace talvix
