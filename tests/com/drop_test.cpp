// Rows that leave the grid, and what comes to it: with a mouse that really moves.
#include "automation/late.h"
#include "platform/win32/ole_scope.h"
#include "tests/com/container_rig.h"
#include "tests/com/thread.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <atomic>

namespace talvix {

namespace {

/// Listens to drags as a host would that takes copies.
class Taker : public EventSink {
public:
    void OnEvent(std::u16string_view name, std::span<Value> arguments) override {
        if (name == u"OLEDragOver") {
            states.push_back(std::get<std::int16_t>(arguments[6].Content()));
            proposed = arguments[1];
        } else if (name == u"OLEDragDrop") {
            data = Late(arguments[0]);
            place = {std::get<float>(arguments[4].Content()),
                     std::get<float>(arguments[5].Content())};
        } else {
            return;
        }
        if (wants) {
            arguments[1] = std::int32_t{DROPEFFECT_COPY | DROPEFFECT_MOVE};
        }
    }
    bool wants = true;
    std::vector<std::int16_t> states;
    Value proposed;
    Late data;
    std::pair<float, float> place;
};

void Turn(DWORD flags, POINT screen) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    input.mi.dx = MulDiv(screen.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1;
    input.mi.dy = MulDiv(screen.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1;
    SendInput(1, &input, sizeof input);
    Sleep(60);
}

/// Presses the left button on the first point, drags to the second and lets go there.
void Drag(const ContainerRig& rig, POINT from, POINT to) {
    ClientToScreen(rig.window, &from);
    ClientToScreen(rig.window, &to);
    std::atomic<bool> isOver = false;
    const Thread hand([=, &isOver] {
        Turn(0, from);
        Turn(MOUSEEVENTF_LEFTDOWN, from);
        for (int step = 1; step <= 4; ++step) {
            Turn(0, {from.x + (to.x - from.x) * step / 4, from.y + (to.y - from.y) * step / 4});
        }
        Turn(MOUSEEVENTF_LEFTUP, to);
        for (int step = 0; !isOver; ++step) { // a drag that begins late is to end, too
            Turn(0, {to.x + step % 2, to.y});
        }
    });
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < 1500) {
        Win32Timers().RunPending();
        Sleep(5);
    }
    isOver = true;
}

struct DragRig {
    explicit DragRig(bool wants) {
        taker->wants = wants;
        subscription = rig.grid.AsObject()->Subscribe(taker, {});
        rig.grid[u"Columns"](u"Add", u"Pfad").Set(u"Width", 200);
        rig.grid.Set(u"FileColumn", u"Pfad");
        const int rows = 3;
        for (int row = 1; row <= rows; ++row) {
            rig.grid(u"Rows", row).SetAt(u"Value", u"Pfad", u"C:\\windows\\win.ini");
        }
        SetForegroundWindow(rig.frame);
        rig.Pump();
    }
    OleScope ole;
    ContainerRig rig;
    std::shared_ptr<Taker> taker = std::make_shared<Taker>();
    Subscription subscription;
};

} // namespace

TEST(Drop, RowsAreDraggedOutAndAListenerTakesThem) {
    DragRig drag(true);
    Drag(drag.rig, {30, drag.rig.MiddleOf(2)}, {120, drag.rig.MiddleOf(3) + 60});
    ASSERT_TRUE(drag.taker->data) << "nothing was dropped";
    const Win32Locale& locale = drag.rig.locale;
    EXPECT_EQ(ToText(drag.taker->data.Call(u"Text"), locale),
              u"Name\tPfad\r\na\tC:\\windows\\win.ini\r\n");
    EXPECT_EQ(drag.taker->data.Call(u"GetFormat", 15), Value(true));
    EXPECT_EQ(ToText(std::get<List>(drag.taker->data.Call(u"Files").Content())->at(0), locale),
              u"C:\\windows\\win.ini");
    EXPECT_NEAR(drag.taker->place.first, 120, 3);
    EXPECT_EQ(drag.taker->states.front(), 0) << "entered";
    EXPECT_EQ(drag.taker->states.back(), 2) << "over";
    EXPECT_EQ(drag.taker->proposed, Value(std::int32_t{0})) << "the grid itself takes nothing";
    EXPECT_EQ(drag.rig.Number(drag.rig.grid[u"Rows"].Call(u"Count")), 3);
}

TEST(Drop, WithoutATakerNothingIsDropped) {
    DragRig drag(false);
    Drag(drag.rig, {30, drag.rig.MiddleOf(2)}, {120, drag.rig.MiddleOf(3) + 60});
    EXPECT_FALSE(drag.taker->data);
    ASSERT_FALSE(drag.taker->states.empty());
    EXPECT_EQ(drag.taker->states.back(), 1) << "left";
}

} // namespace talvix
