#include "tests/fakes/fake_mail.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

/// A component that files a mail.
struct MailRig : MainRig {
    MailRig() {
        fakes.files.MakeFolder(u"P:\\Proj");
        Attach();
    }
    void File(std::int32_t operation, bool writeToBody = false,
              std::u16string subject = u"Re: Angebot?", std::u16string subfolder = u"") {
        fakes.journal.Clear();
        DocumentRecord record;
        record.subject = std::move(subject);
        record.status = u"neu";
        record.creationDate = Date{100};
        main->AddDMSItem(record, ItemFiling{item, operation, writeToBody, std::move(subfolder)});
    }
    Lines Subjects() const {
        Lines subjects;
        for (int row = 1; row <= RowCount(); ++row) {
            subjects.push_back(Shown(Cell(row, u"Subject")));
        }
        return subjects;
    }
    Lines ItemCalls() const { return LinesOf({u"MailItem", u"Safe", u"Attachment", u"create"}); }
    std::size_t Writes() const { return fakes.journal.Count(u"Managing.WriteGridDataToItemBody"); }

    FakeMail mail{fakes};
    Value item = mail.Item();
};

} // namespace

TEST(FileOutlookItem, WithoutWrapperTheItemSavesItselfAsAWhole) {
    MailRig rig;
    rig.File(0, true);
    EXPECT_EQ(rig.ItemCalls(),
              Lines({u"create Redemption.SafeMailItem", u"create Redemption.SafeMailItem",
                     u"MailItem.SaveAs C:\\Temp\\tmp.msg, 3"}));
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"P:\\Proj\\Re_ Angebot_.msg"));
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"Re: Angebot?"));
    EXPECT_EQ(rig.Cell(1, u"ObjectType"), Value(std::int16_t{0}));
    EXPECT_EQ(rig.Cell(1, u"CreationDate"), Value(Date{100}));
    EXPECT_EQ(rig.Cell(1, u"ModificationDate"), Value(rig.fakes.clock.now));
    EXPECT_TRUE(rig.fakes.files.Query(u"C:\\Temp\\tmp.msg"));
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(FileOutlookItem, TheWrapperOfTheItemsTypeSaves) {
    MailRig rig;
    rig.mail.RegisterWrapper();
    rig.File(0);
    EXPECT_EQ(rig.ItemCalls(),
              Lines({u"create Redemption.SafeMailItem", u"create Redemption.SafeMailItem",
                     u"Safe1.Item = MailItem", u"Safe1.SaveAs C:\\Temp\\tmp.msg, 3"}));
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), Value(u"7 KB"));
    EXPECT_EQ(rig.Writes(), 0U);
}

TEST(FileOutlookItem, WithoutAttachmentsDeletesThemAndDiscardsThat) {
    MailRig rig;
    rig.mail.RegisterWrapper();
    rig.File(1, true);
    EXPECT_EQ(rig.ItemCalls(),
              Lines({u"create Redemption.SafeMailItem", u"create Redemption.SafeMailItem",
                     u"Safe1.Item = MailItem", u"Safe2.Item = MailItem", u"MailItem.Attachments",
                     u"MailItem.Attachments", u"Attachment2.Delete", u"MailItem.Attachments",
                     u"Attachment1.Delete", u"Safe2.SaveAs C:\\Temp\\tmp.msg, 3", u"Safe2.Item",
                     u"MailItem.Close 1", u"Safe2.Close 1", u"MailItem.Close 1",
                     u"Safe2.Item = Nothing"}));
    EXPECT_EQ(rig.Subjects(), Lines({u"Re: Angebot?"}));
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(FileOutlookItem, WithoutWrapperTheItemItselfIsClosedTwice) {
    MailRig rig;
    rig.File(1);
    EXPECT_EQ(rig.fakes.journal.Count(u"MailItem.Close 1"), 2U);
    EXPECT_EQ(rig.RowCount(), 1);
}

TEST(FileOutlookItem, AttachmentsAreAddedLastOneFirstUnderTheirOwnNames) {
    MailRig rig;
    rig.File(2, true);
    EXPECT_EQ(rig.Subjects(), Lines({u"b.xls", u"a.doc"}));
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore1"), Value(u"P:\\Proj\\a.doc"));
    EXPECT_EQ(rig.fakes.journal.Count(u"MailItem.SaveAs"), 0U);
    EXPECT_EQ(rig.fakes.journal.Count(u"Attachment2.SaveAsFile C:\\Temp\\tmp.msg"), 1U);
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(FileOutlookItem, AttachmentsThenTheMailPersistOnceAtMost) {
    for (const bool write : {false, true}) {
        MailRig rig;
        rig.File(3, write);
        EXPECT_EQ(rig.Subjects(), Lines({u"b.xls", u"a.doc", u"Re: Angebot?"}));
        EXPECT_EQ(rig.Writes(), write ? 1U : 0U);
    }
}

TEST(FileOutlookItem, OtherOperationsAddAndPersistNothing) {
    MailRig rig;
    for (const std::int32_t operation : {-1, 4, 100}) {
        rig.File(operation, true);
        EXPECT_EQ(rig.RowCount(), 0);
        EXPECT_EQ(rig.Writes(), 0U);
    }
}

TEST(FileOutlookItem, ATakenNameIsTheSubjectToo) {
    MailRig rig;
    rig.mail.names = {u"Bericht.doc", u"Bericht.doc", u"Bericht.doc"};
    rig.File(2);
    EXPECT_EQ(rig.Subjects(), Lines({u"Bericht.doc", u"Bericht (1).doc", u"Bericht (2).doc"}));
}

TEST(FileOutlookItem, AHostileAttachmentNameLosesOnlyItself) {
    MailRig rig;
    rig.mail.names = {u"a.doc", u"..\\..\\x.txt", u"C:\\x", u"NUL.txt", u"z.doc"};
    rig.File(2);
    EXPECT_EQ(rig.Subjects(), Lines({u"z.doc", u"a.doc"}));
}

TEST(FileOutlookItem, AFailedSaveWithoutAFileAddsNothingForIt) {
    MailRig rig;
    rig.mail.saveFails = true;
    rig.File(0);
    rig.File(2);
    EXPECT_EQ(rig.RowCount(), 0);
}

TEST(FileOutlookItem, AFailedSaveAfterAnEarlierOneCopiesTheEarlierFile) {
    MailRig rig;
    rig.File(0);
    rig.mail.saveFails = true;
    rig.File(0, false, u"Zweite");
    EXPECT_EQ(rig.Subjects(), Lines({u"Re: Angebot?", u"Zweite"}));
}

TEST(FileOutlookItem, WithoutAProjectFolderNothingIsAskedOfTheItem) {
    MailRig rig;
    rig.SetFolder(u"");
    rig.File(3, true);
    EXPECT_EQ(rig.ItemCalls(), Lines());
    EXPECT_EQ(rig.Writes(), 0U);
}

TEST(FileOutlookItem, AnItemWithoutMembersOrNoObjectAddsNothing) {
    MailRig rig;
    rig.item = std::make_shared<Expando>(u"Odd");
    for (const std::int32_t operation : {0, 1, 2, 3}) {
        rig.File(operation);
    }
    rig.main->AddDMSItem(DocumentRecord{}, ItemFiling{Value(5), 0, false, u""});
    EXPECT_EQ(rig.RowCount(), 0);
}

TEST(FileOutlookItem, TheSubFolderTakesTheFiles) {
    MailRig rig;
    rig.fakes.files.MakeFolder(u"P:\\Proj\\Mails");
    rig.File(3, false, u"Betreff", u"Mails");
    EXPECT_EQ(rig.Cell(3, u"PhysicalStore1"), Value(u"P:\\Proj\\Mails\\Betreff.msg"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore2"), Value(u"\\Mails"));
}

} // namespace talvix
