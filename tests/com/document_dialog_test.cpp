// The document dialog's real window under what other programs and other components do to it.
#include "platform/win32/item_window.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

constexpr const char16_t* kNewDocument = u"Neues Dokument";
constexpr const char16_t* kChangeDocument = u"Dokument ändern";

HWND ControlOf(HWND dialog, ItemControl control) {
    return GetDlgItem(dialog, Win32ItemWindow::IdOf(control));
}

void SetTextOf(HWND dialog, ItemControl control, const std::u16string& text) {
    SendMessageW(ControlOf(dialog, control), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(text)));
}

/// A host with two actions, numbers 7 and 8.
struct DialogRig : ComponentRig {
    DialogRig() {
        RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Talvix\\FormSettings");
        for (const auto* key : {u"id", u"startdate", u"description"}) {
            actions[u"Columns"].Call(u"Add", key);
        }
        for (const std::int32_t id : {7, 8}) {
            const Late row = actions[u"Rows"][u"Add"];
            row.SetAt(u"Value", u"id", id);
            row.SetAt(u"Value", u"description", u"Begehung");
        }
        const auto support = std::make_shared<Expando>(u"Page");
        support->On(u"Controls", [this](std::span<const Value>) -> Value {
            asked();
            return actions.Get();
        });
        pages[u"Betreuung"] = support;
        Attach();
    }
    ~DialogRig() { RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Talvix\\FormSettings"); }
    DialogRig(const DialogRig&) = delete;
    DialogRig& operator=(const DialogRig&) = delete;
    Value Stored(int row, std::u16string_view key) const {
        return grid(u"Rows", row).Call(u"Value", key);
    }
    Late actions = CreateByName(u"TalvixGrid.Grid");
    std::function<void()> asked = [] {}; ///< when the component asks for the actions
    TemporaryFolder elsewhere;
    DialogAnswers answers;
};

} // namespace

TEST(DocumentDialogWindow, WhatIsSetWithoutANotificationIsTaken) {
    DialogRig rig;
    const std::u16string source = rig.elsewhere.Make(u"Plan.txt", 30);
    rig.answers.Answer(kNewDocument, [&](HWND dialog) {
        SetTextOf(dialog, ItemControl::TextPhysicalStore1, source);
        SetTextOf(dialog, ItemControl::TextLongDescription, u"diktiert");
        SendMessageW(ControlOf(dialog, ItemControl::ActionCombo), CB_SETCURSEL, 1, 0);
        SendMessageW(ControlOf(dialog, ItemControl::chkCopyItem), BM_SETCHECK, BST_UNCHECKED, 0);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
    ASSERT_EQ(rig.Rows(), 1);
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), u"diktiert");
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), u"7");
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), source) << "not copied";
}

TEST(DocumentDialogWindow, WhatIsSetWithoutANotificationIsNotOverwritten) {
    DialogRig rig;
    const std::u16string source = rig.elsewhere.Make(u"Plan.txt", 30);
    rig.answers.Answer(kNewDocument, [&](HWND dialog) {
        SetTextOf(dialog, ItemControl::TextLongDescription, u"diktiert");
        SendMessageW(ControlOf(dialog, ItemControl::chkCopyItem), BM_SETCHECK, BST_UNCHECKED, 0);
        SetTextOf(dialog, ItemControl::TextPhysicalStore1, source);
        SendMessageW(ControlOf(dialog, ItemControl::chkCopyItem), BM_CLICK, 0, 0);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
    ASSERT_EQ(rig.Rows(), 1);
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), u"diktiert");
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), rig.folder.Path() + u"\\Plan.txt") << "copied";
}

TEST(DocumentDialogWindow, ATextThatTheBoxCannotShowWholeIsKeptUnlessItIsEdited) {
    DialogRig rig;
    const Value whole(std::u16string(u"vor\0nach", 8));
    rig.main.Call(u"AddFile", rig.folder.Make(u"a.txt", 1), u"a", u"", u"");
    rig.grid(u"Rows", 1).SetAt(u"Value", u"LongDescription", whole);
    rig.grid(u"Rows", 1).SetAt(u"Value", u"Status", whole);
    rig.grid[u"Selection"].Call(u"Clear");
    rig.grid.Set(u"CurrentRow", 1);
    ASSERT_EQ(rig.Stored(1, u"Status"), whole);
    rig.answers.Answer(kChangeDocument, [&](HWND dialog) {
        EXPECT_EQ(DialogAnswers::TextOfWindow(ControlOf(dialog, ItemControl::TextStatus)), u"vor");
        SetTextOf(dialog, ItemControl::TextStatus, u"neu");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnChangeDocument_Click");
    EXPECT_EQ(rig.Stored(1, u"LongDescription"), whole);
    EXPECT_EQ(rig.Stored(1, u"Status"), Value(u"neu"));
}

TEST(DocumentDialogWindow, AnotherComponentMayEndWhileTheHostIsAskedForItsActions) {
    DialogRig rig;
    int ended = 0;
    rig.asked = [&] {
        { const Late second = CreateByName(u"TalvixDMS.Main"); }
        ++ended;
    };
    rig.main.Call(u"FillActionCombo", u"8");
    rig.answers.Answer(kNewDocument, [&](HWND dialog) {
        HWND combo = ControlOf(dialog, ItemControl::ActionCombo);
        EXPECT_EQ(SendMessageW(combo, CB_GETCOUNT, 0, 0), 3);
        SendMessageW(ControlOf(dialog, ItemControl::optLink), BM_CLICK, 0, 0);
        SetTextOf(dialog, ItemControl::TextPhysicalStore1, u"http://example.org");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"NewDMSItem");
    EXPECT_EQ(ended, 2);
    ASSERT_EQ(rig.Rows(), 1);
    EXPECT_EQ(rig.Cell(1, u"Subject"), u"http://example.org");
}

TEST(DocumentDialogWindow, HasNoPlaceInTheTaskBarThoughTheThreadHasNoWindow) {
    DialogRig rig;
    bool isSeen = false;
    rig.answers.Answer(kNewDocument, [&](HWND dialog) {
        isSeen = true;
        HWND owner = GetWindow(dialog, GW_OWNER);
        EXPECT_NE(owner, nullptr);
        EXPECT_FALSE(IsWindowVisible(owner));
        EXPECT_EQ(GetWindowLongW(dialog, GWL_EXSTYLE) & WS_EX_APPWINDOW, 0);
        RECT place{};
        RECT area{};
        GetWindowRect(dialog, &place);
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
        EXPECT_NEAR((place.left + place.right) / 2, (area.left + area.right) / 2, 2);
        EXPECT_NEAR((place.top + place.bottom) / 2, (area.top + area.bottom) / 2, 2);
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
    EXPECT_TRUE(isSeen);
}

TEST(DocumentDialogWindow, AsksForMsSansSerif) {
    DialogRig rig;
    rig.answers.Answer(kNewDocument, [&](HWND dialog) {
        for (HWND window : {dialog, ControlOf(dialog, ItemControl::TextStatus)}) {
            LOGFONTW font{};
            GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font,
                       &font);
            EXPECT_EQ(TextOf(font.lfFaceName), u"MS Sans Serif");
        }
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
}

} // namespace talvix
