#include "tests/grid/grid_rig.h"

#include <gtest/gtest.h>

#include <array>

namespace talvix::grid {

TEST(GridColumns, KeysAreMatchedWithoutCaseAndByPosition) {
    const GridRig rig;
    EXPECT_EQ(rig.grid(u"Columns", u"nAmE").Call(u"Key"), Value(u"Name"));
    EXPECT_EQ(rig.grid(u"Columns", 1).Call(u"Key"), Value(u"Number"));
    rig.Column(u"Größe", 8);
    EXPECT_EQ(rig.grid(u"Columns", u"GRÖßE").Call(u"Index"), Value(4));
    EXPECT_EQ(rig.grid[u"Columns"].Call(u"Count"), Value(5));
}

TEST(GridColumns, EmptyAndDuplicateKeysAreRefusedAndNothingChanges) {
    const GridRig rig;
    EXPECT_EQ(Refusal([&] { rig.grid[u"Columns"](u"Add", u"NAME"); }),
              u"There is a column with the key \"NAME\" already");
    EXPECT_EQ(Refusal([&] { rig.grid[u"Columns"](u"Add", u""); }),
              u"A column needs a key that is not empty");
    EXPECT_EQ(Refusal([&] { rig.grid(u"Columns", u"Fehlt"); }),
              u"There is no column with the key \"Fehlt\"");
    EXPECT_EQ(Refusal([&] { rig.grid(u"Columns", 4); }), u"Column positions go from 0 to 3");
    EXPECT_EQ(Refusal([&] { rig.grid(u"Columns", 1).Set(u"DataType", 5); }),
              u"A data type is 3 (Long), 7 (Date), 8 (Text) or 65 (Image)");
    EXPECT_EQ(rig.grid[u"Columns"].Call(u"Count"), Value(4));
}

TEST(GridColumns, MovingChangesPositionsButNeverTheIndex) {
    const GridRig rig;
    const Late name = rig.grid(u"Columns", u"Name");
    name.Set(u"Position", 2);
    EXPECT_EQ(name.Call(u"Index"), Value(0));
    EXPECT_EQ(rig.grid(u"Columns", 0).Call(u"Key"), Value(u"Number"));
    EXPECT_EQ(rig.grid(u"Columns", 2).Call(u"Key"), Value(u"Name"));
    EXPECT_EQ(Refusal([&] { name.Set(u"Position", 4); }), u"Column positions go from 0 to 3");
    EXPECT_THROW(name.Set(u"Position", -1), Failure);
    EXPECT_EQ(name.Call(u"Position"), Value(2));
}

TEST(GridCells, KeepTheValueAsItWasGiven) {
    const GridRig rig;
    const Late row = rig.Add(u"x");
    const List list = std::make_shared<const std::vector<Value>>(std::vector<Value>{1, u"zwei"});
    const Value kinds[] = {Value(),
                           Value(Null()),
                           Value(true),
                           Value(std::uint8_t{200}),
                           Value(std::int16_t{-3}),
                           Value(70000),
                           Value(std::int64_t{1} << 40),
                           Value(1.5F),
                           Value(2.5),
                           Value(Date{38000.25}),
                           Value(Currency{12345}),
                           Value(u"Text"),
                           Value(u""),
                           Value(ErrorCode{5}),
                           Nothing()};
    for (const auto* column : {u"Name", u"Number", u"When", u"Icon"}) {
        for (const Value& kind : kinds) {
            row.SetAt(u"Value", column, kind);
            EXPECT_EQ(row.Call(u"Value", column), kind);
        }
        row.SetAt(u"Value", column, list);
        const Value back = row.Call(u"Value", column);
        ASSERT_TRUE(back.Is<List>());
        EXPECT_EQ(**back.If<List>(), *list);
    }
}

TEST(GridCells, TextIsTheUsersForm) {
    const GridRig rig;
    const Late row = rig.Add(u"Wert", 1234.5, Date{37986.25});
    EXPECT_EQ(row.Call(u"Text", u"Number"), Value(u"1234,5"));
    EXPECT_EQ(row.Call(u"Text", u"When"), Value(u"31.12.2003 06:00:00"));
    EXPECT_EQ(row.Call(u"Value", u"When"), Value(Date{37986.25}));
    row.SetAt(u"Value", u"When", u"kein Datum");
    EXPECT_EQ(row.Call(u"Text", u"When"), Value(u"kein Datum"));
}

TEST(GridRows, DefaultMembersTakeTheArgumentsThatAreLeft) {
    const GridRig rig;
    rig.Add(u"eins");
    EXPECT_EQ(rig.grid.Call(u"Rows", 1, u"Name"), Value(u"eins"));
    const std::array<Value, 3> put{1, u"name", u"zwei"};
    InvokeByName(*rig.grid.AsObject(), u"Rows", access::kPut, {put, {}});
    EXPECT_EQ(rig.Names(), u"zwei");
    EXPECT_THROW(rig.grid[u"Rows"].SetAt(u"Item", 1, u"x"), Failure);
}

TEST(GridRows, RowObjectsStayTheirRowsAndFailOnceRemoved) {
    const GridRig rig;
    const Late a = rig.Add(u"a");
    const Late b = rig.Add(u"b");
    const Late c = rig.Add(u"c");
    rig.grid.Call(u"Sort", u"Name", 1);
    EXPECT_EQ(a.Call(u"Number"), Value(3));
    rig.grid[u"Rows"].Call(u"Remove", b.Get());
    EXPECT_EQ(b.Call(u"Number"), Value(0));
    EXPECT_EQ(a.Call(u"Number"), Value(2));
    EXPECT_EQ(Refusal([&] { b.Call(u"Value", u"Name"); }),
              u"The row has been removed from the grid");
    EXPECT_EQ(rig.Row(1).Call(u"Id"), c.Call(u"Id"));
    const Late d = rig.Add(u"d");
    EXPECT_NE(d.Call(u"Id"), b.Call(u"Id"));
    EXPECT_THROW(b.Call(u"Selected"), Failure);
}

TEST(GridRows, NumbersOutOfRangeAreRefusedWithTheRange) {
    const GridRig rig;
    rig.Add(u"a");
    EXPECT_EQ(Refusal([&] { rig.Row(0); }), u"There is no row 0; rows are numbered from 1 to 1");
    EXPECT_THROW(rig.Row(2), Failure);
    EXPECT_THROW(rig.grid[u"Rows"].Call(u"Remove", 2), Failure);
    EXPECT_THROW(rig.grid[u"Rows"].Call(u"Remove", Nothing()), Failure);
    EXPECT_THROW(rig.grid[u"Rows"].Call(u"Remove", rig.grid.Get()), Failure);
    EXPECT_EQ(rig.Count(), 1);
}

TEST(GridSort, IsStableWithoutCaseAndByType) {
    const GridRig rig;
    rig.Add(u"b", 10, Date{3});
    rig.Add(u"Ä", 9, Date{1});
    rig.Add(u"B", u"x", u"02.01.1900");
    rig.Add(u"a", 100.5, Empty());
    rig.grid.Call(u"Sort", u"Name");
    EXPECT_EQ(rig.Names(), u"a Ä b B");
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"SortOrder"), Value(0));
    EXPECT_EQ(rig.grid(u"Columns", u"Number").Call(u"SortOrder"), Value(-1));
    rig.grid.Call(u"Sort", u"Name", 1);
    EXPECT_EQ(rig.Names(), u"b B Ä a");
    rig.grid.Call(u"Sort", u"Number");
    EXPECT_EQ(rig.Names(), u"Ä b a B");
    rig.grid.Call(u"Sort", u"When");
    EXPECT_EQ(rig.Names(), u"a Ä b B");
    EXPECT_EQ(Refusal([&] { rig.grid.Call(u"Sort", u"Name", 2); }),
              u"Order is 0 (ascending) or 1 (descending)");
}

TEST(GridSort, NumbersAndDatesInTextsCountByValue) {
    const GridRig rig;
    rig.Add(u"c", u"100", u"01.03.2004");
    rig.Add(u"a", 9, u"15.01.2004");
    rig.Add(u"b", u"20", Date{38018}); // 1 February 2004
    rig.grid.Call(u"Sort", u"Number");
    EXPECT_EQ(rig.Names(), u"a b c");
    rig.grid.Call(u"Sort", u"Number", 1);
    rig.grid.Call(u"Sort", u"When");
    EXPECT_EQ(rig.Names(), u"a b c");
}

TEST(GridSort, RowsAddedLaterComeIntoPlaceWithRefreshSort) {
    const GridRig rig;
    rig.Add(u"b");
    rig.Add(u"d");
    rig.grid.Call(u"Sort", u"Name");
    const Late a = rig.Add(u"a");
    EXPECT_EQ(rig.Names(), u"b d a");
    a.Set(u"Selected", true);
    rig.grid.Set(u"CurrentRow", rig.Row(2).Get());
    rig.grid.Call(u"RefreshSort", -1, -1);
    EXPECT_EQ(rig.Names(), u"a b d");
    EXPECT_EQ(rig.grid[u"CurrentRow"].Call(u"Text", u"Name"), Value(u"d"));
    EXPECT_EQ(rig.Ranges(), u"3-3 ");
}

TEST(GridRedraw, WhileOffNothingIsSortedIntoPlace) {
    const GridRig rig;
    rig.Add(u"b");
    rig.grid.Call(u"Sort", u"Name");
    rig.grid.Set(u"Redraw", false);
    rig.Add(u"a");
    rig.grid.Call(u"RefreshSort", -1, -1);
    EXPECT_EQ(rig.Names(), u"b a");
    rig.grid.Set(u"Redraw", true);
    EXPECT_EQ(rig.Names(), u"a b");
}

TEST(GridGroups, HeadingsStandOverTheirRowsAndNest) {
    const GridRig rig;
    rig.Add(u"b", 1);
    rig.Add(u"a", 2);
    rig.Add(u"B", 2);
    rig.Add(u"a", 1);
    rig.grid(u"Columns", u"Name").Set(u"Caption", u"Name/Betreff");
    rig.grid[u"Groups"](u"Add", u"Name");
    EXPECT_EQ(rig.Count(), 6);
    EXPECT_EQ(rig.Row(1).Call(u"Text", u"Name"), Value(u"Name/Betreff: a (2)"));
    EXPECT_EQ(rig.Row(1).Call(u"IsGroup"), Value(true));
    EXPECT_EQ(rig.Row(1).Call(u"Value", u"Name"), Value(u"a"));
    EXPECT_EQ(rig.Row(4).Call(u"Text", u"Name"), Value(u"Name/Betreff: b (2)"));
    rig.grid[u"Groups"](u"Add", u"Number", 1);
    EXPECT_EQ(rig.Count(), 10);
    EXPECT_EQ(rig.Row(2).Call(u"Text", u"Number"), Value(u"Number: 2 (1)"));
    EXPECT_EQ(rig.Row(2).Call(u"Level"), Value(1));
    EXPECT_EQ(rig.Row(3).Call(u"Level"), Value(2));
    EXPECT_EQ(rig.grid[u"Groups"].Call(u"Count"), Value(2));
    EXPECT_EQ(rig.grid(u"Groups", 2).Call(u"Key"), Value(u"Number"));
    rig.grid[u"Groups"].Call(u"Remove", 1);
    EXPECT_EQ(rig.Count(), 6);
    rig.grid[u"Groups"].Call(u"Clear");
    EXPECT_EQ(rig.Count(), 4);
}

TEST(GridGroups, BadRequestsAreRefused) {
    const GridRig rig;
    rig.Add(u"a");
    rig.grid[u"Groups"](u"Add", u"Name");
    EXPECT_EQ(Refusal([&] { rig.grid[u"Groups"](u"Add", u"name"); }),
              u"The grid is grouped by this column already");
    EXPECT_EQ(Refusal([&] { rig.grid(u"Groups", 2); }), u"Groups are numbered from 1 to 1");
    EXPECT_EQ(Refusal([&] { rig.Row(1).SetAt(u"Value", u"Name", u"x"); }),
              u"A group heading's value cannot be written");
    EXPECT_EQ(Refusal([&] { rig.grid[u"Rows"].Call(u"Remove", 1); }),
              u"A group heading cannot be removed; it goes with the last of its rows");
    EXPECT_EQ(Refusal([&] { rig.Row(2).Set(u"Expanded", true); }),
              u"Only a group heading can be opened or closed");
}

TEST(GridGroups, AHeadingGoesWithItsLastRow) {
    const GridRig rig;
    rig.Add(u"a");
    rig.Add(u"b");
    rig.grid[u"Groups"](u"Add", u"Name");
    const Late heading = rig.Row(1);
    rig.grid[u"Rows"].Call(u"Remove", 2);
    EXPECT_EQ(rig.Count(), 2);
    EXPECT_EQ(heading.Call(u"Number"), Value(0));
    EXPECT_EQ(rig.Row(1).Call(u"Text", u"Name"), Value(u"Name: b (1)"));
}

TEST(GridGroups, StateOfAHeadingSurvivesRefreshSort) {
    const GridRig rig;
    rig.Add(u"a");
    rig.Add(u"b");
    rig.grid[u"Groups"](u"Add", u"Name");
    const Late heading = rig.Row(3);
    heading.Set(u"Expanded", false);
    heading.Set(u"Selected", true);
    rig.Add(u"aa");
    EXPECT_EQ(rig.Names(), u"Name: a (1) a Name: b (1) b aa");
    rig.grid.Call(u"RefreshSort", -1, -1);
    EXPECT_EQ(heading.Call(u"Number"), Value(5));
    EXPECT_EQ(heading.Call(u"Expanded"), Value(false));
    EXPECT_EQ(rig.Ranges(), u"5-5 ");
    EXPECT_EQ(rig.Count(), 6);
}

TEST(GridSelection, IsRangesThatFollowTheRows) {
    const GridRig rig;
    for (const auto* name : {u"a", u"b", u"c", u"d", u"e"}) {
        rig.Add(name);
    }
    rig.grid[u"Selection"].Call(u"Add", 1, 2);
    rig.grid[u"Selection"].Call(u"Add", 4, 4);
    EXPECT_EQ(rig.Ranges(), u"1-2 4-4 ");
    rig.grid[u"Rows"].Call(u"Remove", 3);
    EXPECT_EQ(rig.Ranges(), u"1-3 ");
    rig.grid.Call(u"Sort", u"Name", 1);
    EXPECT_EQ(rig.Ranges(), u"2-4 ");
    EXPECT_EQ(rig.grid.Call(u"CurrentRow"), Nothing());
    EXPECT_THROW(rig.grid[u"Selection"].Call(u"Add", 0, 1), Failure);
    EXPECT_THROW(rig.grid[u"Selection"].Call(u"Add", 3, 2), Failure);
    EXPECT_THROW(rig.grid[u"Selection"].Call(u"Add", 1, 9), Failure);
    rig.grid[u"Selection"].Call(u"Clear");
    EXPECT_EQ(rig.Ranges(), u"");
}

TEST(GridCurrentRow, SelectsARowThatWasNotSelectedAndLeavesASelectionThatHoldsIt) {
    const GridRig rig;
    for (const auto* name : {u"a", u"b", u"c"}) {
        rig.Add(name);
    }
    rig.grid[u"Selection"].Call(u"Add", 1, 2);
    rig.grid.Set(u"CurrentRow", 2);
    EXPECT_EQ(rig.Ranges(), u"1-2 ");
    rig.grid.Set(u"CurrentRow", rig.Row(3).Get());
    EXPECT_EQ(rig.Ranges(), u"3-3 ");
    rig.grid.Set(u"CurrentRow", 0);
    EXPECT_EQ(rig.grid.Call(u"CurrentRow"), Nothing());
    EXPECT_EQ(rig.Ranges(), u"3-3 ");
    EXPECT_THROW(rig.grid.Set(u"CurrentRow", 4), Failure);
    EXPECT_THROW(rig.grid.Set(u"CurrentRow", u"x"), Failure);
}

TEST(GridCurrentRow, WhenRemovedTheNextElseTheOneBeforeBecomesCurrentUnselected) {
    const GridRig rig;
    for (const auto* name : {u"a", u"b", u"c"}) {
        rig.Add(name);
    }
    rig.grid.Set(u"CurrentRow", 2);
    rig.grid[u"Rows"].Call(u"Remove", 2);
    EXPECT_EQ(rig.grid[u"CurrentRow"].Call(u"Text", u"Name"), Value(u"c"));
    EXPECT_EQ(rig.Ranges(), u"");
    rig.grid[u"Rows"].Call(u"Remove", 2);
    EXPECT_EQ(rig.grid[u"CurrentRow"].Call(u"Text", u"Name"), Value(u"a"));
    rig.grid[u"Rows"].Call(u"Remove", 1);
    EXPECT_EQ(rig.grid.Call(u"CurrentRow"), Nothing());
}

TEST(GridFind, ComparesNumbersByValueAndTextsWithoutCase) {
    const GridRig rig;
    rig.Add(u"eins", 5);
    rig.Add(u"Größe", 5.0);
    rig.Add(u"GRÖßE", u"5");
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"größe"), Value(2));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"größe", 3), Value(3));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Number", std::int16_t{5}, 2), Value(2));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Number", 5, 3), Value(0));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Number", u"5"), Value(3));
    EXPECT_EQ(rig.grid.Call(u"Find", u"When", Empty()), Value(1));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"fehlt"), Value(0));
    EXPECT_THROW(rig.grid.Call(u"Find", u"Name", u"x", 0), Failure);
}

TEST(GridFind, IsRightAfterEveryKindOfChange) {
    const GridRig rig;
    for (int at = 0; at < 200; ++at) {
        rig.Add(u"n" + DecimalText(at % 40));
    }
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"N7"), Value(8));
    rig.Row(8).SetAt(u"Value", u"Name", u"anders");
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"n7"), Value(48));
    rig.grid[u"Rows"].Call(u"Remove", 48);
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"n7"), Value(87));
    rig.Add(u"ANDERS");
    rig.grid.Call(u"Sort", u"Name", 1);
    const int first = rig.Long(rig.grid.Call(u"Find", u"Name", u"Anders"));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"Anders", first + 1), Value(first + 1));
    rig.grid[u"Rows"].Call(u"Clear");
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"n7"), Value(0));
    rig.Add(u"n7");
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"n7"), Value(1));
}

TEST(GridFind, IsRightForValuesThatStandInMostRows) {
    const GridRig rig;
    for (int at = 0; at < 300; ++at) {
        rig.Add(at % 3 == 0 ? u"oft" : u"öfter");
    }
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"ÖFTER", 100), Value(101));
    rig.grid[u"Groups"](u"Add", u"Name");
    EXPECT_EQ(rig.grid.Call(u"Find", u"Name", u"öfter"), Value(103));
}

TEST(GridText, RowsGoOutAndComeBackAsTheyWere) {
    const GridRig rig;
    rig.Add(u"Wert; mit \"Zeichen\"\r\nund Zeile", 1, Date{37986.25});
    rig.Add(u"", -2.5, Empty());
    rig.Add(u" Rand ", u"12", u"2003-01-01");
    rig.Add(u"am Rand", INT32_MAX);
    rig.Add(u"am anderen", INT32_MIN);
    rig.Add(u"darüber", 2147483648.0);
    const Value text = rig.grid.Call(u"SaveRowsAsText", u";");
    const GridRig copy;
    copy.grid.Call(u"LoadRowsFromText", text, u";");
    ASSERT_EQ(copy.Count(), 6);
    for (int row = 1; row <= 6; ++row) {
        for (int column = 0; column < 4; ++column) {
            EXPECT_EQ(copy.Row(row).Call(u"Value", column), rig.Row(row).Call(u"Value", column))
                << row << "," << column;
        }
    }
    EXPECT_EQ(copy.grid.Call(u"SaveRowsAsText", u";"), text);
}

TEST(GridText, WhatIsMalformedIsRefusedAndNoRowIsAdded) {
    const GridRig rig;
    EXPECT_EQ(Refusal([&] { rig.grid.Call(u"LoadRowsFromText", u"a;1\r\n\"offen", u";"); }),
              u"Line 2: a quoted field is not closed");
    EXPECT_EQ(Refusal([&] { rig.grid.Call(u"LoadRowsFromText", u"a\r\n1;2;3;4;5", u";"); }),
              u"Line 2 has 5 fields, the grid has 4 columns");
    EXPECT_EQ(Refusal([&] { rig.grid.Call(u"LoadRowsFromText", u"\"a\"b", u";"); }),
              u"Line 1: text follows a closing quote");
    EXPECT_THROW(rig.grid.Call(u"LoadRowsFromText", u"a", u"\""), Failure);
    EXPECT_EQ(rig.Count(), 0);
    rig.grid.Call(u"LoadRowsFromText", u"eins\nzwei\rdrei", u"");
    EXPECT_EQ(rig.Names(), u"eins zwei drei");
}

TEST(GridHitTest, NumbersTheAreasInPoints) {
    const GridRig rig;
    rig.Add(u"a");
    rig.Add(u"b");
    const auto area = [&](double x, double y) { return rig.grid(u"HitTest", x, y); };
    EXPECT_EQ(area(5, 5).Call(u"Area"), Value(2));
    const Late cell = area(65, 0.75 * (22 + 18 + 2));
    EXPECT_EQ(cell.Call(u"Area"), Value(3));
    EXPECT_EQ(cell.Call(u"Row"), Value(2));
    EXPECT_EQ(cell.Call(u"Column"), Value(1));
    EXPECT_EQ(area(5, 0.75 * (22 + 18 * 2) - 0.01).Call(u"Row"), Value(2));
    EXPECT_EQ(area(5, 0.75 * (22 + 18 * 2) + 0.01).Call(u"Row"), Value(0));
    EXPECT_EQ(area(5, 500).Call(u"Area"), Value(0));
    EXPECT_EQ(area(5, 500).Call(u"Row"), Value(0));
    EXPECT_EQ(area(5, 500).Call(u"Column"), Value(-1));
    EXPECT_EQ(area(-5, 5).Call(u"Area"), Value(0));
    rig.grid.Set(u"GroupByBox", true);
    EXPECT_EQ(area(5, 5).Call(u"Area"), Value(1));
    rig.grid[u"Groups"](u"Add", u"Name");
    EXPECT_EQ(area(5, 0.75 * (38 + 22 + 2)).Call(u"Area"), Value(4));
}

TEST(GridEnumeration, GoesOverTheElementsOfTheMoment) {
    const GridRig rig;
    rig.Add(u"a");
    rig.Add(u"b");
    const auto rows = rig.grid[u"Rows"].AsObject()->Enumerate();
    rig.grid[u"Rows"].Call(u"Remove", 1);
    EXPECT_EQ(Late(*rows->Next()).Call(u"Number"), Value(0));
    EXPECT_EQ(Late(*rows->Next()).Call(u"Text", u"Name"), Value(u"b"));
    EXPECT_FALSE(rows->Next());
    rows->Restart();
    EXPECT_TRUE(rows->Next());
    int count = 0;
    for (const auto columns = rig.grid[u"Columns"].AsObject()->Enumerate(); columns->Next();) {
        ++count;
    }
    EXPECT_EQ(count, 4);
    EXPECT_THROW(rig.grid.AsObject()->Enumerate(), Failure);
}

} // namespace talvix::grid
