#include "automation/text.h"
#include "grid/model/grid_objects.h"
#include "operations/action_combo.h"
#include "operations/enter_document.h"
#include "tests/fakes/main_rig.h"

#include <gtest/gtest.h>

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
    ItemDialog& Dialog() { return forms.Dialog(); }
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

TEST(DocumentDialog, IsNotShownASecondTimeAndTakesActionsWhileItIsOpen) {
    ChangeRig rig;
    rig.Select(1, {1});
    int shown = 0;
    rig.User([&](ItemForm& form) {
        ++shown;
        rig.main->NewDMSItem(); // as a host's timer might
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
        rig.main->FillActionCombo(u"8");
        EXPECT_GT(rig.fakes.dialogs.itemWindow.actionRefreshes, 0);
        Confirm(form, u"C:\\Plan.doc");
    });
    rig.main->btnChangeDocument_Click();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), Value(u"8"));
    EXPECT_EQ(rig.RowCount(), 3);
}

} // namespace talvix
