#include "tests/proof/operations.h"

#include "automation/resume_next.h"
#include "automation/text.h"
#include "folder/copy_to_project_folder.h"
#include "folder/project_folder.h"
#include "folder/project_folder_store.h"
#include "tests/proof/failing_memory.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

/// Runs what the component does, the only place where memory is counted.
template <typename Work>
void Inside(Work&& work) {
    const CountedMemory counted;
    work();
}

/// Runs an inner procedure as the public ones run it.
template <typename Work>
void InsideProcedure(SweepRig& rig, Work&& work) {
    Inside([&] { ResumeNext{rig.fakes.trace, u"Procedure"}(work); });
}

const Operation kOperations[] = {
    {"attach", false,
     [](SweepRig& rig) {
         rig.Reference();
         Inside([&] { rig.main->InitSGDMS(); });
         Inside([&] { rig.main->Init(); });
     }},
    {"import", true,
     [](SweepRig& rig) { Inside([&] { rig.main->AddFilesFromProjectFolderEvent(); }); }},
    {"add file", true,
     [](SweepRig& rig) {
         Inside([&] { rig.main->AddFile(u"P:\\Proj\\a.doc", u"a", u"", u"", Date{}, Date{}); });
     }},
    {"add link", true,
     [](SweepRig& rig) {
         DocumentRecord record;
         record.objectType = kLinkDocument;
         Inside([&] { rig.main->AddDMSItem(record, ItemFiling{}); });
     }},
    {"open a list", true,
     [](SweepRig& rig) {
         rig.AddRow(0, u"P:\\Proj\\a.doc");
         rig.AddRow(0, u"F:\\fehlt.doc");
         rig.AddRow(2, u"http://example.org");
         Inside([&] { rig.main->Init(); });
     }},
    {"import behind its form", true,
     [](SweepRig& rig) { Inside([&] { rig.main->AddFilesFromProjectFolder(true); }); }},
    {"copy", true,
     [](SweepRig& rig) {
         const DocumentCopy copy{u"C:\\Quelle\\a.doc", u"s", u"", u"", u"", Date{}, Date{}, u""};
         InsideProcedure(rig, [&] { CopyToProjectFolder(rig.main->Attached(), copy); });
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
         InsideProcedure(rig, [&] { GetProjectFolder(rig.main->Attached()); });
     }},
    {"choose the folder", true,
     [](SweepRig& rig) {
         rig.fakes.dialogs.chosenFolders = {u"P:\\Proj"};
         Inside([&] { rig.main->btnDMSSetStore_Click(); });
     }},
    {"open and forget the folder", true,
     [](SweepRig& rig) {
         Inside([&] { rig.main->btnOpenFolder_Click(); });
         rig.fakes.messages.answers = {kAnswerYes};
         Inside([&] { rig.main->btnDMSDeletetStore_Click(); });
     }},
    {"create the folder", true,
     [](SweepRig& rig) {
         rig.SetFolder(u"P:\\Neu\\Tief");
         rig.fakes.messages.answers = {kAnswerYes};
         InsideProcedure(rig, [&] { CreateProjectFolderOnRequest(rig.main->Attached()); });
         Inside([&] { rig.main->MkDirs(u"P:\\Neu\\Anders"); });
     }},
    {"enter a file and a link", true,
     [](SweepRig& rig) {
         rig.Confirms([](ItemForm& form) {
             form.Change(ItemControl::TextPhysicalStore1, u"C:\\Quelle\\a.doc");
         });
         Inside([&] { rig.main->btnNewDocument_Click(); });
         rig.Confirms([](ItemForm& form) {
             form.Click(ItemControl::optLink);
             form.Drop(std::nullopt, {std::nullopt, u"http://example.org"});
         });
         Inside([&] { rig.main->NewDMSItem(); });
     }},
    {"change, open, remove and export", true,
     [](SweepRig& rig) {
         rig.SelectFirst();
         rig.Confirms([](ItemForm& form) { form.Click(ItemControl::CommandPhysicalStore1); });
         Inside([&] { rig.main->btnChangeDocument_Click(); });
         Inside([&] { rig.main->OpenDocument(-1); });
         Inside([&] { rig.main->OpenDocument(1); });
         rig.fakes.messages.answers = {kAnswerYes};
         Inside([&] { rig.main->btnDeleteDocument_Click(); });
         Inside([&] { rig.main->btnExportDocuments_Click(); });
         Inside([&] { rig.main->FillActionCombo(u"7"); });
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
         Inside([&] { rig.main->DereferenceLibraries(); });
         rig.main.reset();
     }},
};

} // namespace

SweepRig::SweepRig() {
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

void SweepRig::File(std::int32_t operation) {
    DocumentRecord record;
    record.subject = u"Betreff";
    const ItemFiling filing{mail.Item(), operation, true, u""};
    Inside([&] { main->AddDMSItem(record, filing); });
}

void SweepRig::ExpectNothingHarmed() {
    EXPECT_FALSE(fakes.journal.formsWereLeft);
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

void SweepRig::ExpectWorksAsIfNothingHadBeen() {
    SetFolder(u"P:\\Proj");
    Reference();
    main->InitSGDMS();
    main->Init();
    ASSERT_EQ(model->columns.Count(), 15U);
    main->AddFilesFromProjectFolderEvent();
    for (const auto* path : {u"P:\\Proj\\a.doc", u"P:\\Proj\\b.exe", u"P:\\Proj\\Sub\\c.txt"}) {
        ASSERT_GT(model->rows.Find(model->columns.IndexOf(u"PhysicalStore1"), Value(path), 1), 0);
    }
    ASSERT_TRUE(model->Redraw());
}

std::span<const Operation> Operations() {
    return kOperations;
}

} // namespace talvix
