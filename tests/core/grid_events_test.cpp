#include "automation/failure.h"
#include "automation/text.h"
#include "tests/fakes/main_rig.h"
#include "ui/context_menu.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

struct EventRig : MainRig {
    EventRig() {
        Attach();
        for (const auto* name : {u"P:\\Proj\\a.doc", u"P:\\Proj\\b.doc"}) {
            fakes.files.MakeFile(name, 1);
            AddRow(0, name);
        }
        AddRow(2, u"http://example.org");
        AddRow(1, u"P:\\Proj\\mail.msg");
        const Late grid(gridObject);
        grid[u"Selection"].Call(u"Add", 1, 1);
        grid.Set(u"CurrentRow", 1);
        fakes.journal.Clear();
    }
    /// Raises an event as the grid does; the arguments afterwards.
    std::vector<Value> Raise(std::u16string_view name, std::vector<Value> arguments = {}) {
        model->events.Raise(name, arguments);
        return arguments;
    }
    static std::vector<Value> Key(int code, int shift) {
        return {static_cast<std::int16_t>(code), static_cast<std::int16_t>(shift)};
    }
    static std::vector<Value> Mouse(std::int16_t button, std::int32_t x, std::int32_t y) {
        return {button, std::int16_t{0}, x, y};
    }
    /// A right click in a row, or below all rows for 0.
    void RightClick(std::int32_t row) {
        for (std::int32_t y = 0; y < 2000; ++y) {
            const grid::HitResult hit = model->HitTest(60, y);
            if (row == 0 ? y == 1999 : hit.row == row) {
                Raise(u"MouseUp", Mouse(2, 60, y + 2));
                return;
            }
        }
        FAIL() << "no such row";
    }
    std::int32_t Position(std::u16string_view key) const {
        return static_cast<std::int32_t>(model->columns.IndexOf(key));
    }
    std::int32_t IconWidth() const {
        return *Late(gridObject)(u"Columns", u"Icon").Call(u"Width").If<std::int32_t>();
    }
    FakePopupMenu& Menu() { return *fakes.menus.last; }
    bool IsEnabled(std::int32_t command) { return Menu().Find(command)->enabled; }
    std::size_t Opened() const { return fakes.journal.Count(u"open "); }
};

} // namespace

TEST(GridEvents, TheIconColumnIsNeverSorted) {
    EventRig rig;
    EXPECT_EQ(rig.Raise(u"BeforeClickSort", {rig.Position(u"Icon"), false})[1], Value(true));
    EXPECT_EQ(rig.Raise(u"BeforeClickSort", {rig.Position(u"Subject"), false})[1], Value(false));
    EXPECT_EQ(rig.Raise(u"BeforeClickSort", {99, false})[1], Value(false));
    EXPECT_EQ(rig.Raise(u"BeforeClickSort", {u"x", false})[1], Value(false));
    rig.Raise(u"BeforeClickSort");
}

TEST(GridEvents, TheIconColumnNeverGroupsButMayBeTakenOut) {
    EventRig rig;
    const auto change = [&](std::int32_t operation, std::u16string_view key) {
        return rig.Raise(u"BeforeGroupChange",
                         {operation, rig.Position(key), 0, 0, 0, false, false})[6];
    };
    EXPECT_EQ(change(1, u"Icon"), Value(true));
    EXPECT_EQ(change(1, u"Subject"), Value(false));
    EXPECT_EQ(change(2, u"Icon"), Value(false));
    EXPECT_EQ(change(3, u"Icon"), Value(false));
}

TEST(GridEvents, TheIconColumnIsAsWideAsTheGroupsIndent) {
    EventRig rig;
    const Late grid(rig.gridObject);
    const Late columns = grid[u"Columns"];
    // "Icon" is the first column to be seen.
    grid[u"Groups"].Call(u"Add", u"Status");
    grid[u"Groups"].Call(u"Add", u"Creator");
    EXPECT_EQ(rig.IconWidth(), 2 * 18 + 15);
    grid[u"Groups"].Call(u"Clear");
    EXPECT_EQ(rig.IconWidth(), 15);
    grid(u"Columns", u"ID").Set(u"Hidden", false);
    grid[u"Groups"].Call(u"Add", u"Status");
    EXPECT_EQ(rig.IconWidth(), 15);
}

TEST(GridEvents, EnterOpensAndShiftEnterToo) {
    EventRig rig;
    rig.Raise(u"KeyDown", EventRig::Key(13, 0));
    rig.Raise(u"KeyDown", EventRig::Key(13, 1));
    EXPECT_EQ(rig.Opened(), 2U);
    for (const int shift : {2, 4, 3}) {
        rig.Raise(u"KeyDown", EventRig::Key(13, shift));
    }
    rig.Raise(u"KeyDown", EventRig::Key(65, 0));
    EXPECT_EQ(rig.Opened(), 2U);
}

TEST(GridEvents, DeleteAndBackspaceRemoveWithoutModifiersOnly) {
    EventRig rig;
    for (const int key : {46, 8}) {
        rig.Raise(u"KeyDown", EventRig::Key(key, 0));
        rig.Raise(u"KeyDown", EventRig::Key(key, 1));
        rig.Raise(u"KeyDown", EventRig::Key(key, 2));
    }
    EXPECT_EQ(rig.fakes.journal.Count(u"message 52 [Dokument entfernen...]"), 2U);
}

TEST(GridEvents, ADoubleClickOpensWhenTheButtonIsReleased) {
    EventRig rig;
    rig.Raise(u"MouseDown", EventRig::Mouse(1, 5, 5));
    rig.Raise(u"Click");
    rig.Raise(u"DblClick");
    EXPECT_EQ(rig.Opened(), 0U);
    rig.Raise(u"MouseUp", EventRig::Mouse(1, 5, 5));
    EXPECT_EQ(rig.Opened(), 1U);
    rig.Raise(u"MouseUp", EventRig::Mouse(1, 5, 5));
    rig.Raise(u"DblClick");
    rig.Raise(u"MouseDown", EventRig::Mouse(1, 5, 5));
    rig.Raise(u"MouseUp", EventRig::Mouse(1, 5, 5));
    rig.Raise(u"DblClick");
    rig.Raise(u"Click");
    rig.Raise(u"MouseUp", EventRig::Mouse(1, 5, 5));
    rig.Raise(u"DblClick");
    rig.Raise(u"MouseUp", EventRig::Mouse(4, 5, 5));
    EXPECT_EQ(rig.Opened(), 1U);
    EXPECT_TRUE(rig.forms.isDoubleClick);
}

TEST(ContextMenu, HasItsEntriesInTheirOrder) {
    EventRig rig;
    Lines lines;
    for (const FakeMenuEntry& entry : rig.Menu().entries) {
        lines.push_back(std::u16string(static_cast<std::size_t>(entry.depth) * 2, u' ') +
                        DecimalText(entry.command) + u" " + entry.text +
                        (entry.checked ? u" *" : u"") + (entry.isDefault ? u" default" : u""));
    }
    ASSERT_EQ(lines.size(), 23U);
    EXPECT_EQ(lines[0], u"1 Öffnen default");
    EXPECT_EQ(lines[1], u"4 Bearbeiten");
    EXPECT_EQ(lines[2], u"100 -");
    EXPECT_EQ(lines[3], u"2 Löschen");
    EXPECT_EQ(lines[4], u"101 -");
    EXPECT_EQ(lines[5], u"5 Ordnerinhalt einlesen");
    EXPECT_EQ(lines[6], u"102 -");
    EXPECT_EQ(lines[7], u"6 Ansicht");
    EXPECT_EQ(lines[9], u"  8 Symbol *");
    EXPECT_TRUE(lines[8].starts_with(u"  7 "));
    EXPECT_TRUE(lines[20].starts_with(u"  19 "));
    EXPECT_EQ(lines[21], u"102 -");
    EXPECT_EQ(lines[22], u"3 Eigenschaften");
}

TEST(ContextMenu, EnablesWhatFitsTheRow) {
    EventRig rig;
    const struct {
        std::int32_t row;
        bool onRow;
        bool properties;
    } cases[] = {{1, true, true}, {3, true, false}, {4, true, true}, {0, false, false}};
    for (const auto& each : cases) {
        rig.RightClick(each.row);
        EXPECT_EQ(rig.IsEnabled(1), each.onRow) << each.row;
        EXPECT_EQ(rig.IsEnabled(2), each.onRow);
        EXPECT_EQ(rig.IsEnabled(4), each.onRow);
        EXPECT_EQ(rig.IsEnabled(3), each.properties);
        EXPECT_TRUE(rig.IsEnabled(5));
        if (each.row != 0) {
            EXPECT_EQ(Late(rig.gridObject)[u"CurrentRow"].Call(u"Number"), Value(each.row));
        }
    }
    EXPECT_EQ(rig.fakes.journal.Count(u"menu 256 at -1 -1"), 4U);
}

TEST(ContextMenu, CarriesOutTheChosenCommand) {
    EventRig rig;
    const struct {
        std::int32_t command;
        std::u16string_view line;
    } cases[] = {{1, u"open "},
                 {2, u"message 52 [Dokument entfernen...]"},
                 {3, u"properties P:\\Proj\\a.doc"},
                 {4, u"item form Dokument ändern"},
                 {5, u"show Aktulisierung läuft..."}};
    for (const auto& each : cases) {
        rig.fakes.journal.Clear();
        rig.Menu().choice = each.command;
        rig.RightClick(1);
        EXPECT_EQ(rig.fakes.journal.Count(each.line), 1U) << each.command;
    }
    for (const std::int32_t command : {0, 6, 20, 100, -1}) {
        rig.fakes.journal.Clear();
        rig.Menu().choice = command;
        rig.RightClick(1);
        EXPECT_EQ(rig.JournalLines(), Lines({u"menu 256 at -1 -1"}));
    }
}

TEST(ContextMenu, TogglesAColumnAndItsMark) {
    EventRig rig;
    const bool wasHidden = Late(rig.gridObject)(u"Columns", u"Icon").Call(u"Hidden") == Value(true);
    DispatchCommand(rig.main->Attached(), 8);
    EXPECT_EQ(Late(rig.gridObject)(u"Columns", u"Icon").Call(u"Hidden"), Value(!wasHidden));
    EXPECT_EQ(rig.Menu().Find(8)->checked, wasHidden);
    DispatchCommand(rig.main->Attached(), 8);
    EXPECT_EQ(Late(rig.gridObject)(u"Columns", u"Icon").Call(u"Hidden"), Value(wasHidden));
}

TEST(ContextMenu, RefreshesTheMarksOfEntries4To16Only) {
    EventRig rig;
    const Late grid(rig.gridObject);
    for (std::int32_t position = 0; position < 15; ++position) {
        const Late column = grid(u"Columns", position);
        column.Set(u"Hidden", column.Call(u"Hidden") == Value(false));
    }
    std::map<std::int32_t, bool> before;
    for (std::int32_t command = 7; command <= 19; ++command) {
        before[command] = rig.Menu().Find(command)->checked;
    }
    rig.RightClick(0);
    for (std::int32_t command = 7; command <= 19; ++command) {
        EXPECT_EQ(rig.Menu().Find(command)->checked, before[command] == (command > 16)) << command;
    }
}

TEST(ContextMenu, OfTwoColumnsWithOneCaptionTheFirstIsToggled) {
    EventRig rig;
    const Late grid(rig.gridObject);
    const Value caption = grid(u"Columns", u"Subject").Call(u"Caption");
    grid(u"Columns", u"Status").Set(u"Caption", caption);
    rig.main->Init(); // builds the menu anew
    std::vector<std::int32_t> commands;
    for (const FakeMenuEntry& entry : rig.Menu().entries) {
        if (Value(entry.text) == caption) {
            commands.push_back(entry.command);
        }
    }
    ASSERT_EQ(commands.size(), 2U);
    const Value hidden = grid(u"Columns", u"Status").Call(u"Hidden");
    DispatchCommand(rig.main->Attached(), commands[1]);
    EXPECT_EQ(grid(u"Columns", u"Subject").Call(u"Hidden"), Value(true));
    EXPECT_EQ(grid(u"Columns", u"Status").Call(u"Hidden"), hidden);
}

namespace {

/// The named call of the grid fails from now on, every one or the one of that number.
void Fail(MainRig& rig, std::u16string_view call, int number = 0) {
    rig.fakes.journal.onStep = [call, number, count = 0](std::u16string_view what) mutable {
        if (what == call && (++count == number || number == 0)) {
            throw Failure(failure_number::kUnexpected, u"The grid refuses");
        }
    };
}

} // namespace

TEST(ContextMenu, ItsColumnsNumbersRiseByOneWhateverFails) {
    for (int failing = 1; failing <= 13; ++failing) {
        EventRig rig;
        Fail(rig, u"Hidden", failing);
        BuildContextMenu(rig.main->Attached());
        std::int32_t command = menu_command::kFirstColumn;
        for (const FakeMenuEntry& entry : rig.Menu().entries) {
            if (entry.depth == 1) {
                EXPECT_EQ(entry.command, command++) << failing;
            }
        }
        EXPECT_EQ(command, menu_command::kLastColumn + 1);
        EXPECT_FALSE(rig.Menu().Find(menu_command::kFirstColumn + failing - 1)->checked);
    }
}

TEST(ContextMenu, AColumnThatCannotBeToggledKeepsItsMark) {
    EventRig rig;
    ASSERT_TRUE(rig.Menu().Find(8)->checked);
    Fail(rig, u"Hidden", 2); // it can be read, but not put
    DispatchCommand(rig.main->Attached(), 8);
    EXPECT_EQ(Late(rig.gridObject)(u"Columns", u"Icon").Call(u"Hidden"), Value(false));
    EXPECT_TRUE(rig.Menu().Find(8)->checked);
    Fail(rig, u"Hidden");
    DispatchCommand(rig.main->Attached(), 8);
    EXPECT_TRUE(rig.Menu().Find(8)->checked);
}

namespace {

/// A grid whose host has made some columns before, with keys in small letters.
struct SmallLettersRig : MainRig {
    SmallLettersRig() {
        for (const auto* key : {u"objecttype", u"icon", u"subject", u"physicalstore3"}) {
            Late(gridObject)[u"Columns"].Call(u"Add", key);
        }
        Attach();
    }
    Value Raised(std::u16string_view name, std::vector<Value> arguments, std::size_t answer) {
        model->events.Raise(name, arguments);
        return arguments[answer];
    }
    Late Icon() const { return Late(gridObject)(u"Columns", 1); }
};

} // namespace

TEST(GridEvents, AKeyInOtherCaseIsTheSameKey) {
    SmallLettersRig rig;
    ASSERT_EQ(rig.Icon().Call(u"Key"), Value(u"icon"));
    EXPECT_EQ(rig.Raised(u"BeforeClickSort", {1, false}, 1), Value(true));
    EXPECT_EQ(rig.Raised(u"BeforeGroupChange", {1, 1, 0, 0, 0, false, false}, 6), Value(true));
    Late(rig.gridObject)[u"Groups"].Call(u"Add", u"Subject");
    EXPECT_EQ(rig.Icon().Call(u"Width"), Value(18 + 15));
}

TEST(ContextMenu, AKeyInOtherCaseIsTheSameKey) {
    const SmallLettersRig rig;
    Lines texts;
    for (const FakeMenuEntry& entry : rig.fakes.menus.last->entries) {
        if (entry.depth == 1) {
            texts.push_back(entry.text);
        }
    }
    ASSERT_EQ(texts.size(), 13U);
    EXPECT_EQ(texts[0], u"Symbol");
    EXPECT_EQ(texts[1], u"Name/Betreff");
    DispatchCommand(rig.main->Attached(), 7);
    EXPECT_EQ(rig.Icon().Call(u"Hidden"), Value(true));
}

TEST(GridEvents, ANameInOtherCaseIsTheSameEvent) {
    EventRig rig;
    rig.Raise(u"DBLCLICK");
    EXPECT_TRUE(rig.forms.isDoubleClick);
    rig.Raise(u"click");
    EXPECT_FALSE(rig.forms.isDoubleClick);
}

} // namespace talvix
