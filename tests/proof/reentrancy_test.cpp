// From inside each call out of the component somebody does something else with it: removes, adds,
// imports, changes, initialises, lets go.
#include "automation/text.h"
#include "tests/proof/operations.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <map>

namespace talvix {

namespace {

/// Keeps what a host lets go of until the call that it happens in has come back.
struct ReentrancyRig : SweepRig {
    std::vector<std::shared_ptr<Main>> released;
};

struct Action {
    const char* name;
    std::function<void(ReentrancyRig&)> run;
};

const Action kActions[] = {
    {"remove the rows", [](ReentrancyRig& rig) { Late(rig.gridObject)[u"Rows"].Call(u"Clear"); }},
    {"add",
     [](ReentrancyRig& rig) {
         rig.main->AddFile(u"P:\\Proj\\b.exe", u"b", u"", u"", Date{}, Date{});
     }},
    {"import", [](ReentrancyRig& rig) { rig.main->AddFilesFromProjectFolderEvent(); }},
    {"import behind its form",
     [](ReentrancyRig& rig) { rig.main->AddFilesFromProjectFolder(true); }},
    {"change", [](ReentrancyRig& rig) { rig.main->btnChangeDocument_Click(); }},
    {"new", [](ReentrancyRig& rig) { rig.main->NewDMSItem(); }},
    {"delete",
     [](ReentrancyRig& rig) {
         rig.fakes.messages.answers = {kAnswerYes};
         rig.main->btnDeleteDocument_Click();
     }},
    {"group and sort",
     [](ReentrancyRig& rig) {
         if (rig.model->columns.Count() == 15) {
             Late(rig.gridObject)[u"Groups"].Call(u"Add", u"Subject");
             rig.model->rows.SortBy(rig.model->columns.IndexOf(u"ItemSize"), true);
         }
     }},
    {"initialise",
     [](ReentrancyRig& rig) {
         rig.main->InitSGDMS();
         rig.main->Init();
     }},
    {"dereference", [](ReentrancyRig& rig) { rig.main->DereferenceLibraries(); }},
    {"close the item",
     [](ReentrancyRig& rig) {
         rig.managing->With(u"Item", Nothing());
         rig.page->Remove(u"Controls");
     }},
    {"release the last reference",
     [](ReentrancyRig& rig) {
         rig.released.push_back(rig.main);
         rig.main = std::make_shared<Main>(rig.fakes.ports, rig.fakes.trace, rig.forms);
     }},
    {"destroy the grid", [](ReentrancyRig& rig) { rig.fakes.journal.isGridGone = true; }},
};

/// The calls out of an operation by their number, at most so many of one kind.
std::vector<int> CallsOf(const Operation& operation, std::size_t ofOneKind) {
    SweepRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    std::map<std::u16string, std::size_t, std::less<>> kinds;
    std::vector<int> calls;
    int number = 0;
    rig.fakes.journal.onStep = [&](std::u16string_view what) {
        ++number;
        if (++kinds[std::u16string(what)] <= ofOneKind) {
            calls.push_back(number);
        }
    };
    operation.run(rig);
    rig.fakes.journal.onStep = nullptr;
    return calls;
}

void RunFromInside(const Operation& operation, int call, const Action& action) {
    ReentrancyRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    Journal& journal = rig.fakes.journal;
    int number = 0;
    bool happened = false;
    journal.onStep = [&](std::u16string_view) {
        if (++number == call && !std::exchange(happened, true)) {
            EXPECT_NO_THROW(action.run(rig));
        }
    };
    ASSERT_NO_THROW(operation.run(rig));
    journal.onStep = nullptr;
    ASSERT_TRUE(happened);
    rig.released.clear();
    journal.isGridGone = false;
    ASSERT_FALSE(testing::Test::HasFailure());
    if (rig.main == nullptr) {
        return;
    }
    rig.ExpectNothingHarmed();
    ASSERT_FALSE(testing::Test::HasFailure());
    if (std::string(action.name) != "close the item") {
        ASSERT_NO_FATAL_FAILURE(rig.ExpectWorksAsIfNothingHadBeen());
    }
}

} // namespace

TEST(Reentrancy, WhateverHappensInsideACallOutsideHarmsNothing) {
    const std::size_t ofOneKind = ProofCount(1, 20);
    std::size_t pairs = 0;
    std::size_t place = 0;
    for (const Operation& operation : Operations()) {
        for (const int call : CallsOf(operation, ofOneKind)) {
            for (const Action& action : kActions) {
                if (place++ % ProofStep() != 0) {
                    continue;
                }
                SCOPED_TRACE(std::string(operation.name) + ", call " + std::to_string(call) + ", " +
                             action.name);
                ASSERT_NO_FATAL_FAILURE(RunFromInside(operation, call, action));
                ++pairs;
            }
        }
    }
    StateProof("re-entrancy", pairs,
               std::to_string(std::size(kActions)) + " actions from inside every kind of call of " +
                   std::to_string(Operations().size()) + " operations");
}

} // namespace talvix
