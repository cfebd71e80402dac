#include "automation/failure.h"
#include "common/general.h"
#include "common/mod_message_handling.h"
#include "common/mod_registry.h"
#include "common/mod_registry_access.h"
#include "common/settings.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/fake_platform.h"

#include <gtest/gtest.h>

namespace talvix {

TEST(GetFolderPath, GoesUpToTheLastBackslashOrColon) {
    EXPECT_EQ(GetFolderPath(u"C:\\a\\b.txt"), u"C:\\a");
    EXPECT_EQ(GetFolderPath(u"C:\\b.txt"), u"C:");
    EXPECT_EQ(GetFolderPath(u"C:b.txt"), u"C:");
    EXPECT_EQ(GetFolderPath(u"b.txt"), u"");
    EXPECT_EQ(GetFolderPath(u"C:"), u"C:");
    EXPECT_EQ(GetFolderPath(u"\\\\server\\share\\a.doc"), u"\\\\server\\share");
    EXPECT_EQ(GetFolderPath(u""), u"");
}

TEST(GetFileName, IsWhatFollowsTheLastBackslash) {
    EXPECT_EQ(GetFileName(u"   "), u"");
    EXPECT_EQ(GetFileName(u"a.doc"), u"a.doc");
    EXPECT_EQ(GetFileName(u"C:\\x\\a.doc"), u"a.doc");
    EXPECT_EQ(GetFileName(u"C:\\x\\"), u"");
    EXPECT_EQ(GetFileName(u"C:a.doc"), u"C:a.doc");
}

TEST(FileExistsOnDisk, IsTrueForFilesOnly) {
    FakePlatform fakes;
    fakes.files.MakeFile(u"C:\\x\\a.doc", 1);
    EXPECT_TRUE(FileExistsOnDisk(fakes.files, u"c:\\X\\A.DOC"));
    EXPECT_FALSE(FileExistsOnDisk(fakes.files, u"C:\\x"));
    EXPECT_FALSE(FileExistsOnDisk(fakes.files, u"C:\\x\\b.doc"));
    EXPECT_FALSE(FileExistsOnDisk(fakes.files, u""));
}

TEST(PixelsToPoints, IsNeverNegativeAndFailsWhereTheProductOverflows) {
    FakePlatform fakes;
    EXPECT_FLOAT_EQ(PixelsToPoints(fakes.system, 96), 72);
    EXPECT_FLOAT_EQ(PixelsToPoints(fakes.system, -4), 3);
    fakes.system.pixelsPerInch = 144;
    EXPECT_FLOAT_EQ(PixelsToPoints(fakes.system, 96), 48);
    EXPECT_THROW(PixelsToPoints(fakes.system, 29826162), Failure);
    EXPECT_NO_THROW(PixelsToPoints(fakes.system, 29826161));
}

TEST(GetOSName, NamesTheSystemsItKnows) {
    FakePlatform fakes;
    struct Case {
        SystemVersion version;
        const char16_t* name;
    };
    const Case cases[] = {
        {{0, 3, 1}, u"Win 3.1"},    {{1, 4, 0}, u"Win95"},
        {{1, 4, 10}, u"Win98"},     {{1, 4, 90}, u"WinME"},
        {{1, 4, 5}, u"Unknown"},    {{2, 3, 51}, u"NT 3.51"},
        {{2, 4, 0}, u"NT 4.0"},     {{2, 5, 0}, u"Windows 2000"},
        {{2, 5, 1}, u"Windows XP"}, {{2, 5, 2}, u"Windows 2003"},
        {{2, 5, 3}, u""},           {{2, 6, 1}, u"Unknown"},
        {{2, 2, 0}, u"Unknown"},    {{3, 1, 0}, u"Unknown"},
    };
    for (const Case& each : cases) {
        fakes.system.version = each.version;
        EXPECT_EQ(GetOSName(fakes.system), each.name)
            << each.version.platform << " " << each.version.major;
    }
    fakes.system.version.reset();
    EXPECT_EQ(GetOSName(fakes.system), u"");
}

TEST(Registry, ReadersTakeTheirOwnTypeOnly) {
    Journal journal;
    FakeRegistry registry{journal};
    RegSaveString(registry, kCurrentUser, u"Software\\Talvix", u"Text", u"abc");
    RegSaveDWord(registry, kCurrentUser, u"Software\\Talvix", u"Number", -1);
    RegSaveString(registry, kCurrentUser, u"Software\\Talvix", u"Leer", u"");
    EXPECT_EQ(RegGetString(registry, kCurrentUser, u"software\\talvix", u"text"), Value(u"abc"));
    EXPECT_EQ(RegGetString(registry, kCurrentUser, u"Software\\Talvix", u"Number"), Value());
    EXPECT_EQ(RegGetString(registry, kCurrentUser, u"Software\\Talvix", u"Fehlt"), Value());
    EXPECT_EQ(RegGetString(registry, kCurrentUser, u"Software\\Talvix", u"Leer"), Value(u""));
    EXPECT_EQ(RegGetDWord(registry, kCurrentUser, u"Software\\Talvix", u"Number"), -1);
    EXPECT_EQ(RegGetDWord(registry, kCurrentUser, u"Software\\Talvix", u"Text"), 0);
    EXPECT_TRUE(RegValueExists(registry, kCurrentUser, u"Software\\Talvix", u"Text"));
    EXPECT_TRUE(RegValueExists(registry, kCurrentUser, u"Software\\Talvix", u"Number"));
    EXPECT_FALSE(RegValueExists(registry, kLocalMachine, u"Software\\Talvix", u"Text"));
}

TEST(FileIconsDisabled, TheUsersValueGoesBeforeTheMachines) {
    FakePlatform fakes;
    EXPECT_FALSE(FileIconsDisabled(fakes.registry, fakes.trace));
    fakes.registry.WriteNumber(kLocalMachine, u"Software\\Talvix", u"FileIconsDisabled", 1);
    EXPECT_TRUE(FileIconsDisabled(fakes.registry, fakes.trace));
    fakes.registry.WriteNumber(kCurrentUser, u"Software\\Talvix", u"FileIconsDisabled", 0);
    EXPECT_FALSE(FileIconsDisabled(fakes.registry, fakes.trace));
    fakes.registry.WriteNumber(kLocalMachine, u"Software\\Talvix", u"FileIconsDisabled", 0);
    fakes.registry.WriteNumber(kCurrentUser, u"Software\\Talvix", u"FileIconsDisabled", 1);
    EXPECT_TRUE(FileIconsDisabled(fakes.registry, fakes.trace));
    fakes.registry.WriteNumber(kCurrentUser, u"Software\\Talvix", u"FileIconsDisabled", 2);
    EXPECT_FALSE(FileIconsDisabled(fakes.registry, fakes.trace));
    fakes.registry.WriteText(kCurrentUser, u"Software\\Talvix", u"FileIconsDisabled", u"1");
    EXPECT_FALSE(FileIconsDisabled(fakes.registry, fakes.trace));
}

TEST(RegisterMessages, GivesTheEightArgumentsInTheirOrder) {
    Journal journal;
    auto common = std::make_shared<Expando>(u"Common", &journal);
    common->With(u"AddMessageDescription", Empty());
    RegisterMessages(Late(Value(common)));
    EXPECT_EQ(
        journal.Lines(),
        Lines(
            {u"Common.AddMessageDescription 3500, Projectnumber empty (Store Path):, True, Um "
             u"automatisch einen Projektordner erstellen zu können, werden noch Angaben benötigt. "
             u"Bitte ergänzen Sie die Informationen bevor Sie fortfahren.\r\nSie können den "
             u"Speicherort alternativ auch manuell angeben. , 64, Fehlende Informationen, True, "
             u"True"}));
}

} // namespace talvix
