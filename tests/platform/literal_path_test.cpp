#include "platform/literal_path.h"

#include <gtest/gtest.h>

namespace talvix {

TEST(LiteralPath, IsTheSamePlaceWithoutItsMark) {
    EXPECT_EQ(PlainPath(u"\\\\?\\C:\\a"), u"C:\\a");
    EXPECT_EQ(PlainPath(u"\\\\?\\UNC\\srv\\daten"), u"\\\\srv\\daten");
    EXPECT_EQ(PlainPath(u"\\\\?\\unc\\srv\\daten"), u"\\\\srv\\daten");
    for (const auto* path : {u"C:\\a", u"\\\\srv\\UNC\\a", u"\\\\.\\C:", u"UNC\\a", u""}) {
        EXPECT_EQ(PlainPath(path), path);
    }
}

TEST(LiteralPath, OnlyWhatFollowsTheMarkCanBeAPattern) {
    EXPECT_FALSE(HoldsWildcards(u"\\\\?\\C:\\a"));
    EXPECT_TRUE(HoldsWildcards(u"\\\\?\\C:\\a?"));
    EXPECT_TRUE(HoldsWildcards(u"C:\\*"));
    EXPECT_TRUE(HoldsWildcards(u"\\\\srv?\\a"));
    EXPECT_FALSE(HoldsWildcards(u""));
}

} // namespace talvix
