#include "automation/text.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

struct PresentationRig : MainRig {
    PresentationRig() { Attach(); }
    void Present() {
        fakes.journal.Clear();
        main->Init();
    }
};

} // namespace

TEST(RowPresentation, SizesAreKilobytesAndNeverLessThanOne) {
    struct Case {
        std::int64_t bytes;
        const char16_t* shown;
    };
    const Case cases[] = {
        {0, u"1 KB"},    {1, u"1 KB"},    {1024, u"1 KB"},        {1025, u"1 KB"},
        {1536, u"2 KB"}, {2560, u"3 KB"}, {1500000, u"1.465 KB"}, {5368709120, u"5.242.880 KB"}};
    for (const Case& each : cases) {
        PresentationRig rig;
        rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", each.bytes);
        rig.AddRow(0, u"P:\\Proj\\a.doc");
        rig.Present();
        EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(each.shown)) << each.bytes;
    }
}

TEST(RowPresentation, ReadsAndWritesTheCellsOfARowInOrder) {
    PresentationRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 10);
    rig.AddRow(0, u"P:\\Proj\\a.doc");
    Lines calls = rig.GridCalls([&] { rig.Present(); });
    ASSERT_GT(calls.size(), 10U);
    calls.resize(10);
    EXPECT_EQ(calls, Lines({u"Count", u"Rows", u"IsGroup", u"Value ObjectType",
                            u"Value PhysicalStore1", u"Picture Icon =", u"Value Icon =",
                            u"Value ItemSize =", u"RefreshRows", u"RefreshSort"}));
}

TEST(RowPresentation, AFileRowGetsItsIconAndKeepsItsStoredTypeTextAtOpening) {
    PresentationRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 10);
    rig.AddRow(0, u"P:\\Proj\\a.doc", u"Alter Typ");
    rig.Present();
    EXPECT_EQ(rig.Cell(1, u"Icon"), Value(4));
    EXPECT_EQ(rig.Cell(1, u"ObjectDescription"), Value(u"Alter Typ"));
}

TEST(RowPresentation, AMissingFileShowsPicture1AndOneKilobyteAndKeepsTheRest) {
    PresentationRig rig;
    const Late row = rig.AddRow(0, u"P:\\Proj\\fort.doc", u"Word");
    row.SetAt(u"Value", u"ItemSize", u"77 KB");
    rig.Present();
    EXPECT_EQ(row.Call(u"Picture", u"Icon"), rig.fakes.pictures.Picture(1));
    EXPECT_EQ(rig.Cell(1, u"Icon"), Value(-1));
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"1 KB"));
    EXPECT_EQ(rig.Cell(1, u"ObjectDescription"), Value(u"Word"));
    rig.fakes.files.MakeFile(u"P:\\Proj\\fort.doc", 4096);
    rig.Present();
    EXPECT_EQ(row.Call(u"Picture", u"Icon"), Nothing());
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"4 KB"));
}

TEST(RowPresentation, ALinkShowsPicture2AndAnOutlookItemNoIcon) {
    PresentationRig rig;
    const Late link = rig.AddRow(2, u"http://example.org");
    rig.AddRow(1, u"P:\\Proj\\a.msg");
    rig.Present();
    EXPECT_EQ(link.Call(u"Picture", u"Icon"), rig.fakes.pictures.Picture(2));
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"1 KB"));
    EXPECT_EQ(rig.Cell(2, u"Icon"), Value(-1));
    EXPECT_EQ(rig.Cell(2, u"ItemSize"), Value(u"1 KB"));
    EXPECT_EQ(rig.fakes.journal.Count(u"query"), 0U);
}

TEST(RowPresentation, AnEmptyOrUnknownObjectTypeGetsTheDefaults) {
    for (const Value& type :
         {Value(), Value(3), Value(1e12), Value(-1), Value(u"x"), Value(u""), Value(0.5)}) {
        PresentationRig rig;
        rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 5000);
        rig.AddRow(type, u"P:\\Proj\\a.doc");
        rig.Present();
        EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"1 KB"));
        EXPECT_EQ(rig.Cell(1, u"Icon"), Value(-1));
        EXPECT_EQ(rig.fakes.journal.Count(u"query"), 0U);
    }
}

TEST(RowPresentation, WithFileIconsDisabledNoIconIsAskedFor) {
    PresentationRig rig;
    rig.fakes.registry.WriteNumber(kCurrentUser, u"Software\\Talvix", u"FileIconsDisabled", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 5000);
    rig.AddRow(0, u"P:\\Proj\\a.doc");
    rig.Present();
    EXPECT_EQ(rig.Cell(1, u"Icon"), Value(-1));
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"5 KB"));
    EXPECT_EQ(rig.fakes.journal.Count(u"icon"), 0U);
}

TEST(RowPresentation, LeavesGroupHeadingsUntouched) {
    PresentationRig rig;
    rig.AddRow(2, u"http://example.org");
    Late(rig.gridObject)[u"Groups"](u"Add", u"ObjectType");
    rig.Present();
    EXPECT_TRUE(rig.Row(1).Call(u"IsGroup") == Value(true));
    EXPECT_EQ(rig.Cell(2, u"ItemSize"), Value(u"1 KB"));
}

TEST(RowPresentation, AFolderInTheFilesPlaceCountsAsMissing) {
    PresentationRig rig;
    rig.fakes.files.MakeFolder(u"P:\\Proj\\Ordner");
    const Late row = rig.AddRow(0, u"P:\\Proj\\Ordner");
    rig.Present();
    EXPECT_EQ(row.Call(u"Picture", u"Icon"), rig.fakes.pictures.Picture(1));
}

TEST(RowPresentation, AsksTheShellOncePerClassOfFileInOnePass) {
    PresentationRig rig;
    for (const auto* name : {u"P:\\Proj\\a.doc", u"P:\\Proj\\b.DOC", u"P:\\Proj\\c.txt",
                             u"P:\\Proj\\d.exe", u"P:\\Proj\\e.exe"}) {
        rig.fakes.files.MakeFile(name, 1);
        rig.AddRow(0, name);
    }
    rig.Present();
    EXPECT_EQ(rig.fakes.journal.Count(u"icon"), 4U);
}

TEST(RowPresentation, AClassThatHasChangedIsAskedForAgain) {
    PresentationRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
    rig.AddRow(0, u"P:\\Proj\\a.doc");
    rig.Present();
    EXPECT_EQ(rig.fakes.journal.Count(u"icon"), 1U);
    rig.Present();
    EXPECT_EQ(rig.fakes.journal.Count(u"icon"), 0U);
    rig.fakes.shell.answers.haveChanged = true;
    rig.Present();
    EXPECT_EQ(rig.fakes.journal.Count(u"icon"), 1U);
}

TEST(RowPresentation, ANetworkRootThatDoesNotAnswerIsAskedOnceInOnePass) {
    PresentationRig rig;
    rig.fakes.files.silentRoots.insert(u"\\\\TOT\\DATEN");
    for (int at = 0; at < 5; ++at) {
        rig.AddRow(0, u"\\\\tot\\daten\\" + DecimalText(at) + u".doc");
    }
    rig.Present();
    EXPECT_EQ(rig.fakes.journal.Count(u"query"), 2U);
}

TEST(RowPresentation, PathsThatAreTakenAsTheyStandHaveTheRootsOfTheirPlaces) {
    PresentationRig rig;
    rig.fakes.files.silentRoots.insert(u"\\\\TOT\\DATEN");
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 5000);
    rig.AddRow(0, u"\\\\?\\P:\\Proj\\fort.doc");
    rig.AddRow(0, u"\\\\?\\P:\\Proj\\a.doc");
    for (int at = 0; at < 5; ++at) {
        rig.AddRow(0, u"\\\\?\\UNC\\tot\\daten\\" + DecimalText(at) + u".doc");
    }
    rig.AddRow(0, u"\\\\.\\P:\\fort.doc");
    rig.Present();
    EXPECT_EQ(rig.Cell(2, u"ItemSize"), Value(u"5 KB"));
    EXPECT_EQ(rig.LinesOf({u"query"}),
              Lines({u"query \\\\?\\P:\\Proj\\fort.doc", u"query \\\\?\\P:\\Proj\\a.doc",
                     u"query \\\\?\\UNC\\tot\\daten\\0.doc", u"query \\\\?\\UNC\\tot\\daten",
                     u"query \\\\.\\P:\\fort.doc"}));
}

TEST(RowPresentation, AFolderWhereSeveralFilesAreMissingIsListedOnce) {
    PresentationRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\Da.doc", 5000);
    for (int at = 0; at < 9; ++at) {
        rig.AddRow(0, u"P:\\Proj\\fort" + DecimalText(at) + u".doc");
    }
    const Late there = rig.AddRow(0, u"p:\\PROJ\\DA.DOC");
    const Late folder = rig.AddRow(0, u"P:\\Proj\\Innen");
    rig.fakes.files.MakeFolder(u"P:\\Proj\\Innen");
    rig.Present();
    EXPECT_EQ(rig.fakes.journal.Count(u"list P:\\Proj"), 1U);
    EXPECT_EQ(rig.fakes.journal.Count(u"query P:\\Proj\\"), 4U);
    EXPECT_EQ(rig.fakes.journal.Count(u"query p:\\PROJ"), 0U);
    EXPECT_EQ(there.Call(u"Value", u"ItemSize"), Value(u"5 KB"));
    EXPECT_EQ(folder.Call(u"Picture", u"Icon"), rig.fakes.pictures.Picture(1));
    for (int row = 1; row <= 9; ++row) {
        EXPECT_EQ(rig.Row(row).Call(u"Picture", u"Icon"), rig.fakes.pictures.Picture(1));
    }
}

TEST(RowPresentation, NamesThatAreTakenInOtherFormsAreAskedForEach) {
    PresentationRig rig;
    for (int at = 0; at < 4; ++at) {
        rig.AddRow(0, u"P:\\Proj\\fort" + DecimalText(at) + u".doc");
    }
    rig.fakes.files.MakeFile(u"P:\\Proj\\Verweis.doc", 1);
    rig.fakes.files.links.insert(u"P:\\PROJ\\VERWEIS.DOC");
    const std::initializer_list<const char16_t*> asked = {
        u"ä.doc", u"BERICH~1.DOC", u"a.doc.", u"a ", u"a:b", u"Verweis.doc"};
    rig.AddRow(0, u"P:\\Proj\\");
    for (const auto* name : asked) {
        rig.AddRow(0, std::u16string(u"P:\\Proj\\") + name);
    }
    rig.Present();
    for (const auto* name : asked) {
        EXPECT_EQ(rig.fakes.journal.Count(std::u16string(u"query P:\\Proj\\") + name), 1U)
            << ToUtf8(name);
    }
}

TEST(RowPresentation, AFolderThatCannotBeListedIsAskedFileByFile) {
    PresentationRig rig;
    for (int at = 0; at < 9; ++at) {
        rig.AddRow(0, u"P:\\gibt\\es\\nicht\\" + DecimalText(at) + u".doc");
        rig.AddRow(0, u"D:" + DecimalText(at) + u".doc");
    }
    rig.Present();
    EXPECT_EQ(rig.fakes.journal.Count(u"query P:\\gibt"), 9U);
    EXPECT_EQ(rig.fakes.journal.Count(u"list "), 0U);
}

} // namespace talvix
