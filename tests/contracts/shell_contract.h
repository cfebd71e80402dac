#pragma once

#include "platform/shell.h"

#include <gtest/gtest.h>

namespace talvix {

/// What every `Shell` keeps to. A rig offers Port(), File(name), the path of a file that it
/// makes, and Length(path).
template <typename Rig>
class ShellContract : public testing::Test {
protected:
    Rig rig;
};
TYPED_TEST_SUITE_P(ShellContract);

TYPED_TEST_P(ShellContract, FilesHaveATypeNameAndAnIconPlace) {
    const std::u16string path = this->rig.File(u"Größe.txt");
    EXPECT_NE(this->rig.Port().TypeName(path), u"");
    EXPECT_GE(this->rig.Port().Classes().IconIndex(path), 0);
    EXPECT_EQ(this->rig.Port().Classes().IconIndex(path),
              this->rig.Port().Classes().IconIndex(path));
    EXPECT_EQ(this->rig.Port().TypeName(path),
              this->rig.Port().TypeName(this->rig.File(u"andere.txt")));
}

TYPED_TEST_P(ShellContract, ProgramsAndNamesWithoutExtensionHaveIconsOfTheirOwn) {
    EXPECT_TRUE(this->rig.Port().Classes().HasOwnIcon(this->rig.File(u"setup.exe")));
    EXPECT_TRUE(this->rig.Port().Classes().HasOwnIcon(this->rig.File(u"README")));
    EXPECT_FALSE(this->rig.Port().Classes().HasOwnIcon(this->rig.File(u"a.txt")));
}

TYPED_TEST_P(ShellContract, ATypeHasOneNameForTheRowsAndForTheDialog) {
    for (const auto* name : {u"a.txt", u"setup.exe", u"README"}) {
        const std::u16string path = this->rig.File(name);
        EXPECT_EQ(this->rig.Port().TypeName(path), this->rig.Port().Classes().TypeName(path));
    }
}

TYPED_TEST_P(ShellContract, ThereIsASystemImageList) {
    EXPECT_NE(this->rig.Port().SmallIconList(), 0);
    EXPECT_EQ(this->rig.Port().SmallIconList(), this->rig.Port().SmallIconList());
}

TYPED_TEST_P(ShellContract, CopiesAFileToANewName) {
    const std::u16string source = this->rig.File(u"Quelle €.txt");
    const std::u16string target = source + u".Kopie.txt";
    const ShellCopy copy = this->rig.Port().Copy(source, target);
    EXPECT_EQ(copy.result, 0);
    EXPECT_FALSE(copy.aborted);
    EXPECT_EQ(this->rig.Length(target), this->rig.Length(source));
}

REGISTER_TYPED_TEST_SUITE_P(ShellContract, FilesHaveATypeNameAndAnIconPlace,
                            ProgramsAndNamesWithoutExtensionHaveIconsOfTheirOwn,
                            ATypeHasOneNameForTheRowsAndForTheDialog, ThereIsASystemImageList,
                            CopiesAFileToANewName);

} // namespace talvix
