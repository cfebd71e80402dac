#include "tests/fakes/fake_culture.h"
#include "workbench/host/document_files.h"
#include "workbench/host/folder_preview.h"

#include <gtest/gtest.h>

namespace talvix::host {

namespace {

const FakeCulture kCulture;

Document Row(std::int32_t id, std::int32_t kind, const char16_t* path) {
    return {{u"ID", id}, {u"ObjectType", kind}, {u"Subject", u"s"}, {u"PhysicalStore1", path}};
}

FileRow File(std::int32_t id, const char16_t* path) {
    return {id, u"s", path};
}

} // namespace

TEST(DocumentFiles, LinksAndRowsWithoutAPlaceAreNoFiles) {
    EXPECT_EQ(FileRows({Row(1, 0, u" P:\\a.doc "), Row(2, 2, u"http://x"), Row(3, 1, u"P:\\m.msg"),
                        Row(4, 0, u" ")}),
              (std::vector<FileRow>{File(1, u"P:\\a.doc"), File(3, u"P:\\m.msg")}));
}

TEST(DocumentFiles, APlaceEndsAtAFoldersBorder) {
    const std::vector<FileRow> rows = {File(1, u"P:\\Alt\\a.doc"),
                                       File(2, u"p:\\ALT\\Pläne\\b.doc"),
                                       File(3, u"P:\\Alter\\c.doc"), File(4, u"P:\\Alt")};
    const auto changes = MoveToPlace(rows, u"P:\\Alt\\", u"\\\\srv\\neu\\", kCulture);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].to, u"\\\\srv\\neu\\a.doc");
    EXPECT_EQ(changes[1].to, u"\\\\srv\\neu\\Pläne\\b.doc");
    EXPECT_TRUE(MoveToPlace(rows, u" ", u"X:", kCulture).empty());
    EXPECT_EQ(MoveToPlace(rows, u"P:", u"Q:", kCulture).size(), 4U);
}

TEST(DocumentFiles, AFolderMovesWithItsPlace) {
    EXPECT_EQ(MoveFolder(u"p:\\alt\\", u"P:\\Alt", u"Q:\\Neu\\", kCulture), u"Q:\\Neu");
    EXPECT_EQ(MoveFolder(u"P:\\Alt\\Sub", u"P:\\Alt", u"Q:", kCulture), u"Q:\\Sub");
    EXPECT_FALSE(MoveFolder(u"P:\\Alter", u"P:\\Alt", u"Q:", kCulture));
    EXPECT_FALSE(MoveFolder(u"", u"", u"Q:", kCulture));
}

TEST(DocumentFiles, ANameIsFoundWhenItIsUnique) {
    FilesByName files(kCulture);
    for (const auto* path : {u"Q:\\1\\a.doc", u"Q:\\1\\B.doc", u"Q:\\2\\b.DOC"}) {
        files.Add(path);
    }
    const auto changes =
        files.Find({File(1, u"P:\\A.DOC"), File(2, u"P:\\b.doc"), File(3, u"x.doc")});
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].to, u"Q:\\1\\a.doc");
}

TEST(DocumentFiles, TheFolderFollowsThePlace) {
    const auto fields = FieldsOf({{File(1, u""), u"P:\\Proj\\a.doc"},
                                  {File(2, u""), u"P:\\proj\\Pläne\\Alt\\b.doc"},
                                  {File(3, u""), u"Q:\\c.doc"}},
                                 u"P:\\Proj", kCulture);
    EXPECT_EQ(fields.at(1).at(u"PhysicalStore2"), Value(u""));
    EXPECT_EQ(fields.at(2).at(u"PhysicalStore2"), Value(u"\\Pläne\\Alt"));
    EXPECT_EQ(fields.at(3).at(u"PhysicalStore2"), Value(u"Q:"));
    EXPECT_EQ(fields.at(3).at(u"PhysicalStore1"), Value(u"Q:\\c.doc"));
}

TEST(DocumentFiles, TheSameFileUnderTwoSpellingsIsADuplicate) {
    const auto identity = [](std::u16string_view path) {
        return path.starts_with(u"X:") || path == u"\\\\srv\\x\\a.doc" ? std::u16string(u"7/1")
                                                                       : std::u16string();
    };
    const auto groups =
        Duplicates({File(1, u"X:\\a.doc"), File(2, u"P:\\weg.doc"), File(3, u"\\\\srv\\x\\a.doc"),
                    File(4, u"p:\\.\\\\WEG.doc"), File(5, u"P:/weg2.doc"),
                    File(6, u"\\\\srv\\y\\b.doc"), File(7, u"\\\\\\srv\\y\\b.doc")},
                   identity, kCulture);
    ASSERT_EQ(groups.size(), 3U);
    EXPECT_EQ(groups[0],
              (std::vector<FileRow>{File(1, u"X:\\a.doc"), File(3, u"\\\\srv\\x\\a.doc")}));
    EXPECT_EQ(groups[1].size(), 2U);
    EXPECT_EQ(groups[2].size(), 2U);
}

TEST(FolderPreview, ShowsTheFolderOrWhatIsMissing) {
    Project project;
    EXPECT_EQ(FolderPreview(project),
              u"Ohne Basisordner und Namensregel wird kein Ordner ermittelt.");
    project.settings = {{u"DOCUMENTS/PATH", u"P:\\"},
                        {u"DOCUMENTS/RULES", u"<Project Number> <Project Name>"}};
    EXPECT_EQ(FolderPreview(project), u"Für dieses Projekt fehlt: Projektnummer, Projektname.");
    project.number = u"47/11";
    project.name = u"Neubau";
    EXPECT_EQ(FolderPreview(project), u"Für dieses Projekt: P:\\47_11 Neubau");
}

TEST(FolderPreview, WarnsOfLongPathsWithTheLongestSubFolder) {
    Project project;
    project.settings = {{u"DOCUMENTS/PATH", u"P:\\"},
                        {u"DOCUMENTS/RULES", u"<Project Name>"},
                        {u"DOCUMENTS/SUB_LIST", u"A," + std::u16string(20, u'b') + u",C"}};
    project.name = std::u16string(180, u'n');
    EXPECT_EQ(FolderPreview(project).find(u"Achtung"), std::u16string::npos);
    project.settings[u"DOCUMENTS/SUB_ACTIVE"] = u"True";
    EXPECT_NE(FolderPreview(project).find(u"Für Dateinamen bleiben nur 54 Zeichen."),
              std::u16string::npos);
}

} // namespace talvix::host
