#include "workbench/host/list_history.h"

#include <gtest/gtest.h>

namespace talvix::host {

namespace {

ListHistory::List Rows(std::size_t count) {
    return ListHistory::List(count, Document{{u"ID", 1}});
}

} // namespace

TEST(ListHistory, GoesBackAndForthThroughTheChanges) {
    ListHistory history;
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.Undo(Rows(0)));
    history.Keep(Rows(0));
    history.Keep(Rows(1)); // now there are two
    EXPECT_EQ(history.Undo(Rows(2)), Rows(1));
    EXPECT_EQ(history.Undo(Rows(1)), Rows(0));
    EXPECT_FALSE(history.CanUndo());
    EXPECT_EQ(history.Redo(Rows(0)), Rows(1));
    EXPECT_EQ(history.Redo(Rows(1)), Rows(2));
    EXPECT_FALSE(history.CanRedo());
}

TEST(ListHistory, ANewChangeForgetsWhatWasUndone) {
    ListHistory history;
    history.Keep(Rows(0));
    history.Undo(Rows(1));
    history.Keep(Rows(0));
    EXPECT_FALSE(history.CanRedo());
    EXPECT_TRUE(history.CanUndo());
}

TEST(ListHistory, TheOldestStatesGoWhenThereAreTooMany) {
    ListHistory history;
    for (std::size_t step = 0; step < ListHistory::kMostSteps + 10; ++step) {
        history.Keep(Rows(step));
    }
    std::size_t steps = 0;
    while (history.CanUndo()) {
        history.Undo(Rows(0));
        ++steps;
    }
    EXPECT_EQ(steps, ListHistory::kMostSteps);
    history.Keep(Rows(1));
    history.Keep(ListHistory::List(ListHistory::kMostRows));
    history.Undo(Rows(0));
    EXPECT_FALSE(history.CanUndo()) << "the last state is kept however large it is, the others go";
}

} // namespace talvix::host
