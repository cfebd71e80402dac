#include "folder/naming_rule.h"
#include "folder/project_folder.h"
#include "folder/project_folder_store.h"
#include "folder/sub_folders.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

namespace talvix {

using namespace std::string_literals;

namespace {

constexpr std::int32_t kYes = 6;
constexpr std::int32_t kNo = 7;

/// A project without a folder, with the settings that the rules read.
struct FolderRig : MainRig {
    FolderRig() {
        Attach();
        SetFolder(u"  ");
        SetProperty(u"Projektnummer", u" 4711 ");
        SetProperty(u"Projektname", u"A/B: C?");
        item->With(u"Companies", u"Meier & Söhne");
        settings[u"DOCUMENTS/RULES"] = u"<Project Number> - <Project Name>";
        settings[u"DOCUMENTS/PATH"] = u"P:\\Projekte\\";
        fakes.journal.Clear();
    }
    Attachment& attachment() { return main->Attached(); }
    std::u16string Get() { return GetProjectFolder(attachment()); }
    Lines Asked() const { return LinesOf({u"message", u"browse", u"Common.Log"}); }
};

Lines Question(std::u16string_view path) {
    return {u"message 36 [Dokumentenablage] Als automatischer Ordnerpfad wurde ermittelt: \r\n" +
            std::u16string(path) + u"\r\n\r\nSind sie damit zufrieden?"};
}

} // namespace

TEST(GetProjectFolder, AStoredFolderIsTrimmedAndNoSettingIsRead) {
    FolderRig rig;
    rig.SetFolder(u"  X:\\Proj  ");
    EXPECT_EQ(rig.Get(), u"X:\\Proj");
    EXPECT_EQ(rig.LinesOf({u"Common"}), Lines());
}

TEST(GetProjectFolder, DerivesAsksAndStoresOnYes) {
    FolderRig rig;
    rig.fakes.messages.answers = {kYes};
    EXPECT_EQ(rig.Get(), u"P:\\Projekte\\4711 - A_B_ C_");
    EXPECT_EQ(rig.Folder(), u"P:\\Projekte\\4711 - A_B_ C_");
    EXPECT_EQ(rig.Asked(), Question(u"P:\\Projekte\\4711 - A_B_ C_"));
    EXPECT_EQ(rig.LinesOf({u"Common.ReadGlobalSetting"}),
              Lines({u"Common.ReadGlobalSetting DOCUMENTS/RULES",
                     u"Common.ReadGlobalSetting DOCUMENTS/PATH"}));
}

TEST(GetProjectFolder, TheDerivedFolderIsShownInNetworkForm) {
    FolderRig rig;
    rig.fakes.network.drives[u"P:"] = u"\\\\srv\\daten";
    rig.settings[u"DOCUMENTS/RULES"] = u"<Company Name>\\<Project Number><Project Number>";
    rig.fakes.messages.answers = {kYes};
    EXPECT_EQ(rig.Get(), u"\\\\srv\\daten\\Projekte\\Meier & Söhne\\47114711");
}

TEST(GetProjectFolder, ARuleWithoutPlaceholdersIsTheNameAndAnEmptyRuleTheBase) {
    FolderRig rig;
    rig.settings[u"DOCUMENTS/RULES"] = u"<project number>";
    rig.fakes.messages.answers = {kYes};
    EXPECT_EQ(rig.Get(), u"P:\\Projekte\\<project number>");
    rig.SetFolder(u"");
    rig.settings[u"DOCUMENTS/RULES"] = u"";
    rig.fakes.messages.answers = {kYes};
    EXPECT_EQ(rig.Get(), u"P:\\Projekte\\");
}

TEST(GetProjectFolder, MissingFieldsAreNamedOnceInTheirOrderAndNothingIsAsked) {
    FolderRig rig;
    rig.settings[u"DOCUMENTS/RULES"] =
        u"<Company Name> <Project Number> <Project Name> <Project Number>";
    rig.SetProperty(u"Projektnummer", u"   ");
    rig.item->Remove(u"Companies");
    EXPECT_EQ(rig.Get(), u"");
    EXPECT_EQ(rig.Asked(),
              Lines({u"Common.Log 3500, (Fehlende Angaben: Projektnummer, Firmenname)"}));
    rig.fakes.journal.Clear();
    rig.properties.erase(u"Projektname");
    EXPECT_EQ(rig.Get(), u"");
    EXPECT_EQ(rig.Asked(), Lines({u"Common.Log 3500, (Fehlende Angaben: Projektnummer, "
                                  u"Projektname, Firmenname)"}));
}

TEST(GetProjectFolder, NoAndCancelledBrowserGiveNothing) {
    FolderRig rig;
    rig.fakes.messages.answers = {kNo};
    EXPECT_EQ(rig.Get(), u"");
    EXPECT_EQ(rig.LinesOf({u"browse"}), Lines({u"browse 65 [Dokumentenablage]"}));
    EXPECT_EQ(rig.Folder(), u"  ");
}

TEST(GetProjectFolder, NoAndAPropertyThatCannotBeReadGoOnWithTheDerivedFolder) {
    FolderRig rig;
    rig.fakes.messages.answers = {kNo};
    rig.folderProperty->Remove(u"Value");
    EXPECT_EQ(GetProjectFolder(rig.main->Attached()), u"P:\\Projekte\\4711 - A_B_ C_");
    EXPECT_EQ(rig.fakes.journal.Count(u"message"), 1U);
}

TEST(GetProjectFolder, NoAndAChosenFolderGiveThatFolder) {
    FolderRig rig;
    rig.fakes.messages.answers = {kNo};
    rig.fakes.dialogs.chosenFolders = {u"Q:\\Eigener"};
    EXPECT_EQ(rig.Get(), u"Q:\\Eigener");
}

TEST(GetProjectFolder, ASilentImportAsksNothingAndUsesItsFlagUp) {
    FolderRig rig;
    rig.attachment().silentImport = true;
    EXPECT_EQ(rig.Get(), u"");
    EXPECT_EQ(rig.Asked(), Lines());
    EXPECT_FALSE(rig.attachment().silentImport);
    rig.fakes.messages.answers = {kYes};
    EXPECT_NE(rig.Get(), u"");
}

TEST(GetProjectFolder, TheSilentFlagStaysWhileAFolderIsStored) {
    FolderRig rig;
    rig.SetFolder(u"P:\\Proj");
    rig.attachment().silentImport = true;
    EXPECT_EQ(rig.Get(), u"P:\\Proj");
    EXPECT_TRUE(rig.attachment().silentImport);
    rig.main->Init();
    EXPECT_FALSE(rig.attachment().silentImport);
}

TEST(GetProjectFolder, SettingsThatCannotBeReadLeaveWhatThereIs) {
    FolderRig rig;
    rig.settings.clear();
    rig.fakes.messages.answers = {kYes};
    EXPECT_EQ(rig.Get(), u"");
    EXPECT_EQ(rig.Asked(), Question(u""));
}

TEST(ProjectFolderExists, IsTrueForAFolderOnly) {
    FolderRig rig;
    rig.SetFolder(u"P:\\Proj");
    EXPECT_FALSE(ProjectFolderExists(rig.attachment()));
    rig.fakes.files.MakeFolder(u"P:\\Proj");
    EXPECT_TRUE(ProjectFolderExists(rig.attachment()));
    rig.fakes.files.MakeFile(u"P:\\Datei", 1);
    rig.SetFolder(u"P:\\Datei");
    EXPECT_FALSE(ProjectFolderExists(rig.attachment()));
}

TEST(CleanFileNameText, ReplacesTheNineCharacters) {
    EXPECT_EQ(CleanFileNameText(u"a/b\\c*d?e|f>g<h:i\"j.k", u"_"), u"a_b_c_d_e_f_g_h_i_j.k");
    EXPECT_EQ(CleanFileNameText(u"", u"_"), u"");
    EXPECT_EQ(CleanFileNameText(u"a:b", u""), u"ab");
}

TEST(btnOpenFolder_Click, OpensTheStoredFolderOnly) {
    FolderRig rig;
    rig.main->btnOpenFolder_Click();
    EXPECT_EQ(rig.LinesOf({u"open", u"message"}), Lines());
    rig.SetFolder(u" P:\\gibtsnicht ");
    rig.main->btnOpenFolder_Click();
    EXPECT_EQ(rig.LinesOf({u"open"}), Lines({u"open P:\\gibtsnicht in P:\\gibtsnicht"}));
}

TEST(btnDMSSetStore_Click, StoresTheNetworkFormAndCreatesTheSubFolders) {
    FolderRig rig;
    rig.fakes.network.drives[u"X:"] = u"\\\\server\\daten";
    rig.fakes.files.MakeFolder(u"\\\\server\\daten\\Projekte\\4711");
    rig.settings[u"DOCUMENTS/SUB_ACTIVE"] = u"True";
    rig.settings[u"DOCUMENTS/SUB_LIST"] = u"Pläne,Verträge\\2024,Fotos";
    rig.fakes.dialogs.chosenFolders = {u"X:\\Projekte\\4711"};
    rig.main->btnDMSSetStore_Click();
    EXPECT_EQ(rig.Folder(), u"\\\\server\\daten\\Projekte\\4711");
    for (const auto* name : {u"Pläne", u"Verträge", u"Verträge\\2024", u"Fotos"}) {
        EXPECT_TRUE(rig.fakes.files.Query(u"\\\\server\\daten\\Projekte\\4711\\"s + name));
    }
}

TEST(btnDMSSetStore_Click, CancelledChangesNothing) {
    FolderRig rig;
    rig.SetFolder(u"P:\\Proj");
    rig.main->btnDMSSetStore_Click();
    EXPECT_EQ(rig.Folder(), u"P:\\Proj");
    EXPECT_EQ(rig.LinesOf({u"Common"}), Lines());
}

TEST(btnDMSSetStore_Click, SubFoldersNeedExactlyTrue) {
    FolderRig rig;
    rig.fakes.files.MakeFolder(u"P:\\Neu");
    rig.settings[u"DOCUMENTS/SUB_LIST"] = u"Pläne";
    for (const auto* setting : {u"true", u"TRUE", u" True", u"1", u""}) {
        rig.settings[u"DOCUMENTS/SUB_ACTIVE"] = setting;
        rig.fakes.dialogs.chosenFolders = {u"P:\\Neu"};
        rig.main->btnDMSSetStore_Click();
        EXPECT_FALSE(rig.fakes.files.Query(u"P:\\Neu\\Pläne"));
    }
    rig.settings[u"DOCUMENTS/SUB_ACTIVE"] = u"True";
    rig.fakes.dialogs.chosenFolders = {u"P:\\Neu"};
    rig.main->btnDMSSetStore_Click();
    EXPECT_TRUE(rig.fakes.files.Query(u"P:\\Neu\\Pläne"));
}

TEST(btnDMSDeletetStore_Click, ForgetsTheFolderOnYesOnly) {
    FolderRig rig;
    rig.SetFolder(u"P:\\Proj");
    rig.fakes.messages.answers = {kNo};
    rig.main->btnDMSDeletetStore_Click();
    EXPECT_EQ(rig.Folder(), u"P:\\Proj");
    rig.fakes.journal.Clear();
    rig.fakes.messages.answers = {kYes};
    rig.main->btnDMSDeletetStore_Click();
    EXPECT_EQ(rig.Folder(), u"");
    EXPECT_EQ(rig.LinesOf({u"message"}), Lines({u"message 52 [Ordnerpfadangabe entfernen] Soll die "
                                                u"Ordnerpfadangabe wirklich entfernt werden?"}));
}

TEST(MkDirs, CreatesEveryMissingLevelWithOrWithoutClosingBackslash) {
    for (const auto* path : {u"C:\\a\\b", u"C:\\a\\b\\"}) {
        FolderRig rig;
        rig.fakes.files.MakeFolder(u"C:\\");
        EXPECT_TRUE(rig.main->MkDirs(path));
        EXPECT_EQ(rig.LinesOf({u"create folder"}),
                  Lines({u"create folder C:\\a\\", u"create folder C:\\a\\b\\"}));
        EXPECT_TRUE(rig.fakes.files.Query(u"C:\\a\\b"));
        EXPECT_TRUE(rig.main->MkDirs(path));
    }
}

TEST(MkDirs, StopsAtTheFirstLevelThatCannotBeCreatedAndKeepsTheOthers) {
    FolderRig rig;
    rig.fakes.files.MakeFolder(u"C:\\a");
    rig.fakes.files.readOnly = {u"C:\\A\\B"};
    EXPECT_FALSE(rig.main->MkDirs(u"C:\\a\\b\\c\\d"));
    EXPECT_TRUE(rig.fakes.files.Query(u"C:\\a\\b"));
    EXPECT_FALSE(rig.fakes.files.Query(u"C:\\a\\b\\c"));
    rig.fakes.files.MakeFile(u"C:\\a\\datei", 1);
    EXPECT_FALSE(rig.main->MkDirs(u"C:\\a\\datei"));
}

TEST(MkDirs, PassesOverTheLevelsUpToTheShare) {
    FolderRig rig;
    rig.fakes.files.MakeFolder(u"\\\\srv\\share");
    EXPECT_TRUE(rig.main->MkDirs(u"\\\\srv\\share\\A"));
    EXPECT_EQ(rig.LinesOf({u"create folder"}), Lines({u"create folder \\\\srv\\share\\A\\"}));
    EXPECT_TRUE(rig.main->MkDirs(u"\\\\srv\\share"));
    FolderRig away;
    away.main->MkDirs(u"\\\\srv\\share\\A");
    EXPECT_EQ(away.LinesOf({u"create folder"}), Lines({u"create folder \\\\srv\\share\\A\\"}));
}

TEST(CreateProjectFolderOnRequest, CreatesOnYesAndShowsTheEmptyText) {
    FolderRig rig;
    rig.fakes.files.MakeFolder(u"P:\\");
    rig.SetFolder(u"P:\\Proj\\4711");
    rig.fakes.messages.answers = {kYes};
    CreateProjectFolderOnRequest(rig.attachment());
    EXPECT_TRUE(rig.fakes.files.Query(u"P:\\Proj\\4711"));
    EXPECT_EQ(rig.LinesOf({u"message"}),
              Lines({u"message 36 [Dokumente] Das Verzeichnis \"P:\\Proj\\4711\" existiert nicht. "
                     u"Soll es jetzt angelegt werden?",
                     u"message 0 [] "}));
}

TEST(CreateProjectFolderOnRequest, SaysFehlerWhereItFailsAndNothingOnNo) {
    FolderRig rig;
    rig.SetFolder(u"Q:\\Proj");
    rig.fakes.messages.answers = {kNo};
    CreateProjectFolderOnRequest(rig.attachment());
    EXPECT_EQ(rig.fakes.journal.Count(u"message"), 1U);
    rig.fakes.journal.Clear();
    rig.fakes.messages.answers = {kYes};
    CreateProjectFolderOnRequest(rig.attachment());
    EXPECT_EQ(rig.LinesOf({u"message 0"}), Lines({u"message 0 [] Fehler", u"message 0 [] "}));
}

TEST(GetSubFolderList, KeepsEveryEntryAsItStands) {
    FolderRig rig;
    EXPECT_EQ(GetSubFolderList(rig.attachment()), Lines());
    rig.settings[u"DOCUMENTS/SUB_LIST"] = u"";
    EXPECT_EQ(GetSubFolderList(rig.attachment()), Lines());
    rig.settings[u"DOCUMENTS/SUB_LIST"] = u"Pläne, Verträge\\2024,,Fotos,";
    EXPECT_EQ(GetSubFolderList(rig.attachment()),
              Lines({u"Pläne", u" Verträge\\2024", u"", u"Fotos", u""}));
}

TEST(CreateSubFolder, TriesEveryLevelOfANetworkPathAndChangesThePath) {
    FolderRig rig;
    std::u16string path = u"\\\\srv\\share\\P\\A";
    CreateSubFolder(rig.fakes.files, rig.fakes.trace, path);
    EXPECT_EQ(path, u"\\\\srv\\share\\P\\A\\");
    EXPECT_EQ(
        rig.LinesOf({u"create folder"}),
        Lines({u"create folder \\\\srv\\", u"create folder \\\\srv\\share\\",
               u"create folder \\\\srv\\share\\P\\", u"create folder \\\\srv\\share\\P\\A\\"}));
}

} // namespace talvix
