#include "tests/fakes/main_rig.h"
#include "ui/document_commands.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

constexpr std::int32_t kYes = 6;
constexpr std::int32_t kNo = 7;

/// A list of documents with numbers from 1, of which files a to h are there.
struct CommandRig : MainRig {
    CommandRig() {
        Attach();
        for (char16_t name = u'a'; name <= u'h'; ++name) {
            const std::u16string path = u"P:\\Proj\\" + std::u16string(1, name) + u".doc";
            fakes.files.MakeFile(path, 1);
            Add(0, path);
        }
        fakes.journal.Clear();
    }
    void Add(const Value& kind, std::u16string_view store) {
        Late row = AddRow(kind, store);
        row.SetAt(u"Value", u"ID", ++lastId);
    }
    /// Selects rows; the last one becomes the current one.
    void Select(std::initializer_list<std::int32_t> rows) {
        const Late selection = Late(gridObject)[u"Selection"];
        selection.Call(u"Clear");
        for (const std::int32_t row : rows) {
            selection.Call(u"Add", row, row);
        }
        Late(gridObject).Set(u"CurrentRow", *(rows.end() - 1));
    }
    Lines Opened() const { return LinesOf({u"open"}); }
    std::size_t Writes() const { return fakes.journal.Count(u"Managing.WriteGridDataToItemBody"); }
    std::int32_t lastId = 0;
};

} // namespace

TEST(OpenDocument, OpensTheDocumentOfANumberInItsFolder) {
    CommandRig rig;
    rig.main->OpenDocument(2);
    EXPECT_EQ(rig.Opened(), Lines({u"open P:\\Proj\\b.doc in P:\\Proj"}));
    EXPECT_EQ(rig.GridCalls([&] { rig.main->OpenDocument(99); }), Lines({u"Find ID"}));
    rig.main->OpenDocument(0);
    EXPECT_EQ(rig.Opened().size(), 1U);
}

TEST(OpenDocument, ALinkOpensWithItsSchemeAsFolderAndAnEmptyOneNot) {
    CommandRig rig;
    rig.Add(2, u"http://example.org/a");
    rig.Add(2, u"   ");
    rig.Add(0, u"http://example.org/b");
    for (std::int32_t id = 9; id <= 11; ++id) {
        rig.main->OpenDocument(id);
    }
    EXPECT_EQ(rig.Opened(), Lines({u"open http://example.org/a in http:"}));
}

TEST(OpenDocument, FiveSelectedOpenAtOnceSixAskFirst) {
    CommandRig rig;
    rig.Select({1, 2, 3, 4, 5});
    rig.main->btnOpenDocument_Click();
    EXPECT_EQ(rig.Opened().size(), 5U);
    EXPECT_EQ(rig.fakes.journal.Count(u"message"), 0U);
    rig.fakes.journal.Clear();
    rig.Select({1, 2, 3, 4, 5, 6});
    rig.fakes.messages.answers = {kNo};
    rig.main->OpenDocument(-1);
    EXPECT_EQ(rig.JournalLines(),
              Lines({u"message 52 [Hohe Anzahl an Dokumenten] Sie versuchen, 6 Dokumente "
                     u"gleichzeitig zu öffnen. Möchten Sie fortfahren?"}));
    rig.fakes.messages.answers = {kYes};
    rig.main->OpenDocument(-1);
    EXPECT_EQ(rig.Opened().size(), 6U);
}

TEST(OpenDocument, AMissingFileIsPassedOverAndTheLinkOpens) {
    CommandRig rig;
    rig.Add(2, u"http://example.org");
    rig.fakes.files.Remove(u"P:\\Proj\\a.doc");
    rig.fakes.journal.Clear();
    rig.Select({1, 9});
    rig.main->OpenDocument(-1);
    EXPECT_EQ(rig.Opened(), Lines({u"open http://example.org in http:"}));
}

TEST(OpenDocument, WithoutACurrentDocumentNothingIsAskedOrOpened) {
    CommandRig rig;
    rig.Select({1, 2, 3, 4, 5, 6});
    Late(rig.gridObject).Set(u"CurrentRow", 0);
    rig.main->OpenDocument(-1);
    Late(rig.gridObject)[u"Groups"].Call(u"Add", u"ObjectType");
    rig.Select({2, 1}); // the heading is the current row
    rig.main->OpenDocument(-1);
    EXPECT_EQ(rig.fakes.journal.Count(u"message"), 0U);
    EXPECT_EQ(rig.Opened(), Lines());
}

TEST(OpenDocument, HeadingsInTheSelectionAreCountedButNotOpened) {
    CommandRig rig;
    Late(rig.gridObject)[u"Groups"].Call(u"Add", u"ObjectType");
    rig.Select({1, 2, 3, 4, 5, 6});
    rig.fakes.messages.answers = {kYes};
    rig.main->OpenDocument(-1);
    EXPECT_EQ(rig.fakes.journal.Count(u"message 52 [Hohe Anzahl an Dokumenten] Sie versuchen, 6"),
              1U);
    EXPECT_EQ(rig.Opened().size(), 5U);
}

TEST(DeleteDMSItem, RemovesTheSelectedDocumentsAndPersistsOnYes) {
    CommandRig rig;
    rig.Select({2, 4, 5});
    rig.fakes.messages.answers = {kYes};
    rig.main->btnDeleteDocument_Click();
    EXPECT_EQ(
        rig.JournalLines(),
        Lines({u"message 52 [Dokument entfernen...] Sind Sie sicher, dass Sie diese Dokumente "
               u"aus der Liste entfernen wollen?",
               u"Managing.WriteGridDataToItemBody"}));
    ASSERT_EQ(rig.RowCount(), 5);
    EXPECT_EQ(rig.Cell(1, u"ID"), Value(1));
    EXPECT_EQ(rig.Cell(2, u"ID"), Value(3));
    EXPECT_EQ(rig.Cell(3, u"ID"), Value(6));
    EXPECT_TRUE(rig.fakes.files.Query(u"P:\\Proj\\b.doc"));
}

TEST(DeleteDMSItem, AsksTheGridInOrder) {
    CommandRig rig;
    rig.Select({2, 4});
    rig.fakes.messages.answers = {kYes};
    const Lines calls = rig.GridCalls([&] { rig.main->DeleteDMSItem(); });
    EXPECT_EQ(calls, Lines({u"CurrentRow", u"IsGroup", u"Selection", u"Count", u"Item", u"First",
                            u"Last", u"Item", u"First", u"Last", u"Rows", u"IsGroup", u"Rows",
                            u"IsGroup", u"Remove", u"Remove"}));
}

TEST(DeleteDMSItem, AnyOtherAnswerChangesNothing) {
    CommandRig rig;
    rig.Select({2});
    rig.fakes.messages.answers = {kNo};
    rig.main->DeleteDMSItem();
    EXPECT_EQ(rig.RowCount(), 8);
    EXPECT_EQ(rig.Writes(), 0U);
}

TEST(DeleteDMSItem, NoCurrentRowOrAHeadingAsksNothing) {
    CommandRig rig;
    rig.Select({1});
    Late(rig.gridObject).Set(u"CurrentRow", 0);
    rig.main->DeleteDMSItem();
    Late(rig.gridObject)[u"Groups"].Call(u"Add", u"ObjectType");
    rig.Select({2, 1});
    rig.main->DeleteDMSItem();
    EXPECT_EQ(rig.JournalLines(), Lines());
}

TEST(DeleteDMSItem, AHeadingInTheSelectionIsPassedOver) {
    CommandRig rig;
    rig.Add(2, u"http://example.org");
    Late(rig.gridObject)[u"Groups"].Call(u"Add", u"ObjectType");
    rig.Select({1, 2, 3}); // the heading of the files and two of them
    rig.fakes.messages.answers = {kYes};
    rig.main->DeleteDMSItem();
    EXPECT_EQ(rig.model->rows.Count(), 9); // six files, a link and two headings
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(btnExportDocuments_Click, HandsOverItemNameAndXmlWithTheThirdArgumentLeftOut) {
    CommandRig rig;
    rig.managing->With(u"SetUserFieldValues", Empty()).With(u"GetXMLDataAsString", u"<liste/>");
    std::vector<Value> given;
    const auto exporter = std::make_shared<Expando>(u"Export", &rig.fakes.journal);
    exporter->On(u"ExportItem", [&](std::span<const Value> arguments) -> Value {
        given.assign(arguments.begin(), arguments.end());
        return {};
    });
    const auto other = std::make_shared<Expando>(u"Other");
    rig.main->ReferenceLibraries(rig.common, rig.managing, other, other, other, exporter);
    rig.fakes.journal.Clear();
    rig.main->btnExportDocuments_Click();
    ASSERT_EQ(given.size(), 4U);
    EXPECT_EQ(given[0], Value(rig.item));
    EXPECT_EQ(given[1], Value(u"Dokumente"));
    EXPECT_EQ(given[2], Value(Missing()));
    EXPECT_EQ(given[3], Value(u"<liste/>"));
    EXPECT_EQ(rig.JournalLines(), Lines({u"Managing.SetUserFieldValues", u"Managing.Item",
                                         u"Managing.GetXMLDataAsString",
                                         u"Export.ExportItem Item, Dokumente, missing, <liste/>"}));
}

TEST(ShowFileProperties, ShowsTheTrimmedPathOfAFileOnly) {
    CommandRig rig;
    rig.Add(0, u"  P:\\Proj\\a.doc ");
    rig.Add(1, u"P:\\Proj\\a.doc");
    rig.Add(2, u"http://example.org");
    rig.Add(Value(), u"P:\\Proj\\a.doc");
    for (const std::int32_t row : {9, 10, 11, 12}) {
        rig.Select({row});
        ShowFileProperties(rig.main->Attached());
    }
    EXPECT_EQ(rig.LinesOf({u"properties"}), Lines({u"properties P:\\Proj\\a.doc over 0"}));
}

} // namespace talvix
