#include "tests/fakes/fake_culture.h"
#include "workbench/host/import_report.h"
#include "workbench/host/list_text.h"

#include <gtest/gtest.h>

namespace talvix::host {

namespace {

const FakeCulture kCultureOfLists;

std::vector<Document> Placed(std::initializer_list<const char16_t*> paths) {
    std::vector<Document> documents;
    for (const char16_t* path : paths) {
        documents.push_back({{u"PhysicalStore1", path}});
    }
    return documents;
}

} // namespace

TEST(ListText, EachDocumentIsOneLine) {
    Project project;
    project.documents = {{{u"ID", 7},
                          {u"Subject", u"a\tb\r\nc"},
                          {u"ItemSize", u"1 KB"},
                          {u"PhysicalStore1", u"P:\\a"}},
                         {}};
    EXPECT_EQ(ListAsText(project, kCultureOfLists), u"7\ta b  c\t1 KB\tP:\\a\n\t\t\t\n");
}

TEST(ListText, JsonKeepsKindsAndEscapesTexts) {
    Project project;
    project.name = u"\"\\\n\u00e4";
    project.documents = {{{u"ID", 7},
                          {u"CreationDate", Date{38000.5}},
                          {u"Subject", std::u16string(u"\xD83D\xDE00\xDC00")},
                          {u"Flag", true},
                          {u"Object", Nothing()}}};
    EXPECT_EQ(
        ListAsJson(project),
        u"{\"number\": \"\", \"name\": \"\\\"\\\\\\u000aä\", \"company\": \"\", \"folder\": \"\","
        u"\n \"documents\": [\n  {\"CreationDate\": \"2004-01-14T12:00:00\", \"Flag\": true, "
        u"\"ID\": 7, \"Subject\": \"\xD83D\xDE00\\udc00\"}\n ]}\n");
    EXPECT_EQ(ListAsJson(Project()),
              u"{\"number\": \"\", \"name\": \"\", \"company\": \"\", \"folder\": \"\",\n "
              u"\"documents\": [\n ]}\n");
}

TEST(ImportReport, TellsWhatBecameOfEveryFile) {
    const ImportReport report = ReportImport(PlacesOf(Placed({u"P:\\Alt.doc"}), kCultureOfLists),
                                             Placed({u"P:\\alt.doc", u"P:\\neu.doc"}),
                                             {u"P:\\ALT.doc", u"P:\\Neu.doc", u"P:\\weg.doc"},
                                             {u"ImportFolder: x"}, kCultureOfLists);
    EXPECT_EQ(ImportSummary(report), u"1 aufgenommen, 1 schon in der Liste, 1 nicht aufgenommen");
    ASSERT_EQ(report.lines.size(), 4U);
    EXPECT_EQ(report.lines[0].path, u"P:\\weg.doc");
    EXPECT_EQ(report.lines[1], (ImportLine{ImportOutcome::Note, u"", u"ImportFolder: x"}));
    EXPECT_EQ(report.lines[2].path, u"P:\\Neu.doc");
    EXPECT_EQ(report.lines[3].outcome, ImportOutcome::Listed);
    EXPECT_EQ(ImportSummary(ImportReport()), u"0 aufgenommen, 0 schon in der Liste");
}

TEST(ListText, APairMayEndAText) {
    Project project;
    project.name = u"\xD83D\xDE00";
    project.company = u"a\xD83D";
    project.number = u"a b";
    project.folder = u"\xD83D\xE000\x001F";
    const std::u16string json = ListAsJson(project);
    EXPECT_NE(json.find(u"\"name\": \"\xD83D\xDE00\","), std::u16string::npos);
    EXPECT_NE(json.find(u"\"company\": \"a\\ud83d\","), std::u16string::npos);
    EXPECT_NE(json.find(u"\"number\": \"a b\","), std::u16string::npos);
    EXPECT_NE(json.find(u"\"folder\": \"\\ud83d\xE000\\u001f\","), std::u16string::npos);
}

} // namespace talvix::host
