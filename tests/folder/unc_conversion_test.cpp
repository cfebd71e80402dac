#include "folder/unc_conversion.h"
#include "tests/fakes/fake_platform.h"

#include <gtest/gtest.h>

namespace talvix {

using namespace std::string_literals;

namespace {

struct UncRig {
    std::u16string Convert(std::u16string_view path) {
        return ConvertToUNC(fakes.network, fakes.locale, fakes.trace, path);
    }
    void Share(std::u16string name, std::u16string_view folder) {
        fakes.network.AddShare(std::move(name), u"CSCFlags=0\0MaxUses=4294967295\0Path="s +
                                                    std::u16string(folder) + u"\0Type=0\0\0"s);
    }
    FakePlatform fakes;
};

} // namespace

TEST(ConvertToUNC, AMappedDriveGivesItsRemoteName) {
    UncRig rig;
    rig.fakes.network.drives[u"X:"] = u" \\\\srv\\daten\0rest"s;
    EXPECT_EQ(rig.Convert(u"X:\\Projekte\\4711"), u"\\\\srv\\daten\\Projekte\\4711");
    EXPECT_EQ(rig.Convert(u"X:"), u"\\\\srv\\daten");
}

TEST(ConvertToUNC, AFolderBelowAShareGoesUnderTheComputersNameInSmallLetters) {
    UncRig rig;
    rig.Share(u"Daten", u"C:\\Daten");
    EXPECT_EQ(rig.Convert(u"C:\\Daten\\Proj"), u"\\\\pc1\\Daten\\Proj");
}

TEST(ConvertToUNC, AnExactShareBeatsAPrefixAndEndsInABackslash) {
    UncRig rig;
    rig.Share(u"Daten", u"C:\\Daten");
    rig.Share(u"Proj", u"C:\\Daten\\Proj");
    EXPECT_EQ(rig.Convert(u"C:\\Daten\\Proj"), u"\\\\pc1\\Proj\\");
    EXPECT_EQ(rig.Convert(u"C:\\Daten"), u"\\\\pc1\\Daten\\");
}

TEST(ConvertToUNC, CaseDoesNotCountAndTheRemainderKeepsTheCallersCase) {
    UncRig rig;
    rig.Share(u"Daten", u"C:\\DÄTEN");
    EXPECT_EQ(rig.Convert(u"c:\\däten\\proj"), u"\\\\pc1\\Daten\\proj");
}

TEST(ConvertToUNC, TheFirstMatchInTheTablesOrderWins) {
    UncRig rig;
    rig.Share(u"Eins", u"C:\\D");
    rig.Share(u"Zwei", u"C:\\D\\E");
    EXPECT_EQ(rig.Convert(u"C:\\D\\E\\x"), u"\\\\pc1\\Eins\\E\\x");
}

TEST(ConvertToUNC, CharactersAreComparedNotComponents) {
    UncRig rig;
    rig.Share(u"Datshare", u"C:\\Dat");
    EXPECT_EQ(rig.Convert(u"C:\\Daten\\x"), u"\\\\pc1\\Datshare\\en\\x");
}

TEST(ConvertToUNC, DoubledBackslashesAreHalvedTwice) {
    UncRig rig;
    rig.Share(u"C$", u"C:\\");
    EXPECT_EQ(rig.Convert(u"C:\\\\\\\\a\\b"), u"\\\\pc1\\C$\\a\\b");
}

TEST(ConvertToUNC, AShareWithoutAPathMatchesNothing) {
    UncRig rig;
    rig.fakes.network.AddShare(u"Leer", u"Type=0");
    rig.fakes.network.AddShare(u"Ohne", u"Path");
    EXPECT_EQ(rig.Convert(u"C:\\x"), u"C:\\x");
    EXPECT_EQ(rig.Convert(u""), u"");
}

TEST(ConvertToUNC, WhatCannotBeAskedLeavesThePathAsItIs) {
    UncRig rig;
    rig.Share(u"Daten", u"C:\\Daten");
    rig.fakes.network.computer.reset();
    EXPECT_EQ(rig.Convert(u"C:\\Daten\\x"), u"C:\\Daten\\x");
    rig.fakes.network.computer = u"PC1";
    rig.fakes.network.shares = nullptr;
    EXPECT_EQ(rig.Convert(u"C:\\Daten\\x"), u"C:\\Daten\\x");
    EXPECT_EQ(rig.Convert(u"\\\\srv\\daten\\x"), u"\\\\srv\\daten\\x");
}

TEST(GetSharePath, TakesTheLineBehindTheFirstPath) {
    EXPECT_EQ(GetSharePath(u"Type=0\0Path=C:\\a=b\0Path=D:\\\0"s), u"C:\\a=b");
    EXPECT_EQ(GetSharePath(u"CSCPath\0Path=C:\\a\0"s), u"");
    EXPECT_EQ(GetSharePath(u"path=C:\\a"), u"");
    EXPECT_EQ(GetSharePath(u""), u"");
}

} // namespace talvix
