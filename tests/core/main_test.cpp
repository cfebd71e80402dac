#include "automation/failure.h"
#include "automation/text.h"
#include "core/document_record.h"
#include "core/grid_setup.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace talvix {

TEST(ReferenceLibraries, RegistersTheMessageAndTakesWhatIsAnObject) {
    MainRig rig;
    rig.Reference();
    EXPECT_EQ(rig.fakes.journal.Count(u"Common.AddMessageDescription 3500"), 1U);
    rig.main->ReferenceLibraries(5, u"kein Objekt", Nothing(), Empty(), Null(), Missing());
    rig.main->InitSGDMS();
    EXPECT_EQ(rig.model->columns.Count(), 0U);
}

TEST(DereferenceLibraries, TwiceDoesNothingTheSecondTime) {
    MainRig rig;
    rig.Attach();
    const long before = rig.managing.use_count();
    rig.main->DereferenceLibraries();
    EXPECT_LT(rig.managing.use_count(), before);
    rig.main->DereferenceLibraries();
}

namespace {

/// A library that has the component let go of it while it is called.
class LeavingLibrary : public LateObject {
public:
    LeavingLibrary(bool& isGone, Value item) : isGone_(isGone), item_(std::move(item)) {}
    LeavingLibrary(const LeavingLibrary&) = delete;
    LeavingLibrary& operator=(const LeavingLibrary&) = delete;
    ~LeavingLibrary() override { isGone_ = true; }
    std::optional<MemberId> FindMember(std::u16string_view) override {
        leave();
        EXPECT_FALSE(isGone_) << "while it looks a name up";
        return 1;
    }
    Value Invoke(MemberId, unsigned, const Arguments&) override {
        EXPECT_FALSE(isGone_) << "while it answers";
        return item_;
    }
    std::u16string TypeName() const override { return u"Leaving"; }
    std::function<void()> leave = [] {};

private:
    bool& isGone_;
    Value item_;
};

} // namespace

TEST(DereferenceLibraries, FromInsideACallLeavesTheObjectThatIsCalled) {
    MainRig rig;
    rig.Attach();
    bool isGone = false;
    {
        const auto library = std::make_shared<LeavingLibrary>(isGone, Value(rig.item));
        rig.main->ReferenceLibraries(library, library, library, library, library, library);
        library->leave = [&] { rig.main->DereferenceLibraries(); };
    }
    EXPECT_FALSE(isGone);
    rig.main->btnExportDocuments_Click();
    EXPECT_TRUE(isGone) << "when the call has come back";
}

TEST(InitSGDMS, CreatesTheFifteenColumnsInTheirOrder) {
    MainRig rig;
    rig.Reference();
    rig.main->InitSGDMS();
    ASSERT_EQ(rig.model->columns.Count(), 15U);
    struct Expected {
        const char16_t* key;
        const char16_t* caption;
        int type;
        bool hidden;
        int width;
        int alignment;
    };
    const Expected expected[] = {
        {u"ID", u"Nr.", 3, true, 0, 0},
        {u"ObjectType", u"Objekt Typ", 3, true, 0, 0},
        {u"Icon", u"", 65, false, 15, 4},
        {u"Subject", u"Name/Betreff", 8, false, 140, 4},
        {u"ItemSize", u"Größe", 8, false, 70, 6},
        {u"ObjectDescription", u"Typ", 8, false, 120, 4},
        {u"Creator", u"Erstellt von", 8, true, 0, 0},
        {u"CreationDate", u"Erstellt am", 7, false, 100, 4},
        {u"LastModificationBy", u"Geändert von", 8, true, 0, 0},
        {u"ModificationDate", u"Geändert am", 7, true, 0, 0},
        {u"Status", u"Status", 8, false, 30, 3},
        {u"LongDescription", u"Notizen", 8, true, 0, 0},
        {u"PhysicalStore1", u"Speicherort", 8, true, 0, 0},
        {u"PhysicalStore2", u"Ordner", 8, true, 0, 0},
        {u"PhysicalStore3", u"Speicherort3", 8, true, 0, 0},
    };
    for (std::size_t at = 0; at < 15; ++at) {
        const grid::Column& column = rig.model->columns.At(at);
        EXPECT_EQ(column.key, expected[at].key);
        EXPECT_EQ(column.caption, expected[at].caption);
        EXPECT_EQ(static_cast<int>(column.dataType), expected[at].type);
        EXPECT_EQ(column.hidden, expected[at].hidden);
        if (expected[at].width != 0) {
            EXPECT_EQ(column.width, expected[at].width);
            EXPECT_EQ(static_cast<int>(column.alignment), expected[at].alignment);
            EXPECT_EQ(static_cast<int>(column.headerAlignment), expected[at].alignment);
        }
    }
    EXPECT_TRUE(rig.model->layout.groupByBox);
    EXPECT_EQ(rig.model->options.groupByBoxText,
              u"Um nach einer Spalte zu gruppieren, ziehen Sie die Spaltenüberschrift hierhin.");
    EXPECT_EQ(rig.model->options.imageList, 4711);
    EXPECT_TRUE(rig.model->Redraw());
}

TEST(InitSGDMS, SetsTheGridUpInOrder) {
    MainRig rig;
    rig.Reference();
    const Lines calls = rig.GridCalls([&] { rig.main->InitSGDMS(); });
    const Lines first = {u"Redraw =", u"MultiSelect =", u"FullRowSelect =", u"AllowEdit =",
                         u"HeaderVisible ="};
    const Lines icon = {u"Add Icon",    u"Caption  =",        u"DataType =", u"Width =",
                        u"Alignment =", u"HeaderAlignment =", u"Hidden ="};
    const Lines last = {u"GroupByBox =",
                        u"GroupByBoxText Um nach einer Spalte zu gruppieren, ziehen Sie die "
                        u"Spaltenüberschrift hierhin. =",
                        u"ImageList =", u"Redraw ="};
    EXPECT_TRUE(std::equal(first.begin(), first.end(), calls.begin()));
    EXPECT_NE(std::search(calls.begin(), calls.end(), icon.begin(), icon.end()), calls.end());
    EXPECT_TRUE(std::equal(last.rbegin(), last.rend(), calls.rbegin()));
}

TEST(InitSGDMS, AHeadingIsAlignedThoughItsCellsCannotBe) {
    MainRig rig;
    rig.Reference();
    rig.fakes.journal.onStep = [](std::u16string_view what) {
        if (what == u"Alignment") {
            throw Failure(failure_number::kUnexpected, u"The grid refuses");
        }
    };
    rig.main->InitSGDMS();
    EXPECT_EQ(static_cast<int>(rig.model->columns.At(4).headerAlignment), 6);
}

TEST(InitSGDMS, HidesTheIconColumnWhenFileIconsAreDisabled) {
    MainRig rig;
    rig.fakes.registry.WriteNumber(kCurrentUser, u"Software\\Talvix", u"FileIconsDisabled", 1);
    rig.Reference();
    rig.main->InitSGDMS();
    EXPECT_TRUE(rig.model->columns.At(2).hidden);
}

TEST(InitSGDMS, TwiceStillGivesFifteenColumnsAndOneConnection) {
    MainRig rig;
    rig.Reference();
    rig.main->InitSGDMS();
    rig.main->InitSGDMS();
    EXPECT_EQ(rig.model->columns.Count(), 15U);
    EXPECT_TRUE(rig.model->Redraw());
    rig.fakes.trace.notes.clear();
    rig.model->events.Raise(u"Click", {});
    EXPECT_EQ(rig.fakes.trace.notes.size(), 1U);
}

TEST(InitSGDMS, WithoutThePageStaysWithoutAGridAndSaysNothing) {
    MainRig rig;
    rig.page->Remove(u"Controls");
    rig.Attach();
    EXPECT_EQ(rig.model->columns.Count(), 0U);
    rig.main->AddFile(u"P:\\Proj\\a.doc", u"a", u"", u"", Date{}, Date{});
    EXPECT_EQ(rig.RowCount(), 0);
}

TEST(Init, OnAGridWithoutRowsOnlyChecksTheVersionAndUpdates) {
    MainRig rig;
    rig.Reference();
    rig.main->InitSGDMS();
    rig.fakes.journal.Clear();
    rig.main->Init();
    EXPECT_EQ(rig.fakes.journal.Lines(), Lines({u"Managing.Item"}));
}

TEST(VersionCheck, AssignsTheImageListAgainOnOneCombinationOnly) {
    struct Case {
        const char16_t* outlook;
        std::uint32_t minor;
        bool again;
    };
    const Case cases[] = {
        {u"9.0.0.4527", 0, true},
        {u"10.0.0.2627", 0, false},
        {u"9.0.0.4527", 1, false},
        {u"11.0", 0, false},
        {u"9", 0, true},
        {u"12", 0, true},
        {u"", 0, true},
    };
    for (const Case& each : cases) {
        MainRig rig;
        rig.Attach();
        rig.fakes.system.version = SystemVersion{2, 5, each.minor};
        Late(Value(rig.item))[u"Application"].Set(u"Version", each.outlook);
        rig.fakes.journal.Clear();
        rig.main->Init();
        EXPECT_EQ(rig.fakes.journal.Count(u"image list") == 1, each.again) << ToUtf8(each.outlook);
    }
}

TEST(Termination, LeavesTheGridWithoutAConnection) {
    MainRig rig;
    rig.Attach();
    EXPECT_TRUE(rig.model->events.HasSinks());
    rig.main.reset();
    EXPECT_FALSE(rig.model->events.HasSinks());
}

} // namespace talvix
