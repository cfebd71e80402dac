// Lists that were saved by nobody's good will: every kind of value in every cell, numbers that
// occur twice, places that no file can have.
#include "automation/text.h"
#include "core/document_record.h"
#include "tests/proof/hostile_names.h"
#include "tests/proof/operations.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <limits>

namespace talvix {

namespace {

Value SomeValue(ProofRandom& random) {
    switch (random.Below(17)) {
    case 0:
        return Empty();
    case 1:
        return Null();
    case 2:
        return random.OneIn(2);
    case 3:
        return static_cast<std::uint8_t>(random.Below(256));
    case 4:
        return static_cast<std::int16_t>(random.Below(65536) - 32768);
    case 5:
        return random.Of({0, 1, 2, 3, -1, 65536, INT32_MIN, INT32_MAX});
    case 6:
        return random.Of<std::int64_t>({0, INT64_MIN, INT64_MAX});
    case 7:
        return random.Of({0.0, -0.5, 1.5, 1e308, std::numeric_limits<double>::infinity(),
                          std::numeric_limits<double>::quiet_NaN()});
    case 8:
        return Currency{INT64_MAX};
    case 9:
        return Date{random.Of({0.0, -1e9, 1e9, 2958465.99, 38000.5})};
    case 10:
        return Nothing();
    case 11:
        return Value(std::make_shared<Expando>(u"Fremd"));
    case 12:
        return ErrorCode{-2147467259};
    case 13:
        return Value(std::make_shared<const std::vector<Value>>(std::vector<Value>{1, u"x"}));
    case 14:
        return std::u16string(static_cast<std::size_t>(random.Below(2000)), u'\u00E4');
    default:
        return HostileName(random);
    }
}

std::u16string SomePlace(ProofRandom& random) {
    static const std::u16string places[] = {u"P:\\Proj\\a.doc",
                                            u"\\\\fremd\\c$\\x.exe",
                                            u"http://fremd.example/x",
                                            u"file://fremd/x",
                                            u"C:\\Quelle\\a.doc",
                                            u"javascript:alert(1)",
                                            u"\\\\?\\GLOBALROOT\\x",
                                            u"P:\\Proj",
                                            u"ms-settings:",
                                            u"P:\\Proj\\..\\..\\x.bat",
                                            u"*",
                                            u""};
    return random.OneIn(2) ? random.Of(places) : HostileName(random);
}

void FillRow(SweepRig& rig, ProofRandom& random) {
    static const std::u16string_view keys[] = {field::kId,
                                               field::kObjectType,
                                               field::kIcon,
                                               field::kSubject,
                                               field::kItemSize,
                                               field::kObjectDescription,
                                               field::kCreator,
                                               field::kCreationDate,
                                               field::kLastModificationBy,
                                               field::kModificationDate,
                                               field::kStatus,
                                               field::kLongDescription,
                                               field::kPhysicalStore1,
                                               field::kPhysicalStore2,
                                               field::kPhysicalStore3};
    Late row = Late(rig.gridObject)[u"Rows"][u"Add"];
    for (const std::u16string_view key : keys) {
        if (!random.OneIn(3)) {
            row.SetAt(u"Value", key, SomeValue(random));
        }
    }
    if (!random.OneIn(4)) {
        row.SetAt(u"Value", field::kObjectType, random.Below(3));
    }
    if (!random.OneIn(4)) {
        row.SetAt(u"Value", field::kPhysicalStore1, SomePlace(random));
    }
}

/// What a host does with a list that it has loaded, and what a user does without a click on a
/// document.
void LookAt(SweepRig& rig) {
    rig.main->Init();
    rig.Raise(u"AfterGroupChange", {0, 0});
    rig.Raise(u"MouseDown", {std::int16_t{2}, std::int16_t{0}, 60, 60});
    rig.Raise(u"MouseUp", {std::int16_t{2}, std::int16_t{0}, 60, 60});
    rig.Raise(u"Click", {});
    rig.model->rows.SortBy(rig.model->columns.IndexOf(Value(field::kSubject)), true);
    rig.model->rows.SetGroups({{rig.model->columns.IndexOf(Value(field::kStatus)), false},
                               {rig.model->columns.IndexOf(Value(field::kCreationDate)), true}});
    rig.main->Init();
    rig.model->rows.SetGroups({});
    rig.main->AddFilesFromProjectFolderEvent();
}

void OpenList(unsigned seed, int rows) {
    SweepRig rig;
    rig.Reference();
    rig.main->InitSGDMS();
    ProofRandom random(seed);
    for (int row = 0; row < rows; ++row) {
        FillRow(rig, random);
    }
    rig.fakes.journal.Clear();
    LookAt(rig);
    ASSERT_EQ(rig.LinesOf({u"open", u"copy", u"rename", u"remove", u"create", u"message",
                           u"properties", u"show"}),
              Lines());
    ASSERT_GE(rig.RowCount(), rows);
    // and with clicks on everything
    rig.fakes.messages.answers = {kAnswerYes};
    rig.model->rows.SelectRange(1, rig.RowCount());
    if (rows < 1000) {
        rig.main->OpenDocument(-1);
        rig.main->btnExportDocuments_Click();
    }
    rig.main->btnChangeDocument_Click();
    rig.main->btnDeleteDocument_Click();
    ASSERT_EQ(rig.LinesOf({u"copy", u"rename", u"remove", u"create"}), Lines());
    ASSERT_EQ(rig.fakes.files.Query(u"P:\\Proj\\a.doc")->length, 2000);
}

} // namespace

TEST(HostileLists, NothingIsOpenedCopiedOrFetchedWithoutAClick) {
    const std::size_t lists = ProofCount(1000, 100000);
    const unsigned first = ProofSeed();
    for (unsigned list = 0; list < lists; ++list) {
        SCOPED_TRACE("seed " + std::to_string(first + list));
        const int rows = list % 20000 == 999 ? 65536 : static_cast<int>(list % 40);
        ASSERT_NO_FATAL_FAILURE(OpenList(first + list, rows));
    }
    StateProof("hostile lists", lists,
               std::string(lists > 999 ? "one of 65,536 rows, " : "") + "from seed " +
                   std::to_string(first));
}

} // namespace talvix
