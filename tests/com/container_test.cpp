#include "automation/coercion.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/device_context.h"
#include "platform/win32/locale.h"
#include "platform/win32/owned.h"
#include "platform/win32/system.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"

#include <gtest/gtest.h>

#include <ocidl.h>
#include <olectl.h>

namespace talvix {

namespace {

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
        EXPECT_EQ(attach(dynamic_cast<const DispatchObject&>(grid.Target()).Dispatch(), frame,
                         container.Out()),
                  S_OK);
        window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(Number(grid.Call(u"hWnd"))));
        const Late column = grid[u"Columns"](u"Add", u"Name");
        column.Set(u"Width", 200);
        for (const auto* name : {u"c", u"a", u"b"}) {
            grid[u"Rows"][u"Add"].SetAt(u"Value", u"Name", name);
        }
        subscription = grid.Target().Subscribe(recorder, {});
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

} // namespace

TEST(Container, TheControlGetsAWindowOfItsOwnAndPaints) {
    ContainerRig rig;
    ASSERT_NE(rig.window, nullptr);
    EXPECT_EQ(GetParent(rig.window), rig.frame);
    UpdateWindow(rig.window);
    const ScreenDc dc(rig.window);
    int dark = 0;
    for (int x = 0; x < 60; ++x) {
        for (int y = 0; y < 90; ++y) {
            const COLORREF colour = GetPixel(dc.Get(), x, y);
            dark += GetRValue(colour) < 100 && GetGValue(colour) < 100 ? 1 : 0;
        }
    }
    EXPECT_GT(dark, 20) << "no text was painted";
}

TEST(Container, AClickMakesTheRowCurrentAndRaisesTheEventsInOrder) {
    ContainerRig rig;
    rig.Click(30, rig.MiddleOf(2));
    EXPECT_EQ(rig.Current(), u"a");
    EXPECT_EQ(rig.recorder->names, u"MouseDown MouseUp Click ");
    EXPECT_EQ(rig.recorder->place.first, 30);
    rig.recorder->names.clear();
    rig.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, 30, rig.MiddleOf(2));
    rig.Send(WM_LBUTTONUP, 0, 30, rig.MiddleOf(2));
    EXPECT_EQ(rig.recorder->names, u"DblClick MouseUp ");
}

TEST(Container, ArrowsMoveTheCurrentRow) {
    ContainerRig rig;
    rig.Click(30, rig.MiddleOf(1));
    rig.Send(WM_KEYDOWN, VK_DOWN, 0, 0);
    EXPECT_EQ(rig.Current(), u"a");
    rig.Send(WM_KEYDOWN, VK_END, 0, 0);
    EXPECT_EQ(rig.Current(), u"b");
    rig.Send(WM_KEYDOWN, VK_UP, 0, 0);
    EXPECT_EQ(rig.Current(), u"a");
}

TEST(Container, AClickOnAHeadingSortsUnlessRefused) {
    ContainerRig rig;
    rig.Click(30, 8);
    EXPECT_EQ(rig.grid.Call(u"Rows", 1, u"Name"), Value(u"a"));
    rig.recorder->refuse = true;
    rig.Click(30, 8);
    EXPECT_EQ(rig.grid.Call(u"Rows", 1, u"Name"), Value(u"a"));
    rig.recorder->refuse = false;
    rig.Click(30, 8);
    EXPECT_EQ(rig.grid.Call(u"Rows", 1, u"Name"), Value(u"c"));
}

TEST(Container, DraggingAHeadingIntoTheBoxGroupsAndOutAgainUngroups) {
    ContainerRig rig;
    rig.grid.Set(u"GroupByBox", true);
    rig.Pump();
    const int header = rig.MiddleOf(1) - 20;
    rig.Send(WM_LBUTTONDOWN, MK_LBUTTON, 40, header);
    rig.Send(WM_LBUTTONUP, 0, 300, 10);
    EXPECT_EQ(rig.grid[u"Groups"].Call(u"Count"), Value(1));
    EXPECT_EQ(rig.grid[u"Rows"].Call(u"Count"), Value(6));
    rig.Send(WM_LBUTTONDOWN, MK_LBUTTON, 30, 15);
    rig.Send(WM_LBUTTONUP, 0, 300, 250);
    EXPECT_EQ(rig.grid[u"Groups"].Call(u"Count"), Value(0));
}

TEST(Container, ResizingMovesTheWindowAndDestroyingTakesItAway) {
    ContainerRig rig;
    MoveWindow(rig.frame, 10, 10, 400, 200, TRUE);
    RECT client{};
    GetWindowRect(rig.window, &client);
    EXPECT_EQ(client.right - client.left, 400);
    DestroyWindow(rig.frame);
    EXPECT_EQ(IsWindow(rig.window), FALSE);
    EXPECT_EQ(rig.grid.Call(u"hWnd"), Value(0));
    EXPECT_EQ(rig.grid[u"Rows"].Call(u"Count"), Value(3));
}

TEST(Container, TheControlDrawsWithoutAWindow) {
    const Late grid = CreateByName(u"TalvixGrid.Grid");
    grid[u"Columns"](u"Add", u"Name");
    const auto view =
        ComPtr<IViewObject>::From(dynamic_cast<const DispatchObject&>(grid.Target()).Dispatch());
    ASSERT_TRUE(view);
    const ScreenDc screen;
    const OwnedMemoryDc memory(CreateCompatibleDC(screen.Get()));
    const OwnedBitmap bitmap(CreateCompatibleBitmap(screen.Get(), 200, 100));
    const Chosen chosen(memory.Get(), bitmap.Get());
    const RECTL bounds{0, 0, 200, 100};
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, memory.Get(), &bounds,
                         nullptr, nullptr, 0),
              S_OK);
    EXPECT_EQ(GetPixel(memory.Get(), 100, 90), GetSysColor(COLOR_WINDOW));
}

} // namespace talvix
