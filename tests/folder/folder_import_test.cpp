#include "automation/text.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

struct ImportRig : MainRig {
    ImportRig() {
        Attach();
        fakes.files.MakeFolder(u"P:\\Proj");
        fakes.journal.Clear();
    }
    std::size_t Saves() const { return fakes.journal.Count(u"Managing.WriteGridDataToItemBody"); }
};

} // namespace

TEST(FolderImport, AddsEveryFileOfTheFolderAndItsSubFoldersAndSavesOnce) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\Sub\\b.txt", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\Sub\\Tief\\c.txt", 1);
    rig.fakes.journal.Clear();
    rig.main->AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.RowCount(), 3);
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"P:\\Proj\\a.doc"));
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), Value(u"doc-Datei"));
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u""));
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore2"), Value(u"\\Sub"));
    EXPECT_EQ(rig.Cell(3, u"Subject"), Value(u"c.txt"));
    EXPECT_EQ(rig.Saves(), 1U);
    EXPECT_EQ(rig.fakes.journal.Count(u"pump"), 2U);
    EXPECT_TRUE(rig.model->Redraw());
}

TEST(FolderImport, AFileListedWithOtherCaseIsSkipped) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\Größe.DOC", 1);
    rig.AddRow(0, u"p:\\proj\\gRÖßE.doc");
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Saves(), 0U);
}

TEST(FolderImport, AFileListedUnderAnotherFormOfItsPathIsAddedAgain) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
    rig.AddRow(0, u"\\\\srv\\daten\\Proj\\a.doc");
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 2);
}

TEST(FolderImport, FilesHaveTheSamePathInWhateverFormTheirFolderIsKept) {
    struct Case {
        const char16_t* folder;
        const char16_t* shownFolder; ///< of a file in "Sub": what is not in the folder's form stays
    };
    const Case cases[] = {{u"P:\\Proj", u"\\Sub"},
                          {u"P:\\Proj\\", u"Sub"},
                          {u"p:\\PROJ", u"\\Sub"},
                          {u"P:/Proj", u"P:\\Proj\\Sub"},
                          {u"P:\\Proj\\Sub\\..", u"P:\\Proj\\Sub"},
                          {u"P:\\Proj\\.", u"P:\\Proj\\Sub"},
                          {u"P:\\\\Proj", u"P:\\Proj\\Sub"},
                          {u"P:\\Proj.", u"P:\\Proj\\Sub"},
                          {u"P:\\Proj. .\\", u"P:\\Proj\\Sub"},
                          {u"P:\\Neu\\..\\Proj\\\\", u"P:\\Proj\\Sub"}};
    for (const Case& each : cases) {
        SCOPED_TRACE(ToUtf8(each.folder));
        ImportRig rig;
        rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 5000);
        rig.fakes.files.MakeFile(u"P:\\Proj\\Sub\\b.doc", 1);
        rig.SetFolder(each.folder);
        rig.main->AddFilesFromProjectFolderEvent();
        ASSERT_EQ(rig.RowCount(), 2);
        const bool isOtherCase = each.folder[0] == u'p';
        EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"),
                  Value(isOtherCase ? u"p:\\PROJ\\a.doc" : u"P:\\Proj\\a.doc"));
        EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"5 KB"));
        EXPECT_EQ(rig.Cell(2, u"PhysicalStore2"), Value(each.shownFolder));
        rig.SetFolder(u"P:\\Proj");
        rig.main->AddFilesFromProjectFolderEvent();
        EXPECT_EQ(rig.RowCount(), 2) << "they are known again";
    }
}

TEST(FolderImport, AFolderWithoutDriveLiesInTheCurrentOne) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"C:\\Start\\Proj\\Sub\\b.doc", 1);
    rig.SetFolder(u"Proj");
    rig.main->AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"C:\\Start\\Proj\\Sub\\b.doc"));
}

TEST(FolderImport, SubFoldersAreThoseThatAreThereAfterTheFiles) {
    ImportRig rig;
    FakeFiles& files = rig.fakes.files;
    files.MakeFile(u"P:\\Proj\\a.doc", 1);
    files.MakeFolder(u"P:\\Proj\\Alt");
    rig.managing->On(u"GetNextID", [&](std::span<const Value>) -> Value {
        if (rig.nextId++ == 100) {
            files.MakeFile(u"P:\\Proj\\Neu\\b.doc", 1);
            files.Remove(u"P:\\Proj\\Alt");
        }
        return rig.nextId;
    });
    rig.fakes.journal.Clear();
    rig.main->AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.RowCount(), 2);
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore1"), Value(u"P:\\Proj\\Neu\\b.doc"));
    EXPECT_EQ(rig.fakes.journal.Count(u"pump"), 1U);
    EXPECT_EQ(rig.fakes.journal.Count(u"list P:\\Proj\\Alt"), 0U);
}

TEST(FolderImport, FoldersAreReadInDepthFirstEachAfterItsPump) {
    ImportRig rig;
    for (const auto* name : {u"a\\c\\1.doc", u"a\\d\\2.doc", u"b\\3.doc"}) {
        rig.fakes.files.MakeFile(std::u16string(u"P:\\Proj\\") + name, 1);
    }
    rig.fakes.journal.Clear();
    rig.main->SetStopImport(false);
    int pumps = 0;
    rig.fakes.timers.onPending = [&] {
        ++pumps;
        rig.main->SetStopImport(pumps == 3); // before "d"; whoever goes on takes it back
    };
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.LinesOf({u"list ", u"pump"}),
              Lines({u"list P:\\Proj\\", u"pump", u"list P:\\Proj\\a\\", u"pump",
                     u"list P:\\Proj\\a\\c\\", u"list P:\\Proj\\a\\c\\", u"pump", u"pump",
                     u"list P:\\Proj\\b\\", u"list P:\\Proj\\b\\"}));
    EXPECT_EQ(rig.RowCount(), 2);
}

TEST(FolderImport, AFolderThatLeadsOutOfTheProjectsFolderIsNotRead) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\fremd.doc", 1);
    rig.fakes.files.onList = [](std::u16string_view folder) -> std::optional<FolderListing> {
        if (folder == u"P:\\Proj\\") {
            return FolderListing{{}, {u"..", u"x"}, true};
        }
        return std::nullopt;
    };
    rig.fakes.files.MakeFile(u"P:\\Proj\\x\\a.doc", 1);
    rig.main->AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"a.doc"));
}

TEST(FolderImport, AFolderThatTheSystemTakesForTheOneAroundItIsNotReadForEver) {
    ImportRig rig;
    rig.fakes.files.onList = [](std::u16string_view) {
        return FolderListing{{{u"a.doc", FileFacts{false, 1}}}, {u"...", u" "}, true};
    };
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.fakes.journal.Count(u"pump"), 2U);
}

TEST(FolderImport, ATreeOfTenThousandLevelsIsReadToItsEnd) {
    ImportRig rig;
    rig.fakes.files.pathsAreFull = true;
    int levels = 10000;
    rig.fakes.files.onList = [&](std::u16string_view) -> std::optional<FolderListing> {
        if (levels == 0) {
            return FolderListing{{{u"tief.doc", FileFacts{false, 1}}}, {}, true};
        }
        --levels;
        return FolderListing{{}, {u"x"}, true};
    };
    rig.main->AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"tief.doc"));
    EXPECT_EQ(rig.fakes.journal.Count(u"pump"), 10000U);
}

TEST(FolderImport, AnEmptyFolderAddsNothingAndDoesNotSave) {
    ImportRig rig;
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_EQ(rig.Saves(), 0U);
}

TEST(FolderImport, AFolderThatCannotBeListedAddsNothing) {
    ImportRig rig;
    rig.SetFolder(u"Q:\\gibtsnicht");
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_TRUE(rig.model->Redraw());
}

TEST(FolderImport, StoppedInASubFolderKeepsWhatWasAddedAndSavesIt) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\Sub\\b.doc", 1);
    rig.fakes.timers.onPending = [&] { rig.main->SetStopImport(true); };
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Saves(), 1U);
}

TEST(FolderImport, StoppedFromTheStartAddsOneFileButDoesNotCountIt) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\b.doc", 1);
    rig.main->SetStopImport(true);
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Saves(), 0U);
    EXPECT_EQ(rig.main->strAddingFile(), u"a.doc");
}

TEST(FolderImport, ARowRemovedDuringThePumpIsAddedAgainWhenItsFileComes) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\Sub\\b.doc", 1);
    rig.AddRow(0, u"P:\\Proj\\Sub\\b.doc");
    rig.fakes.timers.onPending = [&] { Late(rig.gridObject)[u"Rows"][u"Clear"]; };
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 1);
}

TEST(FolderImport, SortedRowsAreInPlaceAfterwards) {
    ImportRig rig;
    for (const auto* name : {u"P:\\Proj\\c.doc", u"P:\\Proj\\a.doc", u"P:\\Proj\\Sub\\b.doc"}) {
        rig.fakes.files.MakeFile(name, 1);
    }
    Late(rig.gridObject).Call(u"Sort", u"Subject", 1);
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"c.doc"));
    EXPECT_EQ(rig.Cell(2, u"Subject"), Value(u"b.doc"));
    rig.main->AddFile(u"P:\\Proj\\d.doc", u"d.doc", u"", u"", {}, {});
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"d.doc"))
        << "what comes later finds its place at once";
}

TEST(FolderImport, RowsOfAClosedGroupAreOpenedForEveryFile) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\b.txt", 1);
    const Late grid(rig.gridObject);
    rig.AddRow(2, u"http://a");
    rig.AddRow(2, u"http://b");
    grid[u"Rows"](u"Item", 2).SetAt(u"Value", u"ObjectDescription", u"doc-Datei");
    grid[u"Groups"].Call(u"Add", u"ObjectDescription");
    grid.Call(u"CollapseAll");
    rig.main->AddFilesFromProjectFolderEvent();
    const Late rows = grid[u"Rows"];
    std::vector<Value> headings;
    for (std::int32_t number = 1; number <= rig.RowCount(); ++number) {
        const Late row = rows(u"Item", number);
        if (row.Call(u"IsGroup") == Value(true)) {
            headings.push_back(row.Call(u"Expanded"));
        }
    }
    EXPECT_EQ(headings, (std::vector<Value>{false, true, true}));
}

TEST(FolderImport, ARowThatWasAddedBeforeTheStopIsInItsPlace) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
    rig.AddRow(2, u"http://z");
    Late(rig.gridObject).Call(u"Sort", u"PhysicalStore1", 1);
    rig.fakes.journal.Clear();
    rig.main->SetStopImport(true);
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"P:\\Proj\\a.doc"));
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"1 KB"));
}

TEST(FolderImport, ARowThatIsAddedDuringThePumpIsPutInItsPlaceAtOnce) {
    ImportRig rig;
    rig.fakes.files.MakeFolder(u"P:\\Proj\\Sub");
    rig.AddRow(2, u"http://z");
    Late(rig.gridObject).Call(u"Sort", u"PhysicalStore1", 1);
    rig.fakes.timers.onPending = [&] {
        rig.main->AddFile(u"P:\\Proj\\von Hand.doc", u"von Hand", u"", u"", {}, {});
    };
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"P:\\Proj\\von Hand.doc"));
}

TEST(FolderImport, TheSizeOfALinkIsThatOfItsFile) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 5000);
    rig.fakes.files.links = {u"P:\\PROJ\\A.DOC"};
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"5 KB"));
}

TEST(FolderImport, OneClassIsAskedForOnceAndProgramsEachForThemselves) {
    ImportRig rig;
    for (const auto* name : {u"a.txt", u"b.txt", u"c.TXT", u"d.exe", u"e.exe"}) {
        rig.fakes.files.MakeFile(std::u16string(u"P:\\Proj\\") + name, 1);
    }
    rig.fakes.journal.Clear();
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), 5);
    EXPECT_EQ(rig.fakes.journal.Count(u"icon P:\\Proj\\a.txt"), 1U);
    EXPECT_EQ(rig.fakes.journal.Count(u"icon P:\\Proj\\b.txt"), 0U);
    EXPECT_EQ(rig.fakes.journal.Count(u"icon P:\\Proj\\c.TXT"), 0U);
    EXPECT_EQ(rig.fakes.journal.Count(u"icon P:\\Proj\\d.exe"), 1U);
    EXPECT_EQ(rig.fakes.journal.Count(u"icon P:\\Proj\\e.exe"), 1U);
    EXPECT_EQ(rig.fakes.journal.Count(u"type P:\\Proj\\b.txt"), 0U);
}

TEST(FolderImport, WhatTheFolderToldOfAFileIsNotAskedAgain) {
    ImportRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.txt", 1);
    rig.fakes.journal.Clear();
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.fakes.journal.Count(u"query P:\\Proj\\a.txt"), 0U);
}

} // namespace talvix
