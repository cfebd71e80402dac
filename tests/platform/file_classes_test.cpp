#include "automation/failure.h"
#include "platform/file_classes.h"
#include "tests/fakes/fake_platform.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

struct ClassesRig {
    Journal journal;
    FakeFileAnswers answers{journal};
    FileClasses classes{answers};
};

} // namespace

TEST(FileClasses, AreAskedForOnceInWhateverCase) {
    ClassesRig rig;
    for (const auto* path : {u"P:\\a.doc", u"P:\\b.DOC", u"Q:\\x.y\\c.Doc"}) {
        EXPECT_EQ(rig.classes.IconIndex(path), 3);
        EXPECT_EQ(rig.classes.TypeName(path), u"doc-Datei");
        EXPECT_FALSE(rig.classes.HasOwnIcon(path));
    }
    EXPECT_EQ(rig.journal.Lines(), Lines({u"icon P:\\a.doc", u"type P:\\a.doc"}));
    EXPECT_EQ(rig.journal.steps, 3) << "whether they have icons of their own, once";
}

TEST(FileClasses, WithIconsOfTheirOwnAreAskedForFileByFile) {
    ClassesRig rig;
    for (const auto* path : {u"P:\\a.exe", u"P:\\b.exe", u"P:\\README", u"P:\\x.doc\\LIESMICH"}) {
        rig.classes.IconIndex(path);
        rig.classes.TypeName(path);
        EXPECT_TRUE(rig.classes.HasOwnIcon(path));
    }
    EXPECT_EQ(rig.journal.Count(u"icon "), 4U);
    EXPECT_EQ(rig.journal.Count(u"type "), 4U);
}

TEST(FileClasses, ThatHaveChangedAreAskedForAgain) {
    ClassesRig rig;
    rig.classes.IconIndex(u"P:\\a.doc");
    rig.answers.haveChanged = true;
    rig.classes.IconIndex(u"P:\\a.doc");
    rig.classes.IconIndex(u"P:\\a.doc");
    EXPECT_EQ(rig.journal.Count(u"icon "), 2U);
}

TEST(FileClasses, AFileThatHasJustGoneSaysNothingOfThem) {
    ClassesRig rig;
    rig.answers.unknown = {u"P:\\fort.doc"};
    EXPECT_EQ(rig.classes.IconIndex(u"P:\\fort.doc"), 0);
    EXPECT_EQ(rig.classes.TypeName(u"P:\\fort.doc"), u"");
    EXPECT_EQ(rig.classes.IconIndex(u"P:\\a.doc"), 3);
    EXPECT_EQ(rig.classes.TypeName(u"P:\\a.doc"), u"doc-Datei");
}

TEST(FileClasses, AFailedQuestionIsAskedAgain) {
    for (int failing = 1; failing <= 2; ++failing) {
        ClassesRig rig;
        rig.journal.failAt = failing;
        EXPECT_THROW(rig.classes.IconIndex(u"P:\\a.exe"), Failure);
        EXPECT_EQ(rig.classes.IconIndex(u"P:\\a.exe"), 7);
        EXPECT_TRUE(rig.classes.HasOwnIcon(u"P:\\b.exe"));
    }
}

TEST(FileClasses, MayChangeWhileOneIsAskedFor) {
    ClassesRig rig;
    rig.journal.onStep = [&](std::u16string_view what) {
        if (what == u"icon" && rig.journal.steps == 2) {
            rig.answers.haveChanged = true;
            rig.classes.TypeName(u"P:\\b.txt");
        }
    };
    EXPECT_EQ(rig.classes.IconIndex(u"P:\\a.doc"), 3);
    EXPECT_EQ(rig.classes.IconIndex(u"P:\\a.doc"), 3);
    EXPECT_EQ(rig.journal.Count(u"icon "), 2U);
}

} // namespace talvix
