#pragma once

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace talvix {

/// What every `Files` keeps to. A rig offers Port(), Folder() (an existing empty folder's path),
/// and Make(name, bytes) and MakeFolder(name) below it.
template <typename Rig>
class FilesContract : public testing::Test {
protected:
    Rig rig;
    std::u16string At(std::u16string_view name) {
        return rig.Folder() + u"\\" + std::u16string(name);
    }
};
TYPED_TEST_SUITE_P(FilesContract);

TYPED_TEST_P(FilesContract, QueryTellsExistenceKindAndLength) {
    this->rig.Make(u"Größe.txt", 1234);
    this->rig.MakeFolder(u"Ordner");
    const auto file = this->rig.Port().Query(this->At(u"Größe.txt"));
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->isFolder);
    EXPECT_EQ(file->length, 1234);
    EXPECT_TRUE(this->rig.Port().Query(this->At(u"GRÖßE.TXT")));
    const auto folder = this->rig.Port().Query(this->At(u"Ordner"));
    ASSERT_TRUE(folder);
    EXPECT_TRUE(folder->isFolder);
    EXPECT_EQ(folder->length, 0);
}

TYPED_TEST_P(FilesContract, QueryOfWhatIsNotThereIsNothing) {
    this->rig.Make(u"a.txt", 1);
    for (const auto* name : {u"b.txt", u"a.txt\\c", u"*.txt", u"a.t?t"}) {
        EXPECT_FALSE(this->rig.Port().Query(this->At(name)));
    }
    EXPECT_FALSE(this->rig.Port().Query(u""));
}

TYPED_TEST_P(FilesContract, APathThatIsTakenAsItStandsLeadsToTheSameFile) {
    this->rig.Make(u"Größe.txt", 1234);
    this->rig.MakeFolder(u"Ordner");
    Files& files = this->rig.Port();
    const std::u16string mark = u"\\\\?\\";
    const auto file = files.Query(mark + this->At(u"Größe.txt"));
    ASSERT_TRUE(file);
    EXPECT_EQ(*file, (FileFacts{false, 1234}));
    const auto folder = files.Query(mark + this->At(u"Ordner"));
    ASSERT_TRUE(folder);
    EXPECT_TRUE(folder->isFolder);
    for (const auto* name : {u"fehlt.txt", u"*.txt", u"Gr?ße.txt"}) {
        EXPECT_FALSE(files.Query(mark + this->At(name)));
    }
    EXPECT_FALSE(files.Query(mark));
    EXPECT_EQ(files.List(mark + this->rig.Folder()).files.size(), 1U);
}

TYPED_TEST_P(FilesContract, AllFormsOfAPathHaveOneFullForm) {
    Files& files = this->rig.Port();
    const std::u16string same = this->At(u"Ort\\Ä b");
    for (const auto* form :
         {u"Ort\\Ä b", u"Ort/Ä b", u"Ort\\\\Ä b", u"Ort\\Ä b\\", u"Ort/Ä b//", u"Ort\\.\\Ä b",
          u"x\\..\\Ort\\Ä b", u"Ort\\Ä b\\x\\..", u"Ort\\Ä b\\.", u"Ort\\Ä b.", u"Ort\\Ä b ",
          u"Ort\\Ä b. .", u"Ort\\Ä b. \\", u"Ort.\\Ä b", u"Ort\\Ä b\\...", u".\\Ort\\Ä b"}) {
        EXPECT_EQ(files.FullPath(this->At(form)), same) << ToUtf8(form);
    }
    EXPECT_EQ(files.FullPath(this->At(u"ORT")), this->At(u"ORT"));
    EXPECT_EQ(files.FullPath(this->At(u"a.txt")), this->At(u"a.txt"));
    EXPECT_EQ(files.FullPath(this->At(u".a")), this->At(u".a"));
}

TYPED_TEST_P(FilesContract, FullFormsBeginWithADriveOrAShare) {
    Files& files = this->rig.Port();
    const std::u16string current = files.CurrentFolder();
    const std::u16string start = current.ends_with(u'\\') ? current : current + u"\\";
    EXPECT_EQ(files.FullPath(u"Ort\\x"), start + u"Ort\\x");
    EXPECT_EQ(files.FullPath(u"."), current);
    EXPECT_EQ(files.FullPath(u"\\Ort"), current.substr(0, 2) + u"\\Ort");
    EXPECT_EQ(files.FullPath(current.substr(0, 2) + u"Ort"), start + u"Ort");
    for (const auto* root : {u"C:\\", u"C:/", u"C:\\..", u"C:\\\\", u"C:\\x\\..\\..\\"}) {
        EXPECT_EQ(files.FullPath(root), u"C:\\") << ToUtf8(root);
    }
    for (const auto* share : {u"\\\\srv\\daten", u"//srv/daten/", u"\\\\srv\\daten\\x\\..",
                              u"\\\\srv\\daten\\..\\.."}) {
        EXPECT_EQ(files.FullPath(share), u"\\\\srv\\daten") << ToUtf8(share);
    }
    EXPECT_EQ(files.FullPath(u"\\\\srv\\daten\\\\P\\.\\a"), u"\\\\srv\\daten\\P\\a");
    EXPECT_EQ(files.FullPath(u"\\\\?\\C:\\Ort"), u"\\\\?\\C:\\Ort");
    EXPECT_EQ(files.FullPath(u""), u"");
}

TYPED_TEST_P(FilesContract, ListTellsFilesAndFoldersApart) {
    this->rig.Make(u"a.txt", 1);
    this->rig.Make(u"ß ü.doc", 70);
    this->rig.MakeFolder(u"Ordner");
    FolderListing listing = this->rig.Port().List(this->rig.Folder());
    std::sort(listing.files.begin(), listing.files.end(),
              [](const ListedFile& a, const ListedFile& b) { return a.name < b.name; });
    EXPECT_EQ(listing.files, (std::vector<ListedFile>{{u"a.txt", FileFacts{false, 1}},
                                                      {u"ß ü.doc", FileFacts{false, 70}}}));
    EXPECT_EQ(listing.folders, (std::vector<std::u16string>{u"Ordner"}));
    EXPECT_TRUE(this->rig.Port().List(this->At(u"Ordner")).files.empty());
    EXPECT_EQ(this->rig.Port().List(this->rig.Folder() + u"\\").files.size(), 2U);
}

TYPED_TEST_P(FilesContract, AFolderThatIsNotThereCannotBeListed) {
    EXPECT_THROW(this->rig.Port().List(this->At(u"fehlt")), Failure);
}

TYPED_TEST_P(FilesContract, CreatesOneFolderAndNotItsParents) {
    this->rig.Port().CreateFolder(this->At(u"Pläne"));
    EXPECT_TRUE(this->rig.Port().Query(this->At(u"Pläne"))->isFolder);
    this->rig.Port().CreateFolder(this->At(u"Pläne\\Neu\\"));
    EXPECT_TRUE(this->rig.Port().Query(this->At(u"Pläne\\Neu"))->isFolder);
    EXPECT_THROW(this->rig.Port().CreateFolder(this->At(u"Pläne")), Failure);
    EXPECT_THROW(this->rig.Port().CreateFolder(this->At(u"fehlt\\Neu")), Failure);
    this->rig.Make(u"datei", 1);
    EXPECT_THROW(this->rig.Port().CreateFolder(this->At(u"datei")), Failure);
}

TYPED_TEST_P(FilesContract, RenamesWithoutEverReplacing) {
    Files& files = this->rig.Port();
    this->rig.Make(u"a.tmp", 5);
    this->rig.Make(u"b.doc", 7);
    this->rig.MakeFolder(u"c.doc");
    EXPECT_EQ(files.Rename(this->At(u"a.tmp"), this->At(u"b.doc")), Renamed::Taken);
    EXPECT_EQ(files.Rename(this->At(u"a.tmp"), this->At(u"B.DOC")), Renamed::Taken);
    EXPECT_EQ(files.Rename(this->At(u"a.tmp"), this->At(u"c.doc")), Renamed::Taken);
    EXPECT_EQ(files.Query(this->At(u"b.doc"))->length, 7);
    EXPECT_EQ(files.Rename(this->At(u"a.tmp"), this->At(u"Größe.doc")), Renamed::Done);
    EXPECT_EQ(files.Query(this->At(u"Größe.doc"))->length, 5);
    EXPECT_FALSE(files.Query(this->At(u"a.tmp")));
    EXPECT_THROW(files.Rename(this->At(u"a.tmp"), this->At(u"d.doc")), Failure);
    EXPECT_THROW(files.Rename(this->At(u"b.doc"), this->At(u"fehlt\\d.doc")), Failure);
}

TYPED_TEST_P(FilesContract, RemovesAFile) {
    this->rig.Make(u"a.tmp", 5);
    this->rig.Port().Remove(this->At(u"a.tmp"));
    EXPECT_FALSE(this->rig.Port().Query(this->At(u"a.tmp")));
    EXPECT_THROW(this->rig.Port().Remove(this->At(u"a.tmp")), Failure);
}

TYPED_TEST_P(FilesContract, TheTemporaryFolderHasNoClosingBackslash) {
    const std::u16string folder = this->rig.Port().TemporaryFolder();
    EXPECT_FALSE(folder.empty());
    EXPECT_NE(folder.back(), u'\\');
    EXPECT_FALSE(this->rig.Port().CurrentFolder().empty());
}

REGISTER_TYPED_TEST_SUITE_P(FilesContract, QueryTellsExistenceKindAndLength,
                            QueryOfWhatIsNotThereIsNothing,
                            APathThatIsTakenAsItStandsLeadsToTheSameFile,
                            AllFormsOfAPathHaveOneFullForm, FullFormsBeginWithADriveOrAShare,
                            ListTellsFilesAndFoldersApart, AFolderThatIsNotThereCannotBeListed,
                            CreatesOneFolderAndNotItsParents, RenamesWithoutEverReplacing,
                            RemovesAFile, TheTemporaryFolderHasNoClosingBackslash);

} // namespace talvix
