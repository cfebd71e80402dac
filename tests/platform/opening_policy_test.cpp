#include "automation/text.h"
#include "platform/opening_policy.h"
#include "tests/fakes/fake_platform.h"

#include <gtest/gtest.h>

namespace talvix {

TEST(OpeningPolicy, AsksForNothingWhereNothingIsSet) {
    FakePlatform fakes;
    const OpeningPolicy policy = ReadOpeningPolicy(fakes.registry);
    for (const auto* what : {u"C:\\a.exe", u"http://x", u"javascript:x", u"", u"\\\\srv\\x.bat"}) {
        EXPECT_FALSE(AsksBeforeOpening(policy, what));
    }
}

TEST(OpeningPolicy, SchemesThatAreNotAllowedAsk) {
    const OpeningPolicy policy{u"http; HTTPS", u""};
    EXPECT_FALSE(AsksBeforeOpening(policy, u"https://x"));
    EXPECT_FALSE(AsksBeforeOpening(policy, u"HTTP://x"));
    EXPECT_TRUE(AsksBeforeOpening(policy, u"ms-word:ofe|u|x"));
    EXPECT_TRUE(AsksBeforeOpening(policy, u" file:///C:/a.txt"));
    EXPECT_FALSE(AsksBeforeOpening(policy, u"C:\\a:b")) << "a drive is no scheme";
    EXPECT_FALSE(AsksBeforeOpening(policy, u"\\\\srv\\a:b"));
}

TEST(OpeningPolicy, TypesAskHoweverTheirNameEnds) {
    const OpeningPolicy policy{u"", u".exe;.BAT"};
    for (const auto* what : {u"C:\\a.EXE", u"a.bat. .", u"file:///C:/x.exe", u"C:\\a.txt:b.exe"}) {
        EXPECT_TRUE(AsksBeforeOpening(policy, what)) << ToUtf8(what);
    }
    for (const auto* what : {u"C:\\a.exe\\b", u"C:\\exe", u"http://x/a.exe", u"..."}) {
        EXPECT_FALSE(AsksBeforeOpening(policy, what)) << ToUtf8(what);
    }
}

TEST(OpeningPolicy, TheMachinesSwitchGoesBeforeTheUsers) {
    FakePlatform fakes;
    const auto* key = u"Software\\Policies\\Talvix\\DMS";
    fakes.registry.WriteText(kCurrentUser, key, u"AskTypes", u".a");
    EXPECT_EQ(ReadOpeningPolicy(fakes.registry).askedTypes, u".a");
    fakes.registry.WriteText(kLocalMachine, key, u"AskTypes", u".b");
    EXPECT_EQ(ReadOpeningPolicy(fakes.registry).askedTypes, u".b");
}

} // namespace talvix
