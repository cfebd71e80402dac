#include "platform/win32/device_context.h"
#include "platform/win32/owned.h"
#include "tests/com/container_rig.h"

#include <gtest/gtest.h>

#include <ocidl.h>
#include <olectl.h>

namespace talvix {

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

TEST(Container, ADoubleClickBesideRowsIsTwoClicks) {
    ContainerRig rig;
    rig.grid.Set(u"GroupByBox", true);
    rig.Pump();
    const int header = rig.MiddleOf(1) - 14;
    for (const auto& [x, y] : {std::pair{60, header}, {400, 12}, {30, 260}, {400, header + 20}}) {
        rig.Click(x, y);
        rig.recorder->names.clear();
        rig.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, x, y);
        rig.Send(WM_LBUTTONUP, 0, x, y);
        const bool sorts = y == header;
        EXPECT_EQ(rig.recorder->names,
                  sorts ? u"MouseDown BeforeClickSort MouseUp Click " : u"MouseDown MouseUp Click ")
            << x << " " << y;
    }
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"SortOrder"), Value(1)) << "sorted twice";
}

TEST(Container, ADoubleClickOnAGroupHeadingIsOneOnItsRow) {
    ContainerRig rig;
    rig.grid[u"Groups"](u"Add", u"Name");
    rig.Pump();
    rig.Click(100, rig.MiddleOf(1));
    rig.recorder->names.clear();
    rig.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, 100, rig.MiddleOf(1));
    rig.Send(WM_LBUTTONUP, 0, 100, rig.MiddleOf(1));
    EXPECT_EQ(rig.recorder->names, u"DblClick MouseUp ");
}

TEST(Container, TheSecondPressOnAnotherRowIsNoDoubleClick) {
    ContainerRig rig;
    rig.Click(30, rig.MiddleOf(1));
    rig.recorder->names.clear();
    rig.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, 30, rig.MiddleOf(2));
    rig.Send(WM_LBUTTONUP, 0, 30, rig.MiddleOf(2));
    EXPECT_EQ(rig.recorder->names, u"MouseDown MouseUp Click ");
    EXPECT_EQ(rig.Current(), u"a");
}

TEST(Container, ASecondQuickRightClickIsPressedAndReleased) {
    ContainerRig rig;
    rig.Send(WM_RBUTTONDBLCLK, MK_RBUTTON, 30, rig.MiddleOf(2));
    rig.Send(WM_RBUTTONUP, 0, 30, rig.MiddleOf(2));
    EXPECT_EQ(rig.recorder->names, u"MouseDown MouseUp ");
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
        ComPtr<IViewObject>::From(dynamic_cast<const DispatchObject&>(*grid.AsObject()).Dispatch());
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
