#include "automation/text.h"
#include "folder/copy_to_project_folder.h"
#include "folder/project_folder.h"
#include "folder/project_folder_store.h"
#include "tests/fakes/fake_mail.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace talvix {

namespace {

constexpr int kFiles = 3;

/// A rig with three files in a folder and its sub-folder.
struct SweepRig : MainRig {
    SweepRig() {
        fakes.files.MakeFile(u"P:\\Proj\\a.doc", 2000);
        fakes.files.MakeFile(u"P:\\Proj\\b.exe", 10);
        fakes.files.MakeFile(u"P:\\Proj\\Sub\\c.txt", 10);
        fakes.files.MakeFile(u"C:\\Quelle\\a.doc", 77);
        settings = {{u"DOCUMENTS/RULES", u"<Project Number>"},
                    {u"DOCUMENTS/PATH", u"P:\\Projekte"},
                    {u"DOCUMENTS/SUB_ACTIVE", u"True"},
                    {u"DOCUMENTS/SUB_LIST", u"Sub,Neu\\Tief"}};
        SetProperty(u"Projektnummer", u"4711");
    }
    void File(std::int32_t operation) {
        DocumentRecord record;
        record.subject = u"Betreff";
        main->AddDMSItem(record, ItemFiling{mail.Item(), operation, true, u""});
    }
    /// Every row shows a file that is there, and nothing that was there before has changed.
    void ExpectNothingHarmed() {
        EXPECT_EQ(fakes.files.Query(u"P:\\Proj\\a.doc")->length, 2000);
        EXPECT_EQ(fakes.files.Query(u"C:\\Quelle\\a.doc")->length, 77);
        for (int row = 1; row <= RowCount(); ++row) {
            const Value place = Cell(row, u"PhysicalStore1");
            const auto* path = place.If<std::u16string>();
            if (path != nullptr && path->starts_with(u"P:")) {
                EXPECT_TRUE(fakes.files.Query(*path)) << ToUtf8(*path);
            }
        }
    }
    /// What the user does in the document dialog before OK.
    void Confirms(std::function<void(ItemForm&)> user) {
        fakes.dialogs.onItemForm = [user = std::move(user)](ItemForm& form) {
            user(form);
            form.Click(ItemControl::btnOK);
        };
    }
    /// A row of its own to work on.
    void SelectFirst() {
        const int steps = std::exchange(fakes.journal.failAt, 0);
        AddRow(0, u"P:\\Proj\\a.doc");
        Late(gridObject).Set(u"CurrentRow", 1);
        fakes.journal.failAt = steps;
    }
    void Raise(std::u16string_view name, std::vector<Value> arguments) const {
        model->events.Raise(name, arguments);
    }
    FakeMail mail{fakes};
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
         rig.AddRow(0, u"F:\\fehlt.doc");
         rig.AddRow(2, u"http://example.org");
         rig.main->Init();
     }},
    {"import behind its form", true,
     [](SweepRig& rig) { rig.main->AddFilesFromProjectFolder(true); }},
    {"copy", true,
     [](SweepRig& rig) {
         CopyToProjectFolder(rig.main->Attached(),
                             {u"C:\\Quelle\\a.doc", u"s", u"", u"", u"", Date{}, Date{}, u""});
     }},
    {"file an item whole", true, [](SweepRig& rig) { rig.File(0); }},
    {"file an item and its attachments, wrapped", true,
     [](SweepRig& rig) {
         rig.mail.RegisterWrapper();
         rig.File(3);
     }},
    {"derive the folder", true,
     [](SweepRig& rig) {
         rig.SetFolder(u"");
         rig.fakes.messages.answers = {kAnswerYes};
         GetProjectFolder(rig.main->Attached());
     }},
    {"choose the folder", true,
     [](SweepRig& rig) {
         rig.fakes.dialogs.chosenFolders = {u"P:\\Proj"};
         rig.main->btnDMSSetStore_Click();
     }},
    {"open and forget the folder", true,
     [](SweepRig& rig) {
         rig.main->btnOpenFolder_Click();
         rig.fakes.messages.answers = {kAnswerYes};
         rig.main->btnDMSDeletetStore_Click();
     }},
    {"create the folder", true,
     [](SweepRig& rig) {
         rig.SetFolder(u"P:\\Neu\\Tief");
         rig.fakes.messages.answers = {kAnswerYes};
         CreateProjectFolderOnRequest(rig.main->Attached());
         rig.main->MkDirs(u"P:\\Neu\\Anders");
     }},
    {"enter a file and a link", true,
     [](SweepRig& rig) {
         rig.Confirms([](ItemForm& form) {
             form.Change(ItemControl::TextPhysicalStore1, u"C:\\Quelle\\a.doc");
         });
         rig.main->btnNewDocument_Click();
         rig.Confirms([](ItemForm& form) {
             form.Click(ItemControl::optLink);
             form.Drop(std::nullopt, {std::nullopt, u"http://example.org"});
         });
         rig.main->NewDMSItem();
     }},
    {"change, open, remove and export", true,
     [](SweepRig& rig) {
         rig.SelectFirst();
         rig.Confirms([](ItemForm& form) { form.Click(ItemControl::CommandPhysicalStore1); });
         rig.main->btnChangeDocument_Click();
         rig.main->OpenDocument(-1);
         rig.main->OpenDocument(1);
         rig.fakes.messages.answers = {kAnswerYes};
         rig.main->btnDeleteDocument_Click();
         rig.main->btnExportDocuments_Click();
         rig.main->FillActionCombo(u"7");
     }},
    {"the grid's events and menu", true,
     [](SweepRig& rig) {
         rig.SelectFirst();
         rig.Raise(u"BeforeClickSort", {1, false});
         rig.Raise(u"BeforeGroupChange", {1, 1, 0, 0, 0, false, false});
         rig.Raise(u"AfterGroupChange", {0, 0});
         rig.Raise(u"KeyDown", {std::int16_t{13}, std::int16_t{0}});
         for (const std::int32_t command : {3, 8}) {
             if (rig.fakes.menus.last != nullptr) {
                 rig.fakes.menus.last->choice = command;
             }
             rig.Raise(u"MouseUp", {std::int16_t{2}, std::int16_t{0}, 60, 60});
         }
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
    rig.ExpectNothingHarmed();
    ASSERT_FALSE(testing::Test::HasFailure());
    rig.SetFolder(u"P:\\Proj");
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
    EXPECT_GT(faults, 3000);
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
