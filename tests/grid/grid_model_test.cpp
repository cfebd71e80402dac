#include "automation/event_source.h"
#include "grid/model/gestures.h"
#include "grid/model/grid_objects.h"
#include "tests/grid/grid_rig.h"

#include <gtest/gtest.h>

#include <array>

namespace talvix::grid {

Late GridUnderTest() {
    struct LocalisedModel {
        FakeCulture culture;
        GridModel model{culture};
    };
    const auto localised = std::make_shared<LocalisedModel>();
    return Late(Value(std::make_shared<GridObject>(SharedGrid(localised, &localised->model))));
}

namespace {

/// The rig with the model behind its grid.
struct ModelRig : GridRig {
    ModelRig()
        : object(std::dynamic_pointer_cast<GridObject>(grid.AsObject())), model(object->model) {}
    std::shared_ptr<GridObject> object;
    SharedGrid model;
};

} // namespace

TEST(GridCells, APictureIsNothingUntilSetAndNothingRemovesIt) {
    const ModelRig rig;
    const Late row = rig.Add(u"x");
    EXPECT_EQ(row.Call(u"Picture", u"Icon"), Nothing());
    row.SetAt(u"Picture", u"Icon", rig.object);
    EXPECT_EQ(row.Call(u"Picture", u"Icon"), Value(rig.object));
    row.SetAt(u"Picture", u"Icon", Nothing());
    EXPECT_EQ(row.Call(u"Picture", u"Icon"), Nothing());
    EXPECT_THROW(row.SetAt(u"Picture", u"Icon", 5), Failure);
}

TEST(GridRows, MemoryOfRemovedRowsIsUsedAgain) {
    const ModelRig rig;
    RowModel& rows = rig.model->rows;
    const auto fill = [&] {
        for (int count = rows.Count(); count < 10; ++count) {
            const RowRef row = rows.Add();
            EXPECT_LT(row.line, 10);
            EXPECT_EQ(rows.Get(row, 0), Value()) << "nothing of the row before";
            rows.Set(row, 0, Value(u"Plan"));
        }
    };
    fill();
    for (const int number : {9, 5, 1}) {
        rows.Remove(rows.At(number));
    }
    EXPECT_EQ(rows.Count(), 7);
    rows.At(1); // what was removed is put in order
    fill();
    rows.Remove(rows.At(2));
    rows.Clear();
    fill();
}

TEST(GridFilter, ARowInThePlaceOfARemovedOneIsLookedAtAnew) {
    const ModelRig rig;
    for (const auto* name : {u"Plan", u"Bild", u"Plan"}) {
        rig.Add(name);
    }
    rig.grid.Set(u"Filter", u"Plan");
    EXPECT_EQ(rig.grid.Call(u"FilterCount"), Value(2));
    rig.grid[u"Rows"].Call(u"Remove", 1);
    rig.Row(1); // what was removed is put in order
    rig.grid[u"Rows"].Call(u"Add");
    EXPECT_EQ(rig.grid.Call(u"FilterCount"), Value(1));
}

TEST(GridGroups, AHeadingIsGoneWithTheGrouping) {
    const ModelRig rig;
    rig.Add(u"a");
    rig.grid[u"Groups"](u"Add", u"Name");
    RowModel& rows = rig.model->rows;
    const RowRef heading = rows.At(1);
    EXPECT_TRUE(rows.IsAlive(heading));
    rig.grid[u"Groups"].Call(u"Clear");
    EXPECT_FALSE(rows.IsAlive(heading));
}

TEST(GridMembers, OnlyRowsAndColumnsThatAreThereAreRefreshed) {
    const ModelRig rig;
    rig.Add(u"a");
    for (const auto* member : {u"RefreshRows", u"RefreshSort"}) {
        for (const Value& row : {Value(-1), Value(1)}) {
            for (const Value& column : {Value(-1), Value(0), Value(u"Name")}) {
                EXPECT_NO_THROW(rig.grid.Call(member, row, column));
            }
        }
        EXPECT_THROW(rig.grid.Call(member, 9, -1), Failure);
        EXPECT_THROW(rig.grid.Call(member, -1, 99), Failure);
        EXPECT_THROW(rig.grid.Call(member, -1, u"Nirgends"), Failure);
    }
}

TEST(GridFind, BehindTheLastOfManyAlikeThereIsNone) {
    const ModelRig rig;
    for (int count = 0; count < 100; ++count) {
        rig.Add(u"Plan");
    }
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"Plan", 100), Value(100));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"Plan", 101), Value(0));
    rig.Row(100).SetAt(u"Value", u"Name", u"Bild");
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"Plan", 100), Value(0));
}

TEST(GridFind, TakesItsArgumentsByName) {
    const ModelRig rig;
    rig.Add(u"Plan");
    rig.Add(u"Plan");
    const std::array<Value, 3> values = {Value(2), Value(u"Plan"), Value(u"Name")};
    const std::array<std::u16string_view, 3> names = {u"StartRow", u"Value", u"Column"};
    EXPECT_EQ(InvokeByName(*rig.object, u"Find", access::kMethod, {values, names}), Value(2));
    const std::array<std::u16string_view, 3> wrong = {u"Start", u"Value", u"Column"};
    EXPECT_THROW(InvokeByName(*rig.object, u"Find", access::kMethod, {values, wrong}), Failure);
}

TEST(GridRows, ARemovedRowIsNeitherHeadingNorRow) {
    const ModelRig rig;
    const Late row = rig.Add(u"a");
    rig.grid[u"Rows"].Call(u"Remove", 1);
    for (const auto* member : {u"IsGroup", u"Level", u"Expanded", u"Selected"}) {
        EXPECT_THROW(row.Call(member), Failure) << ToUtf8(member);
    }
}

TEST(GridCells, TextsOfEveryLengthComeAndGo) {
    const ModelRig rig;
    const Late row = rig.Add(u"");
    for (int round = 0; round < 3; ++round) {
        std::size_t step = 7;
        for (std::size_t length = 0; length < 2200; length += step) {
            step = length > 2030 && length < 2060 ? 1 : 7; // one by one where they leave the blocks
            const std::u16string text(length, static_cast<char16_t>(u'a' + length % 26));
            row.SetAt(u"Value", u"Name", text);
            EXPECT_EQ(row.Call(u"Value", u"Name"), Value(text));
        }
    }
}

TEST(GridCells, LongTextsComeAndGoBesideShortOnes) {
    const ModelRig rig;
    std::vector<Late> rows;
    const auto textOf = [](int number) {
        return std::u16string(3000 + static_cast<std::size_t>(number),
                              static_cast<char16_t>(u'a' + number % 26));
    };
    for (int round = 0; round < 3; ++round) {
        for (int number = 0; number < 200; ++number) {
            rows.push_back(rig.Add(textOf(number), number));
        }
        for (int number = 0; number < 200; ++number) {
            EXPECT_EQ(rows[static_cast<std::size_t>(number)].Call(u"Value", u"Name"),
                      Value(textOf(number)));
        }
        for (const Late& row : rows) {
            for (int each = 0; each < 10; ++each) {
                row.SetAt(u"Value", u"Name", DecimalText(round * 1000 + each));
            }
            rig.grid[u"Rows"].Call(u"Remove", row.Get());
        }
        rows.clear();
    }
    EXPECT_EQ(rig.Count(), 0);
}

TEST(GridCells, AColumnHoldsNumbersOfEveryWidthBesideTexts) {
    const ModelRig rig;
    const std::array<Value, 14> values{u"Text",
                                       true,
                                       std::uint8_t{255},
                                       std::int16_t{-3},
                                       std::int32_t{-2000000000},
                                       std::int64_t{-1},
                                       std::int64_t{0x123456789ABCDEF},
                                       std::int64_t{5},
                                       1.5F,
                                       0.0,
                                       -2.25,
                                       Date{38000.25},
                                       Currency{-12345},
                                       Value()};
    std::vector<Late> rows;
    for (const Value& value : values) {
        rows.push_back(rig.Add(u"", value));
    }
    for (std::size_t turn = 0; turn < values.size(); ++turn) {
        for (std::size_t at = 0; at < values.size(); ++at) {
            const Value& value = values[(at + turn) % values.size()];
            EXPECT_EQ(rows[at].Call(u"Value", u"Number"), value);
            rows[at].SetAt(u"Value", u"Number", values[(at + turn + 1) % values.size()]);
        }
    }
}

TEST(GridSort, RowsAreRefreshedForWhateverHasChanged) {
    const ModelRig rig;
    const Late first = rig.Add(u"a", 10);
    rig.Add(u"b", 9);
    const auto refreshed = [&] {
        rig.model->RefreshSort();
        return rig.Names();
    };
    rig.grid.Call(u"Sort", u"Number", 0);
    EXPECT_EQ(rig.Names(), u"b a");
    rig.grid(u"Columns", u"Number").Set(u"DataType", 8);
    EXPECT_EQ(refreshed(), u"a b") << "as texts";
    first.SetAt(u"Value", u"Number", 99);
    EXPECT_EQ(refreshed(), u"b a") << "another cell";
    first.SetAt(u"Value", u"Name", u"c");
    EXPECT_EQ(refreshed(), u"b c") << "a cell of another column";
    rig.Add(u"d", 95);
    EXPECT_EQ(refreshed(), u"b d c") << "another row";
    rig.grid[u"Rows"].Call(u"Add");
    EXPECT_EQ(refreshed(), u" b d c") << "another row without values";
    rig.grid[u"Rows"].Call(u"Remove", 2);
    EXPECT_EQ(refreshed(), u" d c") << "a row less";
}

TEST(GridSort, ALayoutWithoutOneLeavesTheRowsWhereTheyAre) {
    const ModelRig rig;
    rig.Add(u"b", 2);
    const Late first = rig.Add(u"a", 1);
    const Value unsorted = rig.grid.Call(u"SaveLayout");
    rig.grid.Call(u"Sort", u"Number", 0);
    rig.grid.Call(u"LoadLayout", unsorted);
    first.SetAt(u"Value", u"Number", 50);
    rig.model->RefreshSort();
    EXPECT_EQ(rig.Names(), u"a b");
}

TEST(GridSort, AfterOneThatRanOutOfMemoryTheNextOneIsRight) {
    struct RunsOut : FakeCulture {
        std::string SortKey(std::u16string_view text) const override {
            if (left-- == 0) {
                throw std::bad_alloc();
            }
            return FakeCulture::SortKey(text);
        }
        mutable int left = -1;
    };
    RunsOut culture;
    GridModel model(culture);
    const std::size_t column = model.AddColumn(u"Name").index;
    for (const auto* name : {u"c", u"a", u"b"}) {
        model.rows.Set(model.rows.Add(), column, Value(name));
    }
    for (int calls = 0; calls < 3; ++calls) {
        culture.left = calls;
        EXPECT_THROW(model.Sort(column, false), std::bad_alloc);
        culture.left = -1;
        model.Sort(column, calls % 2 == 1);
        EXPECT_EQ(model.rows.Get(model.rows.At(1), column), Value(calls % 2 == 1 ? u"c" : u"a"));
        EXPECT_EQ(model.rows.Get(model.rows.At(2), column), Value(u"b"));
    }
}

TEST(GridGroups, AddingOneGivesItsColumn) {
    const ModelRig rig;
    EXPECT_EQ(rig.grid[u"Groups"](u"Add", u"Name").Call(u"Key"), Value(u"Name"));
}

TEST(GridHitTest, TheFirstPointIsWithin) {
    const ModelRig rig;
    rig.grid.Set(u"GroupByBox", true);
    EXPECT_EQ(rig.grid(u"HitTest", 0, 0).Call(u"Area"), Value(static_cast<int>(Area::GroupByBox)));
    EXPECT_EQ(rig.grid(u"HitTest", -0.1, 0).Call(u"Area"), Value(static_cast<int>(Area::Nothing)));
}

TEST(GridHitTest, EveryPixelIsFoundByItsPointsAtEveryResolution) {
    for (const std::int32_t dpi : {96, 120, 144, 168, 192, 216}) {
        const ModelRig rig;
        rig.model->layout.metrics = {dpi, 18 * dpi / 96, 22 * dpi / 96, 38 * dpi / 96};
        rig.grid.Set(u"GroupByBox", true);
        for (int row = 0; row < 150; ++row) {
            rig.grid[u"Rows"].Call(u"Add");
        }
        const auto expect = [&](std::int32_t pixel, float points) {
            const HitResult hit = rig.model->HitTest(3, pixel);
            const Late found = rig.grid(u"HitTest", 3, points);
            ASSERT_EQ(found.Call(u"Area"), Value(static_cast<int>(hit.area)))
                << dpi << " " << pixel;
            ASSERT_EQ(found.Call(u"Row"), Value(hit.row)) << dpi << " " << pixel;
            const Late across = rig.grid(u"HitTest", points, 60);
            ASSERT_EQ(across.Call(u"Column"),
                      Value(rig.model->HitTest(pixel, 60 * dpi / 72).column))
                << dpi << " " << pixel;
        };
        for (std::int32_t pixel = 0; pixel < 5000; ++pixel) {
            expect(pixel, static_cast<float>(pixel * 72.0 / dpi));
            expect(pixel, static_cast<float>(pixel) * (72.0F / static_cast<float>(dpi)));
        }
    }
}

TEST(GridHitTest, APointWithinAPixelBelongsToIt) {
    const ModelRig rig;
    rig.grid[u"Rows"].Call(u"Add");
    const std::int32_t top = rig.model->layout.RowsTop();
    EXPECT_EQ(rig.grid(u"HitTest", 1, (top - 0.01) * 0.75).Call(u"Area"), Value(2));
    EXPECT_EQ(rig.grid(u"HitTest", 1, top * 0.75).Call(u"Area"), Value(3));
    EXPECT_EQ(rig.grid(u"HitTest", 1, (top + 17.99) * 0.75).Call(u"Row"), Value(1));
}

TEST(GridFind, EveryOneOfManyValuesIsFound) {
    const ModelRig rig;
    const std::size_t name = rig.model->columns.IndexOf(u"Name");
    const int count = 3000;
    for (int number = 1; number <= count; ++number) {
        rig.model->rows.Set(rig.model->rows.Add(), name, u"Plan " + DecimalText(number * 7));
        if (number % 100 == 1) { // the index grows while it is in use
            EXPECT_EQ(rig.model->rows.Find(name, Value(u"Plan 7"), 1), 1);
        }
    }
    for (int number = 1; number <= count; ++number) {
        EXPECT_EQ(rig.model->rows.Find(name, u"Plan " + DecimalText(number * 7), 1), number);
    }
    EXPECT_EQ(rig.model->rows.Find(name, u"Plan 8", 1), 0);
}

TEST(GridGroups, ExpandOpensTheHeadingsAboveTheRowAddedLast) {
    const ModelRig rig;
    rig.Add(u"a");
    rig.grid[u"Groups"](u"Add", u"Name");
    rig.grid.Call(u"CollapseAll");
    EXPECT_EQ(rig.model->rows.ShownNumbers().size(), 1U);
    rig.Add(u"a");
    rig.grid.Call(u"RefreshSort", -1, -1);
    EXPECT_EQ(rig.model->rows.ShownNumbers().size(), 1U);
    rig.grid.Call(u"Expand");
    EXPECT_EQ(rig.model->rows.ShownNumbers().size(), 3U);
    rig.grid.Call(u"CollapseAll");
    rig.grid.Call(u"ExpandAll");
    EXPECT_EQ(rig.model->rows.ShownNumbers().size(), 3U);
}

namespace {

class RecordingSink : public EventSink {
public:
    void OnEvent(std::u16string_view name, std::span<Value> arguments) override {
        events.emplace_back(name);
        if (refuse) {
            arguments.back() = true;
        }
    }
    std::vector<std::u16string> events;
    bool refuse = false;
};

} // namespace

TEST(GridEvents, AskBeforeAUsersSortAndGroupingOnly) {
    const ModelRig rig;
    rig.Add(u"b");
    rig.Add(u"a");
    auto sink = std::make_shared<RecordingSink>();
    const Subscription subscription = rig.grid.AsObject()->Subscribe(sink, {});
    rig.grid.Call(u"Sort", u"Name");
    rig.grid[u"Groups"](u"Add", u"Name");
    rig.grid[u"Groups"].Call(u"Clear");
    EXPECT_EQ(sink->events,
              (std::vector<std::u16string>{u"AfterGroupChange", u"AfterGroupChange"}));
    sink->events.clear();
    sink->refuse = true;
    EXPECT_FALSE(rig.model->ClickHeading(0));
    EXPECT_FALSE(rig.model->GroupByUser(0, 0));
    EXPECT_EQ(rig.Names(), u"a b");
    sink->refuse = false;
    EXPECT_TRUE(rig.model->ClickHeading(0));
    EXPECT_EQ(rig.Names(), u"b a");
    EXPECT_TRUE(rig.model->GroupByUser(0, 0));
    EXPECT_TRUE(rig.model->UngroupByUser(0));
    EXPECT_EQ(sink->events, (std::vector<std::u16string>{u"BeforeClickSort", u"BeforeGroupChange",
                                                         u"BeforeClickSort", u"BeforeGroupChange",
                                                         u"AfterGroupChange", u"BeforeGroupChange",
                                                         u"AfterGroupChange"}));
}

TEST(GridCells, KeepObjectsAndLetThemGo) {
    const ModelRig rig;
    const auto held = std::make_shared<RangeObject>(Range{1, 2});
    const Late row = rig.Add(u"x");
    row.SetAt(u"Value", u"Icon", held);
    EXPECT_EQ(row.Call(u"Value", u"Icon"), Value(held));
    EXPECT_EQ(held.use_count(), 2);
    row.SetAt(u"Value", u"Icon", 1);
    EXPECT_EQ(held.use_count(), 1);
    row.SetAt(u"Value", u"Icon", held);
    rig.grid[u"Rows"].Call(u"Clear");
    EXPECT_EQ(held.use_count(), 1);
}

TEST(GridGestures, ClicksSelectExtendAndToggle) {
    const ModelRig rig;
    for (const auto* name : {u"a", u"b", u"c", u"d"}) {
        rig.Add(name);
    }
    Gestures gestures(*rig.model);
    gestures.ClickRow(2, false, false);
    EXPECT_EQ(rig.Ranges(), u"2-2 ");
    gestures.ClickRow(4, false, true);
    EXPECT_EQ(rig.Ranges(), u"2-4 ");
    gestures.ClickRow(3, true, false);
    EXPECT_EQ(rig.Ranges(), u"2-2 4-4 ");
    EXPECT_EQ(rig.grid[u"CurrentRow"].Call(u"Text", u"Name"), Value(u"c"));
    gestures.ClickRow(1, false, true);
    EXPECT_EQ(rig.Ranges(), u"1-3 ");
    rig.grid.Set(u"MultiSelect", false);
    gestures.ClickRow(4, true, true);
    EXPECT_EQ(rig.Ranges(), u"4-4 ");
}

TEST(GridGestures, KeysGoOverTheShownRowsOnly) {
    const ModelRig rig;
    for (const auto* name : {u"a", u"a", u"b"}) {
        rig.Add(name);
    }
    rig.grid[u"Groups"](u"Add", u"Name");
    Gestures gestures(*rig.model);
    gestures.Move(Step::First, 10, false, false);
    gestures.SetExpanded(rig.model->rows.Current(), false);
    gestures.Move(Step::Down, 10, false, false);
    EXPECT_EQ(rig.Ranges(), u"4-4 ");
    gestures.Move(Step::PageDown, 10, false, true);
    EXPECT_EQ(rig.Ranges(), u"4-5 ");
    gestures.Move(Step::Up, 10, true, false);
    EXPECT_EQ(rig.Ranges(), u"4-5 ");
    gestures.ToggleCurrent();
    EXPECT_EQ(rig.Ranges(), u"5-5 ");
    gestures.SelectAll();
    EXPECT_EQ(rig.Ranges(), u"1-5 ");
}

TEST(GridGestures, TypedLettersFindTheNextRow) {
    const ModelRig rig;
    for (const auto* name : {u"Alpha", u"Beta", u"berta", u"Gamma"}) {
        rig.Add(name);
    }
    Gestures gestures(*rig.model);
    gestures.TypeText(u"b");
    EXPECT_EQ(rig.Ranges(), u"2-2 ");
    gestures.TypeText(u"ber");
    EXPECT_EQ(rig.Ranges(), u"3-3 ");
    gestures.TypeText(u"b");
    EXPECT_EQ(rig.Ranges(), u"2-2 ");
    gestures.TypeText(u"zz");
    EXPECT_EQ(rig.Ranges(), u"2-2 ");
}

} // namespace talvix::grid
