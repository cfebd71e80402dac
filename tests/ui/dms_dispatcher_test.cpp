#include "tests/fakes/main_rig.h"
#include "tests/proof/failing_memory.h"
#include "ui/dms_dispatcher.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

struct DispatcherRig : MainRig {
    DispatcherRig() {
        fakes.files.MakeFile(u"P:\\Proj\\a.doc", 1);
        fakes.files.MakeFile(u"P:\\Proj\\Sub\\b.doc", 1);
        Attach();
    }
    FakeProgressWindow& Window() { return *fakes.dialogs.progress; }
};

} // namespace

TEST(DMSDispatcher, ShowsTheDesignedFormImportsOnceAndHidesIt) {
    DispatcherRig rig;
    ProgressForm form;
    rig.fakes.timers.onPending = [&] { form = rig.Window().form; };
    rig.main->AddFilesFromProjectFolder(false);
    EXPECT_EQ(rig.RowCount(), 2);
    EXPECT_EQ(form.caption, u"Aktulisierung läuft...");
    EXPECT_EQ(form.label, u"Dateiliste wird aktualisiert...");
    EXPECT_EQ(form.cancelButton, u"Abbrechen");
    EXPECT_EQ(form.dmsTimer, 100U);
    EXPECT_EQ(form.labelTimer, 333U);
    EXPECT_EQ(rig.LinesOf({u"show", u"hide", u"pump", u"Managing.WriteGrid"}),
              Lines({u"show Aktulisierung läuft...", u"pump", u"Managing.WriteGridDataToItemBody",
                     u"hide"}));
    EXPECT_EQ(rig.main->strAddingFile(), u"");
    EXPECT_EQ(rig.LinesOf({u"label"}), Lines({u"label Dateiliste wird aktualisiert...",
                                              u"label Dateiliste wird aktualisiert...",
                                              u"label Dateiliste wird aktualisiert..."}));
    EXPECT_FALSE(rig.fakes.journal.timersWereLeft);
}

TEST(DMSDispatcher, TheLabelNamesTheFileAtItsTick) {
    DispatcherRig rig;
    std::u16string label;
    rig.fakes.timers.onPending = [&] {
        rig.Window().Tick(ProgressTimer::LabelTimer);
        label = rig.Window().label;
        EXPECT_FALSE(rig.Window().running.contains(ProgressTimer::DMSTimer));
    };
    rig.main->AddFilesFromProjectFolder(false);
    EXPECT_EQ(label, u"Dateiliste wird aktualisiert (a.doc)...");
    EXPECT_EQ(rig.LinesOf({u"label"}).back(), u"label Dateiliste wird aktualisiert...");
}

TEST(DMSDispatcher, AbbrechenStopsAndKeepsWhatWasAdded) {
    DispatcherRig rig;
    rig.fakes.timers.onPending = [&] {
        rig.Window().events->CancelButton_Click();
        EXPECT_FALSE(rig.Window().cancelEnabled);
        EXPECT_TRUE(rig.main->StopImport());
    };
    rig.main->AddFilesFromProjectFolder(false);
    EXPECT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.fakes.journal.Count(u"Managing.WriteGridDataToItemBody"), 1U);
    rig.fakes.timers.onPending = nullptr;
    rig.main->AddFilesFromProjectFolder(false);
    EXPECT_EQ(rig.RowCount(), 2);
}

TEST(DMSDispatcher, SilentAsksForNoFolder) {
    DispatcherRig rig;
    rig.SetFolder(u"");
    rig.main->AddFilesFromProjectFolder(true);
    EXPECT_EQ(rig.LinesOf({u"message", u"browse"}), Lines());
    EXPECT_FALSE(rig.main->Attached().silentImport);
    rig.main->AddFilesFromProjectFolder(false);
    EXPECT_EQ(rig.fakes.journal.Count(u"message"), 1U);
}

TEST(DMSDispatcher, AFormThatCannotBeShownImportsNothing) {
    DispatcherRig rig;
    rig.fakes.journal.steps = 0;
    rig.fakes.journal.failAt = 2; // the form is made, but not shown
    rig.main->AddFilesFromProjectFolder(false);
    EXPECT_EQ(rig.fakes.journal.failed, u"show");
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_FALSE(rig.fakes.journal.timersWereLeft);
}

TEST(DMSDispatcher, TheFormGoesThoughMemoryRunsOutInTheFolderRules) {
    std::size_t asked = 0;
    for (std::size_t failAt = 0; failAt <= asked; ++failAt) {
        for (const bool failOn : {false, true}) {
            DispatcherRig rig;
            rig.SetFolder(u"");
            rig.settings[u"DOCUMENTS/RULES"] = u"<Project Number> <Project Name>";
            rig.SetProperty(u"Projektnummer", u"4711");
            const FailingMemory memory(failAt, failOn);
            {
                const CountedMemory counted;
                rig.main->AddFilesFromProjectFolder(false);
            }
            asked = failAt == 0 ? memory.Asked() : asked;
            ASSERT_FALSE(rig.fakes.journal.formsWereLeft) << failAt << (failOn ? " and on" : "");
        }
    }
    EXPECT_GT(asked, 30U);
}

TEST(DMSDispatcher, AnImportFromWithinThePumpIsHarmless) {
    DispatcherRig rig;
    bool nested = false;
    rig.fakes.timers.onPending = [&] {
        if (!nested) {
            nested = true;
            rig.main->AddFilesFromProjectFolder(false);
        }
    };
    rig.main->AddFilesFromProjectFolder(false);
    EXPECT_EQ(rig.RowCount(), 2);
    EXPECT_TRUE(rig.model->Redraw());
}

} // namespace talvix
