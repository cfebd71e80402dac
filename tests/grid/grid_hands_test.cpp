#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "grid/model/dropped_object.h"
#include "grid/model/events.h"
#include "grid/model/gestures.h"
#include "grid/model/grid_objects.h"
#include "grid/model/rows_as_text.h"
#include "grid/model/saved_layout.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/fake_culture.h"
#include "tests/fakes/fake_view.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <functional>

namespace talvix::grid {

namespace {

struct Refusing : EventSink {
    void OnEvent(std::u16string_view name, std::span<Value> arguments) override {
        names.push_back(std::u16string(name));
        if (refuses && name == u"BeforeGroupChange") {
            arguments[6] = true;
        }
        if (refuses && name == u"BeforeClickSort") {
            arguments[1] = true;
        }
    }
    bool refuses = false;
    std::vector<std::u16string> names;
};

/// Five rows: "Bad" and "Dach" in group "A", "Balkon", "Erker", "Flur" in group "B".
struct HandsRig {
    HandsRig() {
        for (const auto* key : {u"Name", u"Gruppe", u"Zahl"}) {
            model.AddColumn(key);
        }
        model.columns.At(2).dataType = DataType::Long;
        const std::pair<const char16_t*, const char16_t*> rows[] = {
            {u"Bad", u"A"}, {u"Balkon", u"B"}, {u"Dach", u"A"}, {u"Erker", u"B"}, {u"Flur", u"B"}};
        std::int32_t number = 0;
        for (const auto& [name, group] : rows) {
            const RowRef row = model.rows.Add();
            model.rows.Set(row, 0, name);
            model.rows.Set(row, 1, group);
            model.rows.Set(row, 2, ++number);
        }
        model.options.multiSelect = true;
        model.view = &view;
    }
    ~HandsRig() { model.view = nullptr; }
    HandsRig(const HandsRig&) = delete;
    HandsRig& operator=(const HandsRig&) = delete;
    std::int32_t Current() { return model.rows.NumberOf(model.rows.Current()); }
    std::u16string Selected() {
        std::u16string text;
        for (const Range& range : model.rows.Ranges()) {
            text += DecimalText(range.first) + u"-" + DecimalText(range.second) + u" ";
        }
        return text;
    }
    FakeCulture culture;
    FakeView view;
    std::shared_ptr<GridModel> shared = std::make_shared<GridModel>(culture);
    GridModel& model = *shared;
    Gestures gestures{model};
};

void ExpectRefused(const std::function<void()>& deed) {
    EXPECT_THROW(deed(), Failure);
}

} // namespace

TEST(Gestures, KeysMoveTheCurrentRowAndTheSelection) {
    HandsRig rig;
    rig.gestures.Move(Step::Down, 3, false, false);
    EXPECT_EQ(rig.Current(), 1);
    rig.gestures.Move(Step::Down, 3, false, true);
    rig.gestures.Move(Step::Down, 3, false, true);
    EXPECT_EQ(rig.Selected(), u"1-3 ");
    EXPECT_EQ(rig.Current(), 3);
    rig.gestures.Move(Step::Up, 3, true, false);
    EXPECT_EQ(rig.Selected(), u"1-3 ");
    EXPECT_EQ(rig.Current(), 2);
    rig.gestures.Move(Step::PageDown, 3, false, false);
    EXPECT_EQ(rig.Current(), 5);
    EXPECT_EQ(rig.view.scrolledTo, 5);
    rig.gestures.Move(Step::PageUp, 2, false, false);
    EXPECT_EQ(rig.Current(), 3);
    rig.gestures.Move(Step::First, 2, false, false);
    EXPECT_EQ(rig.Current(), 1);
    rig.gestures.Move(Step::Up, 2, false, false);
    EXPECT_EQ(rig.Current(), 1) << "there is nothing above";
    rig.gestures.Move(Step::Last, 2, false, true);
    EXPECT_EQ(rig.Selected(), u"1-5 ");
    rig.model.rows.Clear();
    rig.gestures.Move(Step::Down, 3, false, false);
    EXPECT_EQ(rig.Current(), 0);
}

TEST(Gestures, ClicksSelectAddAndExtend) {
    HandsRig rig;
    rig.gestures.ClickRow(2, false, false);
    rig.gestures.ClickRow(4, true, false);
    EXPECT_EQ(rig.Selected(), u"2-2 4-4 ");
    rig.gestures.ClickRow(2, true, false);
    EXPECT_EQ(rig.Selected(), u"4-4 ");
    EXPECT_EQ(rig.Current(), 2);
    rig.gestures.ClickRow(5, false, true);
    EXPECT_EQ(rig.Selected(), u"2-5 ");
    rig.gestures.SelectAll();
    EXPECT_EQ(rig.Selected(), u"1-5 ");
    rig.gestures.ToggleCurrent();
    EXPECT_EQ(rig.Selected(), u"1-4 ");
    rig.model.options.multiSelect = false;
    rig.gestures.ToggleCurrent();
    EXPECT_EQ(rig.Selected(), u"5-5 ");
    rig.gestures.SelectAll();
    EXPECT_EQ(rig.Selected(), u"5-5 ") << "only one row can be selected";
}

TEST(Gestures, TypingGoesToTheNextRowThatBeginsSo) {
    HandsRig rig;
    rig.gestures.TypeText(u"b");
    EXPECT_EQ(rig.Current(), 1);
    rig.gestures.TypeText(u"B");
    EXPECT_EQ(rig.Current(), 2) << "a single letter goes on";
    rig.gestures.TypeText(u"b");
    EXPECT_EQ(rig.Current(), 1) << "and round";
    rig.gestures.TypeText(u"ba");
    EXPECT_EQ(rig.Current(), 1) << "a longer text stays where it holds";
    rig.gestures.TypeText(u"bal");
    EXPECT_EQ(rig.Current(), 2);
    rig.gestures.TypeText(u"x");
    EXPECT_EQ(rig.Current(), 2);
    rig.model.Sort(2, true);
    rig.gestures.TypeText(u"4");
    EXPECT_EQ(rig.model.rows.Get(rig.model.rows.Current(), 0), Value(u"Erker"))
        << "the sorted column is searched";
}

TEST(Gestures, HeadingsOpenAndClose) {
    HandsRig rig;
    rig.model.ChangeGroups({{1, false}});
    EXPECT_EQ(rig.model.rows.Count(), 7);
    rig.gestures.ToggleHeading(1);
    EXPECT_EQ(rig.model.rows.ShownNumbers(), (std::vector<std::int32_t>{1, 4, 5, 6, 7}));
    rig.gestures.ToggleHeading(1);
    rig.gestures.ToggleHeading(2);
    EXPECT_EQ(rig.model.rows.ShownNumbers().size(), 7U) << "a data row has nothing to open";
    rig.gestures.Move(Step::First, 3, false, false);
    EXPECT_EQ(rig.Current(), 1);
    rig.gestures.TypeText(u"Dach");
    EXPECT_EQ(rig.model.rows.Get(rig.model.rows.Current(), 0), Value(u"Dach"));
}

TEST(UserChanges, AreAskedForAndCanBeRefused) {
    HandsRig rig;
    const auto sink = std::make_shared<Refusing>();
    const Subscription events = rig.model.events.Connect(sink);
    EXPECT_TRUE(rig.model.ClickHeading(0));
    EXPECT_FALSE(rig.model.rows.Sorting()->descending);
    EXPECT_TRUE(rig.model.ClickHeading(0));
    EXPECT_TRUE(rig.model.rows.Sorting()->descending) << "the second click turns it round";
    EXPECT_TRUE(rig.model.GroupByUser(1, 0));
    EXPECT_FALSE(rig.model.GroupByUser(1, 0)) << "grouped already";
    EXPECT_FALSE(rig.model.rows.Groups()[0].descending);
    EXPECT_TRUE(rig.model.GroupByUser(0, 9));
    EXPECT_TRUE(rig.model.MoveGroupByUser(1, 0));
    EXPECT_EQ(rig.model.rows.Groups()[0].column, 0U);
    EXPECT_FALSE(rig.model.MoveGroupByUser(0, 0));
    EXPECT_FALSE(rig.model.MoveGroupByUser(0, 2));
    EXPECT_FALSE(rig.model.UngroupByUser(2));
    sink->refuses = true;
    EXPECT_FALSE(rig.model.MoveGroupByUser(1, 0));
    EXPECT_FALSE(rig.model.UngroupByUser(0));
    EXPECT_FALSE(rig.model.GroupByUser(2, 0));
    EXPECT_FALSE(rig.model.ClickHeading(2));
    sink->refuses = false;
    EXPECT_TRUE(rig.model.UngroupByUser(0));
    EXPECT_EQ(rig.model.rows.Groups().size(), 1U);
    EXPECT_EQ(sink->names.back(), u"AfterGroupChange");
}

TEST(HitTest, TellsWhatLiesWhere) {
    HandsRig rig;
    rig.model.layout.groupByBox = true;
    for (std::size_t column = 0; column < 3; ++column) {
        rig.model.columns.At(column).width = 100;
    }
    EXPECT_EQ(rig.model.HitTest(-1, 5).area, Area::Nothing);
    EXPECT_EQ(rig.model.HitTest(5, -1).area, Area::Nothing);
    EXPECT_EQ(rig.model.HitTest(0, 0).area, Area::GroupByBox);
    const std::int32_t bottom = rig.model.layout.GroupBoxBottom();
    EXPECT_EQ(rig.model.HitTest(5, bottom - 1).area, Area::GroupByBox);
    EXPECT_EQ(rig.model.HitTest(5, bottom).area, Area::Heading);
    EXPECT_EQ(rig.model.HitTest(5, rig.model.layout.RowsTop()).area, Area::Cell);
    EXPECT_EQ(rig.model.HitTest(5, 10).area, Area::GroupByBox);
    EXPECT_EQ(rig.model.HitTest(150, 45).area, Area::Heading);
    EXPECT_EQ(rig.model.HitTest(150, 45).column, 1);
    EXPECT_EQ(rig.model.HitTest(350, 45).area, Area::Nothing);
    const HitResult cell = rig.model.HitTest(250, 60 + 18 + 3);
    EXPECT_EQ(cell.area, Area::Cell);
    EXPECT_EQ(cell.row, 2);
    EXPECT_EQ(cell.column, 2);
    EXPECT_EQ(rig.model.HitTest(50, 65).area, Area::Cell) << "in the first column";
    EXPECT_EQ(rig.model.HitTest(350, 65).area, Area::Nothing) << "right of all columns";
    const HitResult below = rig.model.HitTest(50, 60 + 5 * 18);
    EXPECT_EQ(below.area, Area::Nothing) << "below all rows";
    EXPECT_EQ(below.column, -1);
    rig.model.ChangeGroups({{1, false}});
    EXPECT_EQ(rig.model.HitTest(350, 65).area, Area::GroupHeading);
    EXPECT_EQ(rig.model.PointOf(rig.model.rows.At(2)).y, 60 + 18 + 9);
    EXPECT_EQ(rig.model.PointOf(RowRef{}).y, 60 + 9);
}

TEST(Layout, PlacesColumnsLinesAndChips) {
    HandsRig rig;
    Layout& layout = rig.model.layout;
    for (std::size_t column = 0; column < 3; ++column) {
        rig.model.columns.At(column).width = 100;
    }
    rig.model.columns.At(0).hidden = true;
    layout.scrollX = 30;
    EXPECT_EQ(layout.TotalWidth(), 200);
    EXPECT_EQ(layout.FirstVisible(), 1);
    EXPECT_EQ(layout.LeftOf(2), 70);
    EXPECT_EQ(layout.ColumnAt(69), 1);
    EXPECT_EQ(layout.ColumnAt(70), 2);
    EXPECT_EQ(layout.ColumnAt(170), -1);
    EXPECT_EQ(layout.BorderAt(72), 1);
    EXPECT_EQ(layout.BorderAt(90), -1);
    rig.model.columns.At(2).hidden = true;
    EXPECT_EQ(layout.BorderAt(72), 1) << "a hidden column has no border";
    rig.model.columns.At(2).hidden = false;
    layout.firstLine = 10;
    EXPECT_EQ(layout.LineAt(0), -1);
    EXPECT_EQ(layout.LineAt(layout.RowsTop() + 20), 11);
    EXPECT_EQ(layout.TopOfLine(11), layout.RowsTop() + 18);
    EXPECT_EQ(layout.LinesIn(layout.RowsTop() + 100), 5);
    EXPECT_EQ(layout.LinesIn(0), 1);
    EXPECT_EQ(layout.ChipUnder(10, 10, 2), 0);
    EXPECT_EQ(layout.ChipUnder(150, 10, 2), 1);
    EXPECT_EQ(layout.ChipUnder(300, 10, 2), -1);
    for (Column* column : {&rig.model.columns.At(1), &rig.model.columns.At(2)}) {
        column->hidden = true;
    }
    EXPECT_EQ(layout.FirstVisible(), -1);
}

TEST(View, IsToldOfChangesWhileRedrawIsOn) {
    HandsRig rig;
    const std::size_t columns[] = {0, 2};
    EXPECT_TRUE(rig.model.FitColumns(columns));
    EXPECT_EQ(rig.model.columns.At(2).width, 123);
    rig.model.SetRedraw(false);
    const int before = rig.view.refreshes;
    rig.model.Sort(0, false);
    rig.model.RefreshSort();
    EXPECT_EQ(rig.view.refreshes, before);
    rig.model.SetRedraw(true);
    EXPECT_GT(rig.view.refreshes, before);
    rig.model.ChangeGroups({{1, false}});
    rig.model.rows.SetAllExpanded(false);
    rig.model.Expand(rig.model.rows.At(3));
    EXPECT_EQ(rig.view.scrolledTo, 3);
    rig.model.SetRedraw(false);
    rig.model.rows.SetAllExpanded(false);
    rig.model.Expand(rig.model.rows.At(2));
    rig.model.SetRedraw(true);
    EXPECT_EQ(rig.model.rows.ShownNumbers().size(), 4U) << "what waited is revealed";
    rig.model.view = nullptr;
    EXPECT_FALSE(rig.model.FitColumns(columns));
}

TEST(State, ComesBackIntoAnotherGrid) {
    HandsRig rig;
    Column& name = rig.model.columns.At(0);
    name.caption = u"Name; \"kurz\"";
    name.alignment = Alignment::Right;
    name.hidden = true;
    name.width = 77;
    rig.model.options.groupByBoxText = u"Hierhin";
    rig.model.options.groupIndent = 9;
    rig.model.options.allowEdit = true;
    rig.model.layout.groupByBox = true;
    rig.model.columns.Move(2, 0);
    rig.model.Sort(0, true);
    rig.model.ChangeGroups({{1, true}});
    const std::u16string state = SaveState(rig.model);
    GridModel other(rig.culture);
    other.AddColumn(u"Zahl");
    LoadState(other, state);
    EXPECT_EQ(other.columns.Count(), 3U);
    const Column& loaded = other.columns.At(other.columns.IndexOf(Value(u"Name")));
    EXPECT_EQ(loaded.caption, u"Name; \"kurz\"");
    EXPECT_EQ(loaded.alignment, Alignment::Right);
    EXPECT_TRUE(loaded.hidden);
    EXPECT_EQ(loaded.width, 77);
    EXPECT_EQ(other.options.groupByBoxText, u"Hierhin");
    EXPECT_EQ(other.options.groupIndent, 9);
    EXPECT_TRUE(other.options.allowEdit && other.options.multiSelect && other.layout.groupByBox);
    EXPECT_TRUE(other.rows.Sorting()->descending);
    EXPECT_EQ(other.rows.Groups().size(), 1U);
    EXPECT_EQ(other.columns.PositionOf(other.columns.IndexOf(Value(u"Zahl"))), 0U);
    const std::u16string again = SaveState(other);
    LoadState(other, again);
    EXPECT_EQ(SaveState(other), again);
}

TEST(State, ThatIsNoneChangesNothing) {
    HandsRig rig;
    const std::u16string before = SaveState(rig.model);
    const std::u16string good = before.substr(0, before.find(u"Grid"));
    for (const auto* line :
         {u"Design;;x;8;0;0\r\n", u"Design;Neu;x;9;0;0\r\n", u"Design;Neu;x;8;7;0\r\n",
          u"Design;Neu\r\n", u"Grid;x;-1;0;0;0;0;0\r\n", u"Grid;x;1;2;0;0;0;0\r\n",
          u"Column;Name;-5;0\r\n", u"Column;Name;x;0\r\n", u"Group;Fehlt\r\n", u"Sonst;1\r\n",
          u"\"offen\r\n"}) {
        SCOPED_TRACE(ToUtf8(line));
        try {
            LoadState(rig.model, good + line);
        } catch (const Failure&) {
            EXPECT_EQ(SaveState(rig.model), before);
        }
    }
    ExpectRefused([&] { LoadState(rig.model, u""); });
    ExpectRefused([&] { LoadState(rig.model, SaveLayout(rig.model)); });
    ExpectRefused([&] { LoadLayout(rig.model, before); });
    ExpectRefused([&] { LoadState(rig.model, good + u"Design;Neu;x;9;0;0\r\n"); });
    EXPECT_EQ(SaveState(rig.model), before);
}

TEST(Dropped, OffersTextAndFilesByTheClipboardsNumbers) {
    const Late both{Value(std::make_shared<DroppedObject>(
        std::vector<std::u16string>{u"C:\\a.doc", u"C:\\b.doc"}, u"Text"))};
    EXPECT_EQ(both.Call(u"GetFormat", 13), Value(true));
    EXPECT_EQ(both.Call(u"GetFormat", 15), Value(true));
    EXPECT_EQ(both.Call(u"GetData", 1), Value(u"Text"));
    EXPECT_EQ(both.Call(u"Text"), Value(u"Text"));
    EXPECT_EQ((*both.Call(u"GetData", 15).If<List>())->size(), 2U);
    ExpectRefused([&] { both.Call(u"GetData", 2); });
    ExpectRefused([&] { both.Call(u"GetFormat", u"x"); });
    const Late files{Value(
        std::make_shared<DroppedObject>(std::vector<std::u16string>{u"C:\\a"}, std::nullopt))};
    EXPECT_EQ(files.Call(u"GetFormat", 15), Value(true));
    EXPECT_EQ(files.Call(u"GetFormat", 1), Value(false));
    const Late none{Value(std::make_shared<DroppedObject>(std::nullopt, std::nullopt))};
    EXPECT_EQ(none.Call(u"GetFormat", 15), Value(false));
    EXPECT_EQ(none.Call(u"GetFormat", 1), Value(false));
    EXPECT_EQ(none.Call(u"Text"), Value(u""));
    EXPECT_TRUE((*none.Call(u"Files").If<List>())->empty());
}

TEST(Events, HaveNumbersAndPlaces) {
    EXPECT_EQ(EventShapes().size(), 10U);
    EXPECT_EQ(EventNumber(u"afterGROUPchange"), 1);
    EXPECT_EQ(EventNumber(u"OLEDragDrop"), 10);
    EXPECT_EQ(EventNumber(u"Sonst"), 0);
    EXPECT_TRUE(IsByReference(u"BeforeClickSort", 1));
    EXPECT_FALSE(IsByReference(u"BeforeClickSort", 0));
    EXPECT_TRUE(IsByReference(u"BeforeGroupChange", 6));
    EXPECT_FALSE(IsByReference(u"BeforeGroupChange", 9));
    EXPECT_FALSE(IsByReference(u"Sonst", 0));
}

TEST(GridMembers, SwitchesAndNumbersAreReadAndWritten) {
    HandsRig rig;
    const Late grid{Value(std::make_shared<GridObject>(rig.shared))};
    for (const auto* member : {u"MultiSelect", u"FullRowSelect", u"AllowEdit", u"HeaderVisible",
                               u"GroupByBox", u"Redraw"}) {
        for (const bool on : {true, false, true}) {
            const int before = rig.view.refreshes;
            grid.Set(member, on);
            EXPECT_EQ(grid.Call(member), Value(on)) << ToUtf8(member);
            if (on) { // without redraw nobody is told
                EXPECT_GT(rig.view.refreshes, before) << ToUtf8(member);
            }
        }
    }
    grid.Set(u"GroupIndent", 12);
    EXPECT_EQ(grid.Call(u"GroupIndent"), Value(12));
    ExpectRefused([&] { grid.Set(u"GroupIndent", 1001); });
    ExpectRefused([&] { grid.Set(u"GroupIndent", -1); });
    grid.Set(u"ImageList", std::int64_t{1} << 40);
    EXPECT_EQ(grid.Call(u"ImageList"), Value(std::int64_t{1} << 40));
    grid.Set(u"ImageList", 5);
    EXPECT_EQ(grid.Call(u"ImageList"), Value(5));
    const int before = rig.view.refreshes;
    grid.Set(u"GroupByBoxText", u"Text");
    EXPECT_EQ(rig.view.refreshes, before + 1);
    EXPECT_EQ(grid.Call(u"GroupByBoxText"), Value(u"Text"));
    grid.Set(u"FileColumn", u"Name");
    EXPECT_EQ(grid.Call(u"FileColumn"), Value(u"Name"));
    grid.Set(u"FileColumn", u"");
    EXPECT_EQ(grid.Call(u"FileColumn"), Value(u""));
    ExpectRefused([&] { grid.Set(u"FileColumn", u"Fehlt"); });
    const Value layout = grid.Call(u"SaveLayout");
    grid.Call(u"LoadLayout", layout);
    EXPECT_EQ(grid.Call(u"SaveLayout"), layout);
}

TEST(GridObjects, TellTheirKindsAndTheirElements) {
    HandsRig rig;
    rig.model.ChangeGroups({{1, false}});
    rig.model.rows.SelectRange(2, 3);
    const Late grid{Value(std::make_shared<GridObject>(rig.shared))};
    EXPECT_EQ(grid.AsObject()->TypeName(), u"Grid");
    const std::pair<const char16_t*, std::size_t> collections[] = {
        {u"Columns", 3}, {u"Rows", 7}, {u"Groups", 1}, {u"Selection", 1}};
    for (const auto& [member, count] : collections) {
        const Late collection = grid[member];
        EXPECT_EQ(collection.AsObject()->TypeName(), member);
        const auto elements = collection.AsObject()->Enumerate();
        std::size_t found = 0;
        while (const auto element = elements->Next()) {
            EXPECT_FALSE(Late(*element).AsObject()->TypeName().empty());
            ++found;
        }
        EXPECT_EQ(found, count) << ToUtf8(member);
        elements->Restart();
        EXPECT_TRUE(elements->Next());
    }
}

TEST(Selected, RowsAreATableAndTheirFilesAList) {
    HandsRig rig;
    EXPECT_EQ(SelectedRowsAsText(rig.model), u"");
    EXPECT_TRUE(SelectedFiles(rig.model).empty());
    rig.model.columns.At(1).hidden = true;
    rig.model.ChangeGroups({{1, false}});
    rig.model.rows.SelectRange(1, 3);
    rig.model.rows.Set(rig.model.rows.At(2), 0, u"a\tb");
    EXPECT_EQ(SelectedRowsAsText(rig.model), u"Name\tZahl\r\n\"a\tb\"\t1\r\nDach\t3\r\n");
    rig.model.options.fileColumn = 0;
    EXPECT_EQ(SelectedFiles(rig.model), (std::vector<std::u16string>{u"a\tb", u"Dach"}));
    rig.model.rows.Set(rig.model.rows.At(2), 0, Empty());
    rig.model.rows.Set(rig.model.rows.At(3), 0, 5);
    EXPECT_TRUE(SelectedFiles(rig.model).empty());
}

TEST(RowsAsText, RandomRowsComeBackAsTheyWere) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        ProofRandom random(seed);
        HandsRig rig;
        rig.model.columns.At(1).dataType = DataType::Date;
        rig.model.rows.Clear();
        for (int row = random.Below(6); row > 0; --row) {
            const RowRef added = rig.model.rows.Add();
            rig.model.rows.Set(added, 0,
                               random.Of<const char16_t*>({u"", u"a", u"1", u"\"", u";", u"\r\n",
                                                           u"2003-12-31 00:00:00", u"-1,5", u" "}));
            if (!random.OneIn(3)) {
                rig.model.rows.Set(added, 1, Date{static_cast<double>(random.Below(60000))});
            }
            rig.model.rows.Set(added, 2,
                               random.Of<Value>({Empty(), 5, -7.25, u"x", u"5", 3e9, true}));
        }
        const std::u16string text = SaveRows(rig.model, u";");
        HandsRig other;
        other.model.columns.At(1).dataType = DataType::Date;
        other.model.rows.Clear();
        LoadRows(other.model, text, u";");
        EXPECT_EQ(SaveRows(other.model, u";"), text) << "seed " << seed;
        EXPECT_THROW(LoadRows(other.model, u"1;2;3;4", u";"), Failure);
    }
}

TEST(Gestures, TypingFindsNothingWhereNoColumnHoldsTexts) {
    HandsRig rig;
    for (const std::size_t column : {0U, 1U}) {
        rig.model.columns.At(column).dataType = DataType::Long;
    }
    rig.gestures.TypeText(u"b");
    EXPECT_EQ(rig.Current(), 0);
}

TEST(ColumnSet, EveryKeyIsFoundAmongMany) {
    HandsRig rig;
    for (int number = 0; number < 200; ++number) {
        rig.model.AddColumn(u"Spalte" + DecimalText(number));
        for (std::size_t index = 0; index < rig.model.columns.Count(); ++index) {
            EXPECT_EQ(rig.model.columns.IndexOf(rig.model.columns.At(index).key), index);
        }
    }
}

} // namespace talvix::grid
