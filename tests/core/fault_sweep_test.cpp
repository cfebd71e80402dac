#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

#include <functional>

namespace talvix {

namespace {

constexpr int kFiles = 3;

/// A rig with three files in a folder and its sub-folder.
struct SweepRig : MainRig {
    SweepRig() {
        fakes.files.MakeFile(u"P:\\Proj\\a.doc", 2000);
        fakes.files.MakeFile(u"P:\\Proj\\b.exe", 10);
        fakes.files.MakeFile(u"P:\\Proj\\Sub\\c.txt", 10);
    }
};

struct Operation {
    const char* name;
    bool attached; ///< runs on a component that is attached already
    std::function<void(SweepRig&)> run;
};

const Operation kOperations[] = {
    {"attach", false,
     [](SweepRig& rig) {
         rig.Reference();
         rig.main->InitSGDMS();
         rig.main->Init();
     }},
    {"import", true, [](SweepRig& rig) { rig.main->AddFilesFromProjectFolderEvent(); }},
    {"add file", true,
     [](SweepRig& rig) { rig.main->AddFile(u"P:\\Proj\\a.doc", u"a", u"", u"", Date{}, Date{}); }},
    {"add link", true,
     [](SweepRig& rig) {
         DocumentRecord record;
         record.objectType = kLinkDocument;
         rig.main->AddDMSItem(record, ItemFiling{});
     }},
    {"open a list", true,
     [](SweepRig& rig) {
         rig.AddRow(0, u"P:\\Proj\\a.doc");
         rig.AddRow(0, u"P:\\Proj\\fehlt.doc");
         rig.AddRow(2, u"http://example.org");
         rig.main->Init();
     }},
    {"detach", true,
     [](SweepRig& rig) {
         rig.main->DereferenceLibraries();
         rig.main.reset();
     }},
};

int StepsOf(const Operation& operation) {
    SweepRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    rig.fakes.journal.steps = 0;
    operation.run(rig);
    return rig.fakes.journal.steps;
}

void RunWithFault(const Operation& operation, int failAt, bool failOn) {
    SweepRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    Journal& journal = rig.fakes.journal;
    journal.steps = 0;
    journal.failAt = failAt;
    journal.failOn = failOn;
    ASSERT_NO_THROW(operation.run(rig));
    ASSERT_FALSE(journal.failed.empty());
    if (!failOn && journal.failed != u"Redraw") {
        ASSERT_TRUE(rig.model->Redraw());
    }
    journal.failAt = 0;
    if (rig.main == nullptr) {
        return;
    }
    // The next normal operations work as if nothing had been.
    rig.Reference();
    rig.main->InitSGDMS();
    rig.main->Init();
    ASSERT_EQ(rig.model->columns.Count(), 15U);
    rig.main->AddFilesFromProjectFolderEvent();
    for (const auto* path : {u"P:\\Proj\\a.doc", u"P:\\Proj\\b.exe", u"P:\\Proj\\Sub\\c.txt"}) {
        ASSERT_GT(
            rig.model->rows.Find(rig.model->columns.IndexOf(u"PhysicalStore1"), Value(path), 1), 0);
    }
    ASSERT_TRUE(rig.model->Redraw());
}

} // namespace

TEST(FaultSweep, NoFailingCallOutsideHarmsAnything) {
    int faults = 0;
    for (const Operation& operation : kOperations) {
        const int steps = StepsOf(operation);
        for (int failAt = 1; failAt <= steps; ++failAt) {
            for (const bool failOn : {false, true}) {
                SCOPED_TRACE(std::string(operation.name) + ", call " + std::to_string(failAt) +
                             (failOn ? " and on" : ""));
                ASSERT_NO_FATAL_FAILURE(RunWithFault(operation, failAt, failOn));
                ++faults;
            }
        }
    }
    EXPECT_GT(faults, 700);
    RecordProperty("faults", faults);
    std::printf("%d faults\n", faults);
}

TEST(FaultSweep, TheImportCountsEveryFileOnceWithoutFaults) {
    SweepRig rig;
    rig.Attach();
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), kFiles);
}

} // namespace talvix
