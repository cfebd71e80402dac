#include "tests/grid/grid_rig.h"

#include <gtest/gtest.h>

namespace talvix::grid {

namespace {

struct FilterRig : GridRig {
    FilterRig() {
        Add(u"Grundriss Süd", 1, Date{45000});
        Add(u"Grundriss Nord", 2);
        Add(u"Schnitt SÜD", 31);
    }
    /// Selects all shown rows as a user does and tells which those are.
    std::u16string Shown() const {
        grid[u"Selection"].Call(u"Clear");
        grid[u"Selection"].Call(u"Add", 1, Count());
        const Value filter = grid.Call(u"Filter");
        grid.Set(u"Filter", filter); // rows that it hides leave the selection
        const std::u16string ranges = Ranges();
        grid[u"Selection"].Call(u"Clear");
        return ranges;
    }
};

} // namespace

TEST(GridFilter, IsOffUntilAskedFor) {
    FilterRig rig;
    EXPECT_EQ(rig.grid.Call(u"Filter"), Value(u""));
    EXPECT_EQ(rig.grid.Call(u"FilterColumn"), Value(u""));
    EXPECT_EQ(rig.Shown(), u"1-3 ");
}

TEST(GridFilter, HidesRowsInTheViewOnly) {
    FilterRig rig;
    rig.grid.Set(u"Filter", u"nord");
    EXPECT_EQ(rig.Count(), 3);
    EXPECT_EQ(rig.Names(), u"Grundriss Süd Grundriss Nord Schnitt SÜD");
    EXPECT_EQ(rig.Shown(), u"2-2 ");
    EXPECT_EQ(rig.grid.Call(u"FilterCount"), Value(1));
    EXPECT_EQ(rig.grid.Call(u"Find", u"Number", 31), Value(3));
}

TEST(GridFilter, SearchesWithoutCaseAndUmlautsToo) {
    FilterRig rig;
    rig.grid.Set(u"Filter", u"süd");
    EXPECT_EQ(rig.Shown(), u"1-1 3-3 ");
}

TEST(GridFilter, EveryWordHasToStandInSomeColumn) {
    FilterRig rig;
    rig.grid.Set(u"Filter", u"  31  schnitt ");
    EXPECT_EQ(rig.Shown(), u"3-3 ");
    rig.grid.Set(u"Filter", u"grundriss 31");
    EXPECT_EQ(rig.Shown(), u"");
}

TEST(GridFilter, SearchesOneColumnWhereAsked) {
    FilterRig rig;
    rig.grid.Set(u"Filter", u"1");
    EXPECT_EQ(rig.Shown(), u"1-1 3-3 ");
    rig.grid.Set(u"FilterColumn", u"Name");
    EXPECT_EQ(rig.grid.Call(u"FilterColumn"), Value(u"Name"));
    EXPECT_EQ(rig.Shown(), u"");
    rig.grid.Set(u"FilterColumn", -1);
    EXPECT_EQ(rig.Shown(), u"1-1 3-3 ");
    EXPECT_NE(Refusal([&] { rig.grid.Set(u"FilterColumn", u"fehlt"); }), u"not refused");
}

TEST(GridFilter, HiddenColumnsAreNotSearched) {
    FilterRig rig;
    rig.grid.Set(u"Filter", u"31");
    EXPECT_EQ(rig.Shown(), u"3-3 ");
    rig.grid(u"Columns", u"Number").Set(u"Hidden", true);
    EXPECT_EQ(rig.Shown(), u"");
}

TEST(GridFilter, FollowsWhatIsWritten) {
    FilterRig rig;
    rig.grid.Set(u"Filter", u"schnitt");
    rig.Row(2).SetAt(u"Value", u"Name", u"Schnitt Nord");
    EXPECT_EQ(rig.Shown(), u"2-3 ");
    rig.Add(u"Schnitt Ost");
    EXPECT_EQ(rig.Shown(), u"2-4 ");
    rig.grid[u"Rows"].Call(u"Remove", 3);
    EXPECT_EQ(rig.Shown(), u"2-3 ");
}

TEST(GridFilter, MoreTextNarrowsAndLessWidens) {
    FilterRig rig;
    for (const auto* text : {u"s", u"sü", u"süd sch"}) {
        rig.grid.Set(u"Filter", text);
    }
    EXPECT_EQ(rig.Shown(), u"3-3 ");
    rig.grid.Set(u"Filter", u"sü");
    EXPECT_EQ(rig.Shown(), u"1-1 3-3 ");
    rig.grid.Set(u"Filter", u"");
    EXPECT_EQ(rig.Shown(), u"1-3 ");
}

TEST(GridFilter, HiddenRowsLeaveTheSelectionAndTheCurrentRowMovesOffThem) {
    FilterRig rig;
    rig.grid.Set(u"CurrentRow", 1);
    rig.grid[u"Selection"].Call(u"Add", 1, 2);
    rig.grid.Set(u"Filter", u"nord");
    EXPECT_EQ(rig.Ranges(), u"2-2 ");
    EXPECT_EQ(rig.grid[u"CurrentRow"].Call(u"Number"), Value(2));
    rig.Row(2).SetAt(u"Value", u"Name", u"Grundriss West");
    EXPECT_EQ(rig.Ranges(), u"");
}

TEST(GridFilter, HeadingsWithoutShownRowsAreHiddenToo) {
    FilterRig rig;
    rig.grid[u"Groups"].Call(u"Add", u"Number");
    rig.grid.Set(u"Filter", u"nord");
    EXPECT_EQ(rig.Count(), 6);
    EXPECT_EQ(rig.Shown(), u"3-4 ");
}

TEST(GridSelectionText, IsATableOfTheVisibleColumns) {
    GridRig rig;
    rig.grid(u"Columns", u"Name").Set(u"Caption", u"Betreff");
    rig.grid(u"Columns", u"Number").Set(u"Caption", u"Nr.");
    rig.grid(u"Columns", u"When").Set(u"Hidden", true);
    rig.Add(u"a\tb", 1);
    rig.Add(u"c", 2);
    EXPECT_EQ(rig.grid.Call(u"SelectionText"), Value(u""));
    rig.grid[u"Selection"].Call(u"Add", 1, 2);
    EXPECT_EQ(rig.grid.Call(u"SelectionText"), Value(u"Betreff\tNr.\r\n\"a\tb\"\t1\r\nc\t2\r\n"));
}

TEST(GridLayout, ComesBackAsItWasSaved) {
    GridRig rig;
    rig.Add(u"b", 2);
    rig.Add(u"a", 1);
    rig.grid(u"Columns", u"When").Set(u"Position", 0);
    rig.grid(u"Columns", u"Name").Set(u"Width", 333);
    rig.grid(u"Columns", u"Icon").Set(u"Hidden", true);
    rig.grid.Call(u"Sort", u"Name", 1);
    rig.grid[u"Groups"].Call(u"Add", u"Number", 1);
    const Value saved = rig.grid.Call(u"SaveLayout");
    rig.grid[u"Groups"].Call(u"Clear");
    rig.grid.Call(u"Sort", u"Number");
    rig.grid(u"Columns", u"When").Set(u"Position", 3);
    rig.grid(u"Columns", u"Name").Set(u"Width", 10);
    rig.grid(u"Columns", u"Icon").Set(u"Hidden", false);
    rig.grid.Call(u"LoadLayout", saved);
    EXPECT_EQ(rig.grid.Call(u"SaveLayout"), saved);
    EXPECT_EQ(rig.grid(u"Columns", u"When").Call(u"Position"), Value(0));
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"Width"), Value(333));
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"SortOrder"), Value(1));
    EXPECT_EQ(rig.Count(), 4);
}

TEST(GridLayout, OfOtherColumnsIsTakenAsFarAsItGoes) {
    GridRig rig;
    rig.grid.Call(u"LoadLayout", u"TalvixGrid.Layout;1\r\nColumn;gone;50;0\r\nColumn;When;60;0\r\n"
                                 u"Sort;gone;0\r\n");
    EXPECT_EQ(rig.grid(u"Columns", 0).Call(u"Key"), Value(u"When"));
    EXPECT_EQ(rig.grid(u"Columns", 1).Call(u"Key"), Value(u"Name"));
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"SortOrder"), Value(-1));
}

TEST(GridLayout, ATextThatIsNoneIsRefusedAndChangesNothing) {
    GridRig rig;
    const Value before = rig.grid.Call(u"SaveLayout");
    for (const auto* text :
         {u"", u"x", u"TalvixGrid.Layout", u"TalvixGrid.Layout;2", u"TalvixGrid.Layout;1\r\nColumn",
          u"TalvixGrid.Layout;1\r\nColumn;Name;99999;0", u"TalvixGrid.Layout;1\r\nColumn;Name;9;2",
          u"TalvixGrid.Layout;1\r\nColumn;Name;9;0\r\nWurst;Name;1",
          u"TalvixGrid.Layout;1\r\nSort;Name;x", u"TalvixGrid.Layout;1\r\nColumn;\"Name"}) {
        EXPECT_NE(Refusal([&] { rig.grid.Call(u"LoadLayout", text); }), u"not refused")
            << ToUtf8(text);
        EXPECT_EQ(rig.grid.Call(u"SaveLayout"), before);
    }
    EXPECT_EQ(
        Refusal([&] { rig.grid.Call(u"LoadLayout", u"TalvixGrid.Layout;1\r\nColumn;Name;-1;0"); }),
        u"Line 2 of the saved layout: \"-1\" is no number from 0 to 10000");
}

TEST(GridLayout, WidthsFitTextsOnceThereIsAWindow) {
    GridRig rig;
    EXPECT_EQ(Refusal([&] { rig.grid(u"Columns", u"Name").Call(u"BestFit"); }),
              u"A column can be fitted to its texts once the grid has a window");
}

TEST(GridFilter, LooksAtWhatColumnsHoldNow) {
    FilterRig rig;
    rig.grid.Set(u"Filter", u"31");
    EXPECT_EQ(rig.Shown(), u"3-3 ");
    rig.grid(u"Columns", u"Number").Set(u"Hidden", true);
    EXPECT_EQ(rig.grid.Call(u"FilterCount"), Value(0));
    rig.grid(u"Columns", u"Number").Set(u"Hidden", false);
    EXPECT_EQ(rig.grid.Call(u"FilterCount"), Value(1));
}

} // namespace talvix::grid
