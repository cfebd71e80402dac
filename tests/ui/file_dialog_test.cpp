#include "tests/fakes/fake_platform.h"
#include "ui/file_dialog.h"

#include <gtest/gtest.h>

namespace talvix {

using namespace std::string_literals;

namespace {

struct FileRig {
    FakePlatform fakes;
    FileDialog dialog{fakes.ports};
};

} // namespace

TEST(FileDialog, WithoutAFilterOffersAllFiles) {
    FileRig rig;
    EXPECT_EQ(rig.dialog.FilterText(), u"Alle Dateien\0*.*\0\0"s);
}

TEST(FileDialog, HalfPairsAreLeftOutAndTheExtraFilterFollows) {
    FileRig rig;
    rig.dialog.SetFilter(1, u"Texte", u"*.txt");
    rig.dialog.SetFilter(2, u"Ohne", u"");
    rig.dialog.SetFilter(3, u"Bilder", u"*.jpg");
    rig.dialog.SetFilter(6, u"Nie", u"*.x");
    EXPECT_EQ(rig.dialog.FilterText(), u"Texte\0*.txt\0Bilder\0*.jpg\0\0\0"s);
    rig.dialog.Filter = u"Mehr\0*.m\0\0"s;
    EXPECT_EQ(rig.dialog.FilterText(), u"Texte\0*.txt\0Bilder\0*.jpg\0Mehr\0*.m\0\0\0"s);
    EXPECT_EQ(rig.dialog.Filter, u"Mehr\0*.m"s);
}

TEST(FileDialog, ChoosesFlagsOnlyWhereNoneAreSet) {
    const struct {
        std::uint32_t given;
        bool several;
        const char16_t* intention;
        std::uint32_t wanted;
    } cases[] = {{0, false, u"Open", 6148},
                 {0, true, u"Open", 530948},
                 {0, true, u"Save", 2054},
                 {6148, false, u"Open", 6148},
                 {4, true, u"Save", 0x80204}};
    for (const auto& each : cases) {
        FileRig rig;
        rig.dialog.Flags = each.given;
        rig.dialog.MultiSelect = each.several;
        rig.dialog.CheckFlags(each.intention);
        EXPECT_EQ(rig.dialog.Flags, each.wanted);
    }
}

TEST(FileDialog, AnUnknownIntentionIsToldAndLeavesTheFlags) {
    FileRig rig;
    rig.dialog.CheckFlags(u"Drucken");
    EXPECT_EQ(rig.fakes.journal.Lines(),
              Lines({u"message 16 [CheckFlags] Unbekannte Intention: Drucken"}));
    EXPECT_EQ(rig.dialog.Flags, 0U);
}

TEST(FileDialog, OneFileIsReadUpToItsFirstNul) {
    FileRig rig;
    rig.fakes.dialogs.chosenFiles = {u"C:\\a.txt\0rest"s};
    rig.dialog.DefaultFileName = u"vorher.txt";
    rig.dialog.DefaultExt = u"txt";
    rig.dialog.ShowOpen();
    EXPECT_EQ(rig.dialog.FileName(), u"C:\\a.txt");
    EXPECT_EQ(rig.dialog.FileCount(), 1);
    EXPECT_EQ(rig.dialog.GetNextFile(), u"");
    ASSERT_TRUE(rig.fakes.dialogs.lastChooser);
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->title, u"Datei öffnen");
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->folder, u"C:\\Start");
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->bufferLength, 512U);
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->fileName, u"vorher.txt");
    EXPECT_FALSE(rig.fakes.dialogs.lastChooser->toSave);
}

TEST(FileDialog, ACancelledDialogHasNoFile) {
    FileRig rig;
    rig.fakes.dialogs.chosenFiles = {u"C:\\a.txt"s};
    rig.dialog.ShowOpen();
    rig.dialog.ShowSave();
    EXPECT_EQ(rig.dialog.FileName(), u"");
    EXPECT_EQ(rig.dialog.FileCount(), 0);
    EXPECT_TRUE(rig.fakes.dialogs.lastChooser->toSave);
}

TEST(FileDialog, SeveralFilesComeOneByOneAsFullPaths) {
    FileRig rig;
    rig.dialog.MultiSelect = true;
    rig.fakes.dialogs.chosenFiles = {u"C:\\Ordner\0a.txt\0b.txt\0\0"s, u"C:\\einzel.txt\0\0"s,
                                     u"D:\\\0x\0y\0\0"s};
    rig.dialog.ShowOpen();
    EXPECT_EQ(rig.dialog.FileName(), u"C:\\Ordner\\a.txt");
    EXPECT_EQ(rig.dialog.FileCount(), 2);
    EXPECT_EQ(rig.dialog.GetNextFile(), u"C:\\Ordner\\b.txt");
    EXPECT_EQ(rig.dialog.GetNextFile(), u"");
    rig.dialog.ShowOpen();
    EXPECT_EQ(rig.dialog.FileName(), u"C:\\einzel.txt");
    EXPECT_EQ(rig.dialog.FileCount(), 1);
    rig.dialog.ShowOpen();
    EXPECT_EQ(rig.dialog.FileName(), u"D:\\x");
}

TEST(FileDialog, TheCompatibleFormGivesTheTextAsItStands) {
    FileRig rig;
    rig.dialog.MultiSelect = true;
    rig.dialog.MultiSelectOCXCompatible = true;
    rig.fakes.dialogs.chosenFiles = {u"C:\\Ordner\0a.txt\0b.txt\0\0xx"s};
    rig.dialog.ShowOpen();
    EXPECT_EQ(rig.dialog.FileName(), u"C:\\Ordner\0a.txt\0b.txt"s);
}

TEST(FileDialog, ShowFolderChoosesAFolder) {
    FileRig rig;
    rig.fakes.dialogs.chosenFolders = {u"C:\\Wahl"};
    rig.dialog.ShowFolder();
    EXPECT_EQ(rig.dialog.FileName(), u"C:\\Wahl");
    EXPECT_EQ(rig.dialog.FileCount(), 1);
    EXPECT_EQ(rig.fakes.journal.Count(u"browse 65 []"), 1U) << "folders only, in the new style";
}

TEST(FileDialog, SavingAfterOpeningAsksBeforeItReplaces) {
    FileRig rig;
    rig.dialog.ShowOpen();
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->flags, 6148U);
    rig.dialog.ShowSave();
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->flags, 2054U);
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->title, u"Datei speichern unter");
}

TEST(FileDialog, AFolderLeavesNoFilesOfAnEarlierChoice) {
    FileRig rig;
    rig.dialog.MultiSelect = true;
    rig.fakes.dialogs.chosenFiles = {u"C:\\Ordner\0a.txt\0b.txt\0\0"s};
    rig.fakes.dialogs.chosenFolders = {u"C:\\Wahl"};
    rig.dialog.ShowOpen();
    EXPECT_EQ(rig.dialog.FileCount(), 2);
    rig.dialog.ShowFolder();
    EXPECT_EQ(rig.dialog.FileCount(), 1);
    EXPECT_EQ(rig.dialog.GetNextFile(), u"");
}

} // namespace talvix
