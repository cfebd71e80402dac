#include "folder/copy_to_project_folder.h"
#include "folder/file_name.h"
#include "folder/project_copy.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

namespace talvix {

using namespace std::string_literals;

namespace {

struct CopyRig : MainRig {
    CopyRig() {
        fakes.files.MakeFolder(u"P:\\Proj");
        fakes.files.MakeFile(u"C:\\Quelle\\Bericht.doc", 2000);
        Attach();
    }
    void Copy(std::u16string source, std::u16string subject = u"", std::u16string fileName = u"",
              std::u16string subFolder = u"") {
        fakes.journal.Clear();
        CopyToProjectFolder(main->Attached(),
                            {std::move(source), std::move(subject), u"neu", u"Notiz",
                             std::move(fileName), Date{100}, Date{200}, std::move(subFolder)});
    }
    Lines Moves() const { return LinesOf({u"copy", u"rename", u"remove", u"create folder"}); }
    std::u16string Subject(int row) const { return Shown(Cell(row, u"Subject")); }
    std::u16string Store(int row) const { return Shown(Cell(row, u"PhysicalStore1")); }
};

} // namespace

TEST(CopyToProjectFolder, CopiesUnderATemporaryNameRenamesAndAddsTheRow) {
    CopyRig rig;
    rig.Copy(u"C:\\Quelle\\Bericht.doc", u"Mein Bericht");
    EXPECT_EQ(rig.Moves(), Lines({u"copy C:\\Quelle\\Bericht.doc -> P:\\Proj\\~TalvixDMS-1.tmp",
                                  u"rename P:\\Proj\\~TalvixDMS-1.tmp -> P:\\Proj\\Bericht.doc"}));
    EXPECT_EQ(rig.fakes.journal.Count(u"query P:\\Proj\\~"), 1U) << "no more once it is placed";
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Subject(1), u"Mein Bericht");
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"neu"));
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), Value(u"Notiz"));
    EXPECT_EQ(rig.Cell(1, u"CreationDate"), Value(Date{100}));
    EXPECT_EQ(rig.Cell(1, u"ModificationDate"), Value(Date{200}));
    EXPECT_EQ(rig.Store(1), u"P:\\Proj\\Bericht.doc");
}

TEST(CopyToProjectFolder, TakesTheNextFreeNameAndEmptiesTheSubject) {
    CopyRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\Bericht.doc", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\BERICHT (1).DOC", 1);
    rig.Copy(u"C:\\Quelle\\Bericht.doc", u"Mein Bericht");
    EXPECT_EQ(rig.Store(1), u"P:\\Proj\\Bericht (2).doc");
    EXPECT_EQ(rig.Subject(1), u"Bericht (2).doc");
    EXPECT_EQ(rig.fakes.files.Query(u"P:\\Proj\\Bericht.doc")->length, 1);
}

TEST(CopyToProjectFolder, AnEmptySubjectBecomesTheFileName) {
    CopyRig rig;
    rig.Copy(u"C:\\Quelle\\Bericht.doc", u"", u"Anders.doc");
    EXPECT_EQ(rig.Subject(1), u"Anders.doc");
}

TEST(CopyToProjectFolder, ATakenNameWithoutExtensionLosesALetterAndGainsADot) {
    CopyRig rig;
    rig.fakes.files.MakeFile(u"C:\\Quelle\\README", 5);
    rig.fakes.files.MakeFile(u"P:\\Proj\\README", 1);
    rig.Copy(u"C:\\Quelle\\README");
    EXPECT_EQ(rig.Store(1), u"P:\\Proj\\READM (1).");
}

TEST(CopyToProjectFolder, AFolderOfTheNameCountsAsTaken) {
    CopyRig rig;
    rig.fakes.files.MakeFolder(u"P:\\Proj\\Bericht.doc");
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.Store(1), u"P:\\Proj\\Bericht (1).doc");
}

TEST(CopyToProjectFolder, ANameTakenMeanwhileGivesTheNextOne) {
    CopyRig rig;
    rig.fakes.files.beforeRename = [&](std::u16string_view to) {
        if (!to.ends_with(u"(2).doc")) {
            rig.fakes.files.MakeFile(to, 77);
        }
    };
    rig.Copy(u"C:\\Quelle\\Bericht.doc", u"Mein Bericht");
    EXPECT_EQ(rig.Store(1), u"P:\\Proj\\Bericht (2).doc");
    EXPECT_EQ(rig.Subject(1), u"Bericht (2).doc");
    EXPECT_EQ(rig.fakes.files.Query(u"P:\\Proj\\Bericht.doc")->length, 77);
    EXPECT_EQ(rig.fakes.journal.Count(u"copy"), 1U);
}

TEST(CopyToProjectFolder, TheHundredthCandidateIsCopiedToSoThatTheShellAsks) {
    for (const bool replaces : {false, true}) {
        CopyRig rig;
        rig.fakes.files.MakeFile(u"P:\\Proj\\Bericht.doc", 1);
        for (int number = 1; number <= 100; ++number) {
            rig.fakes.files.MakeFile(u"P:\\Proj\\Bericht (" + Shown(Value(number)) + u").doc", 1);
        }
        rig.fakes.shell.replaces = replaces;
        rig.Copy(u"C:\\Quelle\\Bericht.doc");
        EXPECT_EQ(rig.Moves(),
                  Lines({u"copy C:\\Quelle\\Bericht.doc -> P:\\Proj\\Bericht (100).doc"}));
        EXPECT_EQ(rig.RowCount(), replaces ? 1 : 0);
        EXPECT_EQ(rig.fakes.files.Query(u"P:\\Proj\\Bericht (100).doc")->length,
                  replaces ? 2000 : 1);
    }
}

TEST(CopyToProjectFolder, TheHundredthCandidateIsUsedWhenItIsFree) {
    CopyRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\Bericht.doc", 1);
    for (int number = 1; number <= 99; ++number) {
        rig.fakes.files.MakeFile(u"P:\\Proj\\Bericht (" + Shown(Value(number)) + u").doc", 1);
    }
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.Store(1), u"P:\\Proj\\Bericht (100).doc");
}

TEST(CopyToProjectFolder, AFailedCopyAddsNothingAndLeavesNothing) {
    CopyRig rig;
    rig.fakes.shell.copyResult = 5;
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.RowCount(), 0);
    rig.fakes.shell.copyResult = 0x10000;
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    rig.fakes.shell.copyResult = 0;
    rig.Copy(u"C:\\Quelle\\fehlt.doc");
    rig.fakes.files.readOnly = {u"P:\\PROJ"};
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_TRUE(rig.fakes.files.List(u"P:\\Proj").files.empty());
}

TEST(CopyToProjectFolder, ARenameThatFailsRemovesTheTemporaryCopy) {
    CopyRig rig;
    rig.fakes.files.beforeRename = [&](std::u16string_view) {
        rig.fakes.files.readOnly = {u"P:\\PROJ"};
    };
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_EQ(rig.fakes.journal.Count(u"remove P:\\Proj\\~TalvixDMS-1.tmp"), 1U);
    EXPECT_TRUE(rig.fakes.files.List(u"P:\\Proj").files.empty());
}

TEST(CopyToProjectFolder, HostileTargetNamesCountAsFailedCopies) {
    CopyRig rig;
    for (const auto* name : {u"..\\..\\x.txt", u"C:\\x", u"a:b", u"sub\\x.txt", u"/x", u"NUL",
                             u"con.txt", u"COM1.doc", u"lpt\u00B3", u"aux .txt", u"..", u". .",
                             u"a*.txt", u"a?b", u"a\tb", u"a|b", u"\"x\"", u"CONIN$"}) {
        rig.Copy(u"C:\\Quelle\\Bericht.doc", u"s", name);
        EXPECT_EQ(rig.Moves(), Lines()) << testing::PrintToString(name);
    }
    rig.Copy(u"C:\\Quelle\\*.doc", u"", u"a.doc");
    EXPECT_EQ(rig.RowCount(), 0);
    for (const auto* name : {u"COM.doc", u"COM10.doc", u"NULL.txt", u".htaccess", u"a.b.c", u"..a",
                             u"Größe €.txt", u"コン.txt"}) {
        EXPECT_TRUE(IsPlainFileName(name)) << testing::PrintToString(name);
    }
}

TEST(CopyToProjectFolder, TheMarkOfAPathThatIsTakenAsItStandsIsNoPattern) {
    CopyRig rig;
    rig.Copy(u"\\\\?\\C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.RowCount(), 1);
    rig.Copy(u"\\\\?\\C:\\Quelle\\B?richt.doc", u"", u"a.doc");
    EXPECT_EQ(rig.RowCount(), 1);
}

TEST(CopyToProjectFolder, BothPathsAreInNetworkForm) {
    CopyRig rig;
    rig.fakes.network.drives = {{u"P:", u"\\\\srv\\projekte"}, {u"C:", u"\\\\pc\\c"}};
    rig.fakes.files.MakeFolder(u"\\\\srv\\projekte\\Proj");
    rig.fakes.files.MakeFile(u"\\\\pc\\c\\Quelle\\Bericht.doc", 3);
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.Moves(), Lines({u"copy \\\\pc\\c\\Quelle\\Bericht.doc -> "
                                  u"\\\\srv\\projekte\\Proj\\~TalvixDMS-1.tmp",
                                  u"rename \\\\srv\\projekte\\Proj\\~TalvixDMS-1.tmp -> "
                                  u"\\\\srv\\projekte\\Proj\\Bericht.doc"}));
    EXPECT_EQ(rig.Store(1), u"\\\\srv\\projekte\\Proj\\Bericht.doc");
}

TEST(CopyToProjectFolder, SubFolderIsBelowTheProjectFolderUnlessEmptyOrABackslash) {
    CopyRig rig;
    rig.fakes.files.MakeFolder(u"P:\\Proj\\Mails");
    rig.Copy(u"C:\\Quelle\\Bericht.doc", u"", u"", u"Mails");
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore2"), Value(u"\\Mails"));
    rig.Copy(u"C:\\Quelle\\Bericht.doc", u"", u"", u"\\");
    EXPECT_EQ(rig.Store(2), u"P:\\Proj\\Bericht.doc");
}

TEST(CopyToProjectFolder, CreatesTheSubFoldersAfterTheCopyAndBeforeTheRow) {
    CopyRig rig;
    rig.settings[u"DOCUMENTS/SUB_ACTIVE"] = u"True";
    rig.settings[u"DOCUMENTS/SUB_LIST"] = u"Pläne,Fotos";
    rig.Copy(u"C:\\Quelle\\Bericht.doc");
    EXPECT_EQ(rig.LinesOf({u"rename", u"create folder", u"Common", u"Managing.GetNextID"}),
              Lines({u"rename P:\\Proj\\~TalvixDMS-1.tmp -> P:\\Proj\\Bericht.doc",
                     u"Common.ReadGlobalSetting DOCUMENTS/SUB_ACTIVE",
                     u"Common.ReadGlobalSetting DOCUMENTS/SUB_LIST",
                     u"create folder P:\\Proj\\Pläne\\", u"create folder P:\\Proj\\Fotos\\",
                     u"Common.strCurrentUser", u"Managing.GetNextID DMS"}));
}

TEST(CopyToProjectFolder, TheImportPassesOverCopiesOnTheirWay) {
    CopyRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\~TalvixDMS-abc.tmp", 1);
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.tmp", 1);
    rig.main->AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Subject(1), u"a.tmp");
}

TEST(CopyFileShell, AnEndedCopyIsNoSuccess) {
    CopyRig rig;
    EXPECT_EQ(CopyFileShell(rig.fakes.shell, u"C:\\Quelle\\Bericht.doc", u"P:\\Proj\\b.doc"), 0);
    EXPECT_NE(CopyFileShell(rig.fakes.shell, u"C:\\Quelle\\Bericht.doc", u"P:\\Proj\\b.doc"), 0);
    rig.fakes.shell.copyResult = 0x10000;
    EXPECT_NE(CopyFileShell(rig.fakes.shell, u"C:\\Quelle\\Bericht.doc", u"P:\\Proj\\c.doc"), 0);
}

} // namespace talvix
