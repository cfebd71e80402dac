#include "automation/failure.h"
#include "automation/text.h"
#include "grid/model/grid_objects.h"
#include "operations/action_combo.h"
#include "operations/enter_document.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

#include <utility>

namespace talvix {

namespace {

using Control = ItemControl;

struct EnterRig : MainRig {
    EnterRig() {
        fakes.files.MakeFolder(u"P:\\Proj");
        fakes.files.MakeFile(u"C:\\Plan.doc", 5);
        Attach();
        MakeActions();
        fakes.journal.Clear();
    }
    /// The host's second grid with four actions, two of them with the same number.
    void MakeActions() {
        actionModel = std::make_shared<grid::GridModel>(fakes.locale);
        const auto object = std::make_shared<grid::GridObject>(actionModel);
        const Late actions{Value(object)};
        for (const auto* key : {u"x", u"id", u"startdate", u"description"}) {
            actions[u"Columns"].Call(u"Add", key);
        }
        AddAction(actions, 7, u"Begehung (erste)");
        AddAction(actions, 8, u"Abnahme");
        AddAction(actions, -1, u"Seltsam");
        AddAction(actions, 8, u"Abnahme zwei");
        const auto support = std::make_shared<Expando>(u"Betreuung");
        support->On(u"Controls", [object](std::span<const Value>) -> Value { return object; });
        const auto inspector = std::make_shared<Expando>(u"Inspector");
        inspector->On(u"ModifiedFormPages",
                      [support](std::span<const Value>) -> Value { return support; });
        item->With(u"GetInspector", inspector);
    }
    static void AddAction(const Late& actions, std::int32_t id, const char16_t* description) {
        Late row = actions[u"Rows"][u"Add"];
        row.SetAt(u"Value", u"id", id);
        row.SetAt(u"Value", u"startdate", Date{38000});
        row.SetAt(u"Value", u"description", description);
    }
    const ItemDialog& Dialog() { return forms.Dialog(); }
    void User(std::function<void(ItemForm&)> user) { fakes.dialogs.onItemForm = std::move(user); }
    std::size_t Writes() const { return fakes.journal.Count(u"Managing.WriteGridDataToItemBody"); }
    std::shared_ptr<grid::GridModel> actionModel;
};

void Confirm(ItemForm& form, std::u16string_view path) {
    form.Change(Control::TextPhysicalStore1, path);
    form.Change(Control::TextStatus, u"neu");
    form.Change(Control::TextLongDescription, u"Notiz");
    form.Click(Control::btnOK);
}

} // namespace

TEST(FillActionCombo, OffersKeinerAndEveryAction) {
    EnterRig rig;
    rig.main->FillActionCombo(u"7");
    EXPECT_EQ(
        rig.Dialog().Actions(),
        Lines({u"Keiner", u"Nr. 7 (14.01.2004): Begehung (erste)", u"Nr. 8 (14.01.2004): Abnahme",
               u"Nr. -1 (14.01.2004): Seltsam", u"Nr. 8 (14.01.2004): Abnahme zwei"}));
    EXPECT_EQ(SelectedActionNumber(rig.main->Attached()), u"7");
}

TEST(FillActionCombo, TheLaterOfTwoEqualNumbersIsChosen) {
    EnterRig rig;
    rig.main->FillActionCombo(u"8");
    EXPECT_EQ(rig.Dialog().Text(Control::ActionCombo), u"Nr. 8 (14.01.2004): Abnahme zwei");
}

TEST(FillActionCombo, MinusOneAndNothingAreKeiner) {
    EnterRig rig;
    for (const auto* id : {u"-1", u""}) {
        rig.main->FillActionCombo(id);
        EXPECT_EQ(rig.Dialog().Text(Control::ActionCombo), u"Keiner");
        EXPECT_EQ(SelectedActionNumber(rig.main->Attached()), u"-1");
    }
}

TEST(FillActionCombo, AnActionThatIsGoneChoosesNothing) {
    EnterRig rig;
    rig.main->FillActionCombo(u"99");
    EXPECT_EQ(rig.Dialog().Text(Control::ActionCombo), u"");
    EXPECT_EQ(SelectedActionNumber(rig.main->Attached()), u"-1");
}

TEST(FillActionCombo, HeadingsAreNoActionsAndNoGridLeavesKeiner) {
    EnterRig rig;
    Late(Value(std::make_shared<grid::GridObject>(rig.actionModel)))[u"Groups"].Call(u"Add", u"id");
    rig.main->FillActionCombo(u"");
    EXPECT_EQ(rig.Dialog().Actions().size(), 5U);
    rig.item->Remove(u"GetInspector");
    rig.main->FillActionCombo(u"7");
    EXPECT_EQ(rig.Dialog().Actions(), Lines({u"Keiner"}));
    EXPECT_EQ(SelectedActionNumber(rig.main->Attached()), u"-1");
}

namespace {

/// A host's grid of actions of another make, two rows long; its calls are journalled.
struct OtherActions {
    explicit OtherActions(EnterRig& rig) {
        for (const std::int32_t number : {1, 2}) {
            rows.push_back(std::make_shared<Expando>(u"Row", &rig.fakes.journal));
            rows.back()->With(u"IsGroup", false);
            rows.back()->On(u"Value", [number](std::span<const Value> at) -> Value {
                const Value cells[] = {number, Date{38000}, u"Text"};
                return cells[static_cast<std::size_t>(*at[0].If<std::int32_t>())];
            });
        }
        std::int32_t position = 0;
        for (const auto* key : {u"id", u"startdate", u"description"}) {
            const auto column = std::make_shared<Expando>(u"Column");
            column->With(u"Position", position++);
            columns[key] = column;
        }
        const auto collection = std::make_shared<Expando>(u"Rows");
        collection->With(u"Count", 2);
        const auto grid = std::make_shared<Expando>(u"Actions");
        grid->On(u"rows", [this, collection](std::span<const Value> number) -> Value {
            return number.empty()
                       ? Value(collection)
                       : Value(rows[static_cast<std::size_t>(*number[0].If<std::int32_t>() - 1)]);
        });
        grid->On(u"Columns", [this](std::span<const Value> key) -> Value {
            return columns.at(*key[0].If<std::u16string>());
        });
        const auto page = std::make_shared<Expando>(u"Betreuung");
        page->On(u"Controls", [grid](std::span<const Value>) -> Value { return grid; });
        const auto inspector = std::make_shared<Expando>(u"Inspector");
        inspector->On(u"ModifiedFormPages",
                      [page](std::span<const Value>) -> Value { return page; });
        rig.item->With(u"GetInspector", inspector);
    }
    std::vector<std::shared_ptr<Expando>> rows;
    std::map<std::u16string, std::shared_ptr<Expando>> columns;
};

} // namespace

TEST(FillActionCombo, ReadsARowsCellsOnceAndInTheirOrder) {
    EnterRig rig;
    const OtherActions actions(rig);
    rig.main->FillActionCombo(u"2");
    EXPECT_EQ(rig.LinesOf({u"Row."}),
              Lines({u"Row.IsGroup", u"Row.Value 0", u"Row.Value 1", u"Row.Value 2", u"Row.IsGroup",
                     u"Row.Value 0", u"Row.Value 1", u"Row.Value 2"}));
    EXPECT_EQ(rig.Dialog().Text(Control::ActionCombo), u"Nr. 2 (14.01.2004): Text");
}

TEST(FillActionCombo, ARowWithoutIsGroupIsAnAction) {
    EnterRig rig;
    const OtherActions actions(rig);
    actions.rows[0]->Remove(u"IsGroup");
    actions.rows[1]->With(u"IsGroup", u"vielleicht");
    rig.main->FillActionCombo(u"1");
    EXPECT_EQ(rig.Dialog().Actions(),
              Lines({u"Keiner", u"Nr. 1 (14.01.2004): Text", u"Nr. 2 (14.01.2004): Text"}));
    EXPECT_EQ(SelectedActionNumber(rig.main->Attached()), u"1");
}

TEST(FillActionCombo, AColumnOrCellThatFailsLeavesItsTextEmptyAndNothingElseLost) {
    {
        EnterRig rig;
        OtherActions actions(rig);
        actions.columns.erase(u"startdate");
        rig.main->FillActionCombo(u"2");
        EXPECT_EQ(rig.Dialog().Actions(), Lines({u"Keiner", u"Nr. 1 (): Text", u"Nr. 2 (): Text"}));
        EXPECT_EQ(SelectedActionNumber(rig.main->Attached()), u"2");
    }
    EnterRig rig;
    const OtherActions actions(rig);
    actions.rows[0]->Remove(u"Value");
    actions.rows[1]->On(u"Value", [](std::span<const Value> at) -> Value {
        if (at[0] == Value(2)) {
            throw Failure(failure_number::kUnexpected, u"No such cell");
        }
        return at[0] == Value(0) ? Value(2) : Value(Date{38000});
    });
    rig.main->FillActionCombo(u"2");
    EXPECT_EQ(rig.Dialog().Actions(), Lines({u"Keiner", u"Nr.  (): ", u"Nr. 2 (14.01.2004): "}));
    EXPECT_EQ(SelectedActionNumber(rig.main->Attached()), u"2");
}

TEST(ActionNumberIn, ReadsTheNumberBackOutOfTheText) {
    EXPECT_EQ(ActionNumberIn(u"Nr. 12 (1.1.2004): a (b)"), u"12");
    EXPECT_EQ(ActionNumberIn(u"Keiner"), u"-1");
    EXPECT_EQ(ActionNumberIn(u""), u"-1");
    EXPECT_EQ(ActionNumberIn(u"ohne Klammer"), u"-1");
    EXPECT_EQ(ActionNumberIn(u"N ("), u"-1");
    EXPECT_EQ(ActionNumberIn(u"Nr. ("), u"-1");
    EXPECT_EQ(ActionNumberIn(u"Nr.  ("), u"");
}

TEST(NewDMSItem, ACopiedFileGetsItsNameAsSubjectAndTheListIsPersistedOnce) {
    EnterRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\Plan.doc", 1);
    rig.User([](ItemForm& form) {
        form.Change(Control::ActionCombo, u"Nr. 7 (14.01.2004): Begehung (erste)");
        Confirm(form, u"C:\\Plan.doc");
    });
    rig.main->btnNewDocument_Click();
    ASSERT_EQ(rig.RowCount(), 1);
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"Plan (1).doc"));
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"neu"));
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), Value(u"Notiz"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), Value(u"7"));
    EXPECT_EQ(rig.Cell(1, u"CreationDate"), Value(rig.fakes.clock.now));
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(NewDMSItem, AFileThatIsNotCopiedIsStoredInNetworkForm) {
    EnterRig rig;
    rig.fakes.network.drives[u"C:"] = u"\\\\srv\\c";
    rig.User([](ItemForm& form) {
        form.Click(Control::chkCopyItem);
        Confirm(form, u"C:\\Plan.doc");
    });
    rig.main->NewDMSItem();
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"\\\\srv\\c\\Plan.doc"));
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"Plan.doc"));
    EXPECT_EQ(rig.fakes.journal.Count(u"copy"), 0U);
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(NewDMSItem, AMissingFileIsToldAndNothingIsPersisted) {
    EnterRig rig;
    rig.User([](ItemForm& form) { Confirm(form, u"C:\\fehlt.doc"); });
    rig.main->NewDMSItem();
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_EQ(rig.Writes(), 0U);
    EXPECT_EQ(rig.LinesOf({u"message"}),
              Lines({u"message 48 [Dateifehler] Die angegebene Datei wurde nicht gefunden. Der "
                     u"Vorgang wird abgebrochen."}));
}

TEST(NewDMSItem, ALinkIsItsOwnSubject) {
    EnterRig rig;
    rig.User([](ItemForm& form) {
        form.Click(Control::optLink);
        Confirm(form, u"http://example.org");
    });
    rig.main->NewDMSItem();
    EXPECT_EQ(rig.Cell(1, u"ObjectType"), Value(std::int16_t{2}));
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"http://example.org"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"http://example.org"));
    EXPECT_EQ(rig.Cell(1, u"Creator"), Value(u"Erika Muster"));
    EXPECT_EQ(rig.Cell(1, u"ModificationDate"), Value(rig.fakes.clock.now));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), Value(u"-1"));
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(NewDMSItem, CancelledLeavesEverything) {
    EnterRig rig;
    rig.main->NewDMSItem();
    EXPECT_EQ(rig.RowCount(), 0);
    EXPECT_EQ(rig.Writes(), 0U);
}

TEST(btnNewDocument_Click, WithoutAProjectFolderDoesNothing) {
    EnterRig rig;
    rig.SetFolder(u"");
    rig.main->btnNewDocument_Click();
    EXPECT_EQ(rig.fakes.journal.Count(u"item form"), 0U);
}

namespace {

/// Three documents: a file, an Outlook item and a link.
struct ChangeRig : EnterRig {
    ChangeRig() {
        Add(0, u"C:\\Plan.doc");
        Add(1, u"C:\\Mail.msg");
        Add(2, u"http://example.org");
        fakes.journal.Clear();
    }
    void Add(std::int32_t kind, std::u16string_view store) const {
        Late row = AddRow(kind, store);
        row.SetAt(u"Value", u"Subject", u"Betreff");
        row.SetAt(u"Value", u"Status", u"alt");
        row.SetAt(u"Value", u"LongDescription", u"alte Notiz");
        row.SetAt(u"Value", u"PhysicalStore3", u"7");
    }
    void Select(std::int32_t current, std::initializer_list<std::int32_t> selected) const {
        const Late grid(gridObject);
        grid.Set(u"CurrentRow", current);
        grid[u"Selection"].Call(u"Clear");
        for (const std::int32_t row : selected) {
            grid[u"Selection"].Call(u"Add", row, row);
        }
    }
};

} // namespace

TEST(btnChangeDocument_Click, ChangesAFilesFieldsButNotItsPlace) {
    ChangeRig rig;
    rig.Select(1, {1});
    rig.User([](ItemForm& form) {
        EXPECT_EQ(form.State(Control::optFile).value, 1);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
        EXPECT_EQ(form.State(Control::TextStatus).text, u"alt");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"alte Notiz");
        EXPECT_EQ(form.State(Control::ActionCombo).text, u"Nr. 7 (14.01.2004): Begehung (erste)");
        form.Change(Control::ActionCombo, u"Keiner");
        Confirm(form, u"C:\\anders.doc");
    });
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), Value(u"C:\\Plan.doc"));
    EXPECT_EQ(rig.Cell(1, u"Subject"), Value(u"Betreff"));
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"neu"));
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), Value(u"Notiz"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), Value(u"-1"));
    EXPECT_EQ(rig.Cell(1, u"LastModificationBy"), Value(u"Erika Muster"));
    EXPECT_EQ(rig.Cell(1, u"ModificationDate"), Value(rig.fakes.clock.now));
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(btnChangeDocument_Click, ALinksNewAddressIsItsSubjectToo) {
    ChangeRig rig;
    rig.Select(3, {});
    rig.User([](ItemForm& form) { Confirm(form, u"http://neu.example.org"); });
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(rig.Cell(3, u"PhysicalStore1"), Value(u"http://neu.example.org"));
    EXPECT_EQ(rig.Cell(3, u"Subject"), Value(u"http://neu.example.org"));
}

TEST(btnChangeDocument_Click, AnOutlookItemIsNeitherFileNorLink) {
    ChangeRig rig;
    rig.Select(2, {2});
    rig.User([](ItemForm& form) {
        EXPECT_EQ(form.State(Control::optFile).value, 0);
        EXPECT_EQ(form.State(Control::optLink).value, 0);
        Confirm(form, u"egal");
    });
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore1"), Value(u"C:\\Mail.msg"));
    EXPECT_EQ(rig.Cell(2, u"Status"), Value(u"neu"));
}

TEST(btnChangeDocument_Click, CancelChangesNothingButPersistsOnce) {
    ChangeRig rig;
    rig.Select(1, {1});
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"alt"));
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(btnChangeDocument_Click, AnotherSelectionOrAHeadingDoesNothing) {
    ChangeRig rig;
    rig.Select(1, {1, 2});
    rig.main->btnChangeDocument_Click();
    rig.Select(1, {2});
    rig.main->btnChangeDocument_Click();
    Late(rig.gridObject).Set(u"CurrentRow", 0);
    rig.main->btnChangeDocument_Click();
    Late(rig.gridObject)[u"Groups"].Call(u"Add", u"ObjectType");
    rig.Select(1, {});
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(rig.fakes.journal.Count(u"item form"), 0U);
    EXPECT_EQ(rig.Writes(), 0U);
}

TEST(DocumentDialog, EndingTheComponentUnloadsItButNeverWhileItIsShown) {
    ChangeRig rig;
    rig.Select(1, {1});
    rig.User([&](ItemForm& form) {
        { Main second(rig.fakes.ports, rig.fakes.trace, rig.forms); }
        Confirm(form, u"C:\\Plan.doc");
    });
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"neu"));
    EXPECT_EQ(rig.Dialog().Text(Control::TextStatus), u"") << "made anew";
}

TEST(DocumentDialog, WhoComesSecondCountsAsCancelledAndTouchesNothing) {
    ChangeRig rig;
    rig.Row(2).SetAt(u"Value", u"Status", u"von Zeile 2");
    rig.Row(2).SetAt(u"Value", u"PhysicalStore3", u"8");
    rig.Select(1, {1});
    int shown = 0;
    rig.User([&](ItemForm& form) {
        ++shown;
        form.Change(Control::TextStatus, u"getippt");
        rig.Select(2, {2}); // a host's timer runs meanwhile
        rig.main->btnChangeDocument_Click();
        rig.main->NewDMSItem();
        const Lines actions = form.Actions();
        rig.actionModel->rows.Clear();
        rig.main->FillActionCombo(u"8");
        EXPECT_EQ(form.Actions(), actions);
        EXPECT_EQ(form.State(Control::ActionCombo).text, u"Nr. 7 (14.01.2004): Begehung (erste)");
        EXPECT_EQ(form.State(Control::optFile).value, 1);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
        EXPECT_EQ(form.State(Control::TextStatus).text, u"getippt");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"alte Notiz");
        form.Click(Control::btnOK);
    });
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(rig.Cell(1, u"Status"), Value(u"getippt"));
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), Value(u"alte Notiz"));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), Value(u"7"));
    EXPECT_EQ(rig.Cell(2, u"Status"), Value(u"von Zeile 2"));
    EXPECT_EQ(rig.RowCount(), 3);
    EXPECT_EQ(rig.Writes(), 2U) << "a cancelled change persists too";
}

TEST(DocumentDialog, ACommandFromInsideTheFillingCountsAsCancelled) {
    ChangeRig rig;
    rig.Select(1, {1});
    int shown = 0;
    rig.User([&](ItemForm&) { ++shown; });
    bool isInside = false;
    rig.fakes.journal.onStep = [&](std::u16string_view what) {
        if (what == u"GetInspector" && !std::exchange(isInside, true)) {
            rig.main->NewDMSItem();
            rig.main->btnChangeDocument_Click();
            rig.main->FillActionCombo(u"7");
        }
    };
    rig.main->FillActionCombo(u"8");
    EXPECT_TRUE(isInside);
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(rig.Dialog().Actions().size(), 5U);
    EXPECT_EQ(rig.Dialog().Text(Control::ActionCombo), u"Nr. 8 (14.01.2004): Abnahme zwei");
    EXPECT_EQ(rig.Dialog().Text(Control::TextStatus), u"");
}

TEST(DocumentDialog, AnotherComponentMayEndWhileTheHostIsAskedForItsActions) {
    for (const auto& deed : {std::function([](EnterRig& rig) { rig.main->FillActionCombo(u"7"); }),
                             std::function([](EnterRig& rig) { rig.main->NewDMSItem(); })}) {
        EnterRig rig;
        std::vector<std::size_t> offered;
        rig.User([&](ItemForm& form) { offered.push_back(form.Actions().size()); });
        rig.fakes.journal.onStep = [&](std::u16string_view what) {
            if (what == u"GetInspector") {
                const Main second(rig.fakes.ports, rig.fakes.trace, rig.forms);
            }
        };
        deed(rig);
        rig.fakes.journal.onStep = nullptr;
        EXPECT_EQ(rig.Dialog().Actions(), Lines()) << "unloaded at the end";
        for (const std::size_t actions : offered) {
            EXPECT_EQ(actions, 5U);
        }
    }
}

TEST(DocumentDialog, WhatWasEnteredIsTakenAtOnceWhenItCloses) {
    EnterRig rig;
    rig.User([](ItemForm& form) {
        form.Change(Control::ActionCombo, u"Nr. 7 (14.01.2004): Begehung (erste)");
        Confirm(form, u"C:\\Plan.doc");
    });
    rig.fakes.journal.onStep = [&](std::u16string_view what) {
        if (what == u"copy" || what == u"strCurrentUser") { // a long copy lets messages through
            rig.User(nullptr);
            rig.main->FillActionCombo(u"8");
        }
    };
    rig.main->NewDMSItem();
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), Value(u"7"));
    rig.User([](ItemForm& form) {
        form.Change(Control::ActionCombo, u"Nr. 7 (14.01.2004): Begehung (erste)");
        form.Click(Control::optLink);
        Confirm(form, u"http://example.org");
    });
    rig.main->NewDMSItem();
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore3"), Value(u"7"));
}

TEST(DocumentDialog, AChangeIsTakenAtOnceWhenItCloses) {
    ChangeRig rig;
    rig.Select(3, {3});
    rig.User([](ItemForm& form) { Confirm(form, u"http://neu.example.org"); });
    rig.fakes.journal.onStep = [&](std::u16string_view what) {
        if (what == u"strCurrentUser") {
            rig.User(nullptr);
            rig.main->NewDMSItem(); // cancelled, but empties the dialog before
        }
    };
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(rig.Cell(3, u"Status"), Value(u"neu"));
    EXPECT_EQ(rig.Cell(3, u"LongDescription"), Value(u"Notiz"));
    EXPECT_EQ(rig.Cell(3, u"PhysicalStore3"), Value(u"7"));
    EXPECT_EQ(rig.Cell(3, u"PhysicalStore1"), Value(u"http://neu.example.org"));
    EXPECT_EQ(rig.Cell(3, u"Subject"), Value(u"http://neu.example.org"));
}

} // namespace talvix
