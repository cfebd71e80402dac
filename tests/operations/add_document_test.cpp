#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

namespace talvix {

TEST(AddFile, WritesAndPresentsTheRowInTheRequiredOrder) {
    MainRig rig;
    rig.Attach();
    rig.fakes.files.MakeFile(u"P:\\Proj\\Pläne\\a.doc", 3000);
    rig.main->AddFile(u"P:\\Proj\\Pläne\\a.doc", u"Plan", u"neu", u"Notiz", Date{100}, Date{});
    EXPECT_EQ(rig.fakes.journal.Lines(),
              Lines({u"Common.strCurrentUser", u"Managing.Item", u"Managing.Item",
                     u"Managing.GetNextID DMS", u"query P:\\Proj\\Pläne\\a.doc",
                     u"icon P:\\Proj\\Pläne\\a.doc", u"type P:\\Proj\\Pläne\\a.doc"}));
    EXPECT_EQ(rig.Cell(1, u"ID"), Value(100));
    EXPECT_EQ(rig.Cell(1, u"ObjectType"), Value(std::int16_t{0}));
    EXPECT_EQ(rig.Cell(1, u"Icon"), Value(4));
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"Plan"));
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"3 KB"));
    EXPECT_EQ(rig.Cell(1, u"ObjectDescription"), Value(u"doc-Datei"));
    EXPECT_EQ(rig.Cell(1, u"Creator"), Value(u"Erika Muster"));
    EXPECT_EQ(rig.Cell(1, u"CreationDate"), Value(Date{100}));
    EXPECT_EQ(rig.Cell(1, u"LastModificationBy"), Value(u"Erika Muster"));
    EXPECT_EQ(rig.Cell(1, u"ModificationDate"), Value(rig.fakes.clock.now));
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"neu"));
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), Value(u"Notiz"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"P:\\Proj\\Pläne\\a.doc"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore2"), Value(u"\\Pläne"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), Value(u"-1"));
}

TEST(AddFile, WritesEveryFieldOfTheNewRowInOrder) {
    MainRig rig;
    rig.Attach();
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 3000);
    const Lines calls = rig.GridCalls([&] {
        rig.main->AddFile(u"P:\\Proj\\a.doc", u"Plan", u"neu", u"Notiz", Date{100}, Date{});
    });
    EXPECT_EQ(calls, Lines({u"Add",
                            u"Value ID =",
                            u"Value ObjectType =",
                            u"Value Icon =",
                            u"Value Subject =",
                            u"Value ItemSize =",
                            u"Value ObjectDescription =",
                            u"Value Creator =",
                            u"Value CreationDate =",
                            u"Value LastModificationBy =",
                            u"Value ModificationDate =",
                            u"Value Status =",
                            u"Value LongDescription =",
                            u"Value PhysicalStore1 =",
                            u"Value PhysicalStore2 =",
                            u"Value PhysicalStore3 =",
                            u"Value Icon =",
                            u"Value ItemSize =",
                            u"Value ObjectDescription =",
                            u"RefreshRows",
                            u"RefreshSort",
                            u"Expand"}));
}

TEST(AddFile, KeepsTheWholeFolderOfAFileOutsideTheProject) {
    MainRig rig;
    rig.Attach();
    rig.main->AddFile(u"C:\\fremd\\a.doc", u"a", u"", u"", Date{}, Date{});
    rig.main->AddFile(u"p:\\PROJ\\b.doc", u"b", u"", u"", Date{}, Date{});
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore2"), Value(u"C:\\fremd"));
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore2"), Value(u""));
    EXPECT_EQ(rig.Cell(1, u"CreationDate"), Value(rig.fakes.clock.now));
}

TEST(AddDMSItem, WithoutAProjectFolderAddsNothing) {
    MainRig rig;
    rig.Attach();
    rig.SetFolder(u"   ");
    rig.main->AddFile(u"P:\\Proj\\a.doc", u"a", u"", u"", Date{}, Date{});
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_EQ(rig.fakes.journal.Count(u"Managing.GetNextID"), 0U);
}

TEST(AddDMSItem, ALinkIsPresentedAndTheListIsNotPersisted) {
    MainRig rig;
    rig.Attach();
    DocumentRecord record;
    record.objectType = 2;
    record.physicalStore1 = u"http://example.org";
    rig.main->AddDMSItem(record, ItemFiling{Nothing(), -1, true, u""});
    EXPECT_EQ(rig.Cell(1, u"ObjectDescription"), Value(u"Internetverknüpfung"));
    EXPECT_EQ(rig.fakes.journal.Count(u"Managing.WriteGridDataToItemBody"), 0U);
}

TEST(AddDMSItem, AnObjectTypeBeyond16BitsLosesOnlyItsOwnStep) {
    MainRig rig;
    rig.Attach();
    DocumentRecord record;
    record.objectType = 70000;
    record.subject = u"Rest";
    rig.main->AddDMSItem(record, ItemFiling{});
    EXPECT_EQ(rig.Cell(1, u"ObjectType"), Value());
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"Rest"));
}

TEST(AddDMSItem, AFailingStepLosesOnlyItself) {
    MainRig rig;
    rig.Attach();
    rig.managing->Remove(u"GetNextID");
    rig.common->Remove(u"strCurrentUser");
    rig.main->AddFile(u"P:\\Proj\\a.doc", u"a", u"s", u"", Date{}, Date{});
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Cell(1, u"ID"), Value());
    EXPECT_EQ(rig.Cell(1, u"Creator"), Value(u""));
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"s"));
}

} // namespace talvix
