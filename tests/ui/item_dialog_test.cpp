#include "common/mod_registry.h"
#include "common/mod_registry_access.h"
#include "tests/fakes/fake_platform.h"
#include "ui/item_dialog.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

using Control = ItemControl;

constexpr const char16_t* kForm = u"Software\\Talvix\\FormSettings";
constexpr const char16_t* kDms = u"Software\\Talvix\\DMS";

struct DialogRig {
    DialogRig() { fakes.files.MakeFile(u"C:\\Plan.doc", 1); }
    /// Shows the dialog while the user does something.
    void Show(bool isNew, const std::function<void(ItemForm&)>& user) {
        fakes.dialogs.onItemForm = user;
        dialog.ShowDialog(isNew);
    }
    std::int32_t StoredCopy() {
        return RegGetDWord(fakes.registry, kCurrentUser, kForm, u"Document Copy Item Selected");
    }
    FakePlatform fakes;
    ItemDialog dialog{fakes.ports, fakes.trace};
};

void EnterAndConfirm(ItemForm& form) {
    form.Change(Control::TextPhysicalStore1, u"x");
    form.Click(Control::btnOK);
}

} // namespace

TEST(ItemDialog, NewModeBeginsEmptyWithAFileToCopy) {
    DialogRig rig;
    rig.dialog.SetText(Control::TextStatus, u"alt");
    rig.Show(true, [](ItemForm& form) {
        EXPECT_EQ(form.Caption(), u"Neues Dokument");
        EXPECT_EQ(form.State(Control::optFile).value, 1);
        EXPECT_EQ(form.State(Control::optLink).value, 0);
        EXPECT_EQ(form.State(Control::TextStatus).text, u"");
        EXPECT_EQ(form.State(Control::chkCopyItem).value, 1);
        for (const Control control : {Control::optFile, Control::optLink, Control::chkCopyItem,
                                      Control::CommandPhysicalStore1}) {
            EXPECT_TRUE(form.State(control).isEnabled);
        }
        EXPECT_FALSE(form.State(Control::TextPhysicalStore1).isLocked);
    });
    EXPECT_TRUE(rig.dialog.Cancelled());
}

TEST(ItemDialog, TheCopyBoxIsRememberedByOkOnly) {
    DialogRig rig;
    rig.Show(true, [](ItemForm& form) {
        form.Click(Control::chkCopyItem);
        EnterAndConfirm(form);
    });
    EXPECT_FALSE(rig.dialog.Cancelled());
    EXPECT_TRUE(
        RegValueExists(rig.fakes.registry, kCurrentUser, kForm, u"Document Copy Item Selected"));
    EXPECT_EQ(rig.StoredCopy(), 0);
    rig.Show(true, [](ItemForm& form) {
        EXPECT_EQ(form.State(Control::chkCopyItem).value, 0);
        form.Click(Control::chkCopyItem);
        EXPECT_EQ(form.State(Control::chkCopyItem).value, 1);
        form.Click(Control::btnCancel);
    });
    EXPECT_EQ(rig.StoredCopy(), 0);
    RegSaveDWord(rig.fakes.registry, kCurrentUser, kForm, u"Document Copy Item Selected", 7);
    rig.Show(true, [](ItemForm& form) { EXPECT_EQ(form.State(Control::chkCopyItem).value, 1); });
}

TEST(ItemDialog, ChangeModeLocksAFilesPathAndNeverCopies) {
    DialogRig rig;
    rig.dialog.ChooseOption(Control::optFile);
    rig.Show(false, [](ItemForm& form) {
        EXPECT_EQ(form.Caption(), u"Dokument ändern");
        EXPECT_TRUE(form.State(Control::TextPhysicalStore1).isLocked);
        EXPECT_EQ(form.State(Control::chkCopyItem).value, 0);
        for (const Control control : {Control::optFile, Control::optLink, Control::chkCopyItem,
                                      Control::CommandPhysicalStore1}) {
            EXPECT_FALSE(form.State(control).isEnabled);
        }
        EnterAndConfirm(form);
    });
    EXPECT_FALSE(
        RegValueExists(rig.fakes.registry, kCurrentUser, kForm, u"Document Copy Item Selected"));
    rig.dialog.ChooseOption(Control::optLink);
    rig.Show(false, [](ItemForm& form) {
        EXPECT_FALSE(form.State(Control::TextPhysicalStore1).isLocked);
        EXPECT_FALSE(form.State(Control::chkCopyItem).isEnabled);
    });
}

TEST(ItemDialog, ChoosingAKindEmptiesThePathAndEnablesWhatFits) {
    DialogRig rig;
    rig.Show(true, [](ItemForm& form) {
        form.Change(Control::TextPhysicalStore1, u"C:\\x");
        form.Click(Control::optLink);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"");
        EXPECT_FALSE(form.State(Control::chkCopyItem).isEnabled);
        EXPECT_FALSE(form.State(Control::CommandPhysicalStore1).isEnabled);
        form.Change(Control::TextPhysicalStore1, u"http://x");
        form.Click(Control::optLink); // reported again when the option gets the focus
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"http://x");
        form.Click(Control::optFile);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"");
        EXPECT_TRUE(form.State(Control::chkCopyItem).isEnabled);
        EXPECT_TRUE(form.State(Control::CommandPhysicalStore1).isEnabled);
    });
}

TEST(ItemDialog, CancelHidesTheForm) {
    DialogRig rig;
    rig.Show(true, [&](ItemForm& form) {
        EXPECT_FALSE(rig.fakes.dialogs.itemWindow.isHidden);
        form.Click(Control::btnCancel);
        EXPECT_TRUE(rig.fakes.dialogs.itemWindow.isHidden);
    });
    EXPECT_TRUE(rig.dialog.Cancelled());
}

TEST(ItemDialog, APathOfBlanksFailsValidationAndAnyOtherPasses) {
    DialogRig rig;
    rig.Show(true, [&](ItemForm& form) {
        form.Change(Control::TextPhysicalStore1, u"   ");
        form.Click(Control::btnOK);
        EXPECT_FALSE(rig.fakes.dialogs.itemWindow.isHidden);
        EXPECT_EQ(rig.fakes.journal.Lines().back(),
                  u"message 64 [Eingabe erforderlich] Bitte geben Sie im Feld 'Pfad' einen "
                  u"Dateinamen oder eine Internetverknüpfung an.");
        EnterAndConfirm(form);
        EXPECT_TRUE(rig.fakes.dialogs.itemWindow.isHidden);
    });
    EXPECT_FALSE(rig.dialog.Cancelled());
}

TEST(ItemDialog, AnExistingPathFillsEmptyNotesOnce) {
    DialogRig rig;
    rig.fakes.files.MakeFile(u"C:\\Bild.jpg", 1);
    rig.Show(true, [](ItemForm& form) {
        form.Change(Control::TextPhysicalStore1, u"C:\\fehlt.doc");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"");
        form.Change(Control::TextPhysicalStore1, u"C:\\Plan.doc");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"doc-Datei");
        form.Change(Control::TextPhysicalStore1, u"C:\\Bild.jpg");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"doc-Datei");
    });
    rig.Show(true, [](ItemForm& form) {
        form.Click(Control::optLink);
        form.Change(Control::TextPhysicalStore1, u"C:\\Plan.doc");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"");
    });
}

TEST(ItemDialog, BrowsingBeginsInTheRememberedFolderAndRemembersTheNewOne) {
    DialogRig rig;
    RegSaveString(rig.fakes.registry, kCurrentUser, kDms, u"DMS Default File Directory",
                  u"D:\\Alt");
    rig.fakes.dialogs.chosenFiles = {u"C:\\Plan.doc"};
    rig.Show(true, [](ItemForm& form) {
        form.Click(Control::CommandPhysicalStore1);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"doc-Datei");
        form.Click(Control::CommandPhysicalStore1); // cancelled
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
    });
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->title, u"Wählen Sie ein Dokument aus...");
    EXPECT_EQ(rig.fakes.dialogs.lastChooser->flags, 6148U);
    EXPECT_TRUE(rig.fakes.dialogs.lastChooser->filter.starts_with(
        std::u16string_view(u"Alle Dateien\0*.*\0", 17)));
    EXPECT_EQ(rig.fakes.journal.Count(u"choose file [Wählen Sie ein Dokument aus...] in D:\\Alt"),
              1U);
    EXPECT_EQ(RegGetString(rig.fakes.registry, kCurrentUser, kDms, u"DMS Default File Directory"),
              Value(u"C:"));
}

TEST(ItemDialog, DropsOnTheSurface) {
    DialogRig rig;
    rig.Show(true, [](ItemForm& form) {
        form.Drop(std::nullopt, {std::nullopt, u"https://example.org"});
        EXPECT_EQ(form.State(Control::optLink).value, 1);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"https://example.org");
        form.Drop(std::nullopt, {std::vector<std::u16string>{u"C:\\Plan.doc", u"C:\\x"}, u"egal"});
        EXPECT_EQ(form.State(Control::optFile).value, 1);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"doc-Datei");
        form.Drop(std::nullopt, {std::nullopt, u"HTTP://gross"});
        EXPECT_EQ(form.State(Control::optFile).value, 1);
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"HTTP://gross");
        form.Drop(std::nullopt, {});
        form.Drop(std::nullopt, {std::vector<std::u16string>{}, std::nullopt});
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"HTTP://gross");
    });
}

TEST(ItemDialog, DropsOnTheTextBoxes) {
    DialogRig rig;
    const std::vector<std::u16string> files{u"C:\\Plan.doc"};
    rig.Show(true, [&](ItemForm& form) {
        form.Drop(Control::TextPhysicalStore1, {files, u"http://vor der Liste"});
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"http://vor der Liste");
        form.Drop(Control::TextPhysicalStore1, {files, std::nullopt});
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
        form.Drop(Control::TextLongDescription, {files, u"Notiz"});
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"Notiz");
        form.Drop(Control::TextStatus, {std::nullopt, u"in den Pfad"});
        EXPECT_EQ(form.State(Control::TextStatus).text, u"");
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"in den Pfad");
        form.Drop(Control::TextLongDescription, {files, std::nullopt});
        EXPECT_EQ(form.State(Control::TextPhysicalStore1).text, u"C:\\Plan.doc");
    });
}

TEST(ItemDialog, ADropChoosesTheKindInChangeModeToo) {
    DialogRig rig;
    rig.dialog.ChooseOption(Control::optFile);
    rig.Show(false, [](ItemForm& form) {
        form.Drop(std::nullopt, {std::nullopt, u"http://x"});
        EXPECT_EQ(form.State(Control::optLink).value, 1);
        EXPECT_FALSE(form.State(Control::optLink).isEnabled);
        EXPECT_FALSE(form.State(Control::chkCopyItem).isEnabled);
    });
}

TEST(ItemDialog, TheListIsAsWideAsItsLongestEntryLessTwoLetters) {
    DialogRig rig;
    rig.Show(true, [&](ItemForm&) { EXPECT_EQ(rig.fakes.dialogs.itemWindow.dropWidth, -12); });
    rig.dialog.AddAction(u"Keiner");
    rig.dialog.AddAction(std::u16string(52, u'x'));
    rig.Show(true, [&](ItemForm&) { EXPECT_EQ(rig.fakes.dialogs.itemWindow.dropWidth, 300); });
    for (int entry = 0; entry < 32770; ++entry) {
        rig.dialog.AddAction(u"x");
    }
    rig.Show(true, [&](ItemForm&) { EXPECT_FALSE(rig.fakes.dialogs.itemWindow.dropWidth); });
}

TEST(ItemDialog, WhatOtherProgramsHaveSetIsTakenAndNotOverwritten) {
    DialogRig rig;
    rig.Show(true, [](ItemForm& form) {
        form.Found(Control::TextLongDescription, {u"diktiert", 0});
        form.Drop(std::nullopt, {std::vector<std::u16string>{u"C:\\Plan.doc"}, std::nullopt});
        EXPECT_EQ(form.State(Control::TextLongDescription).text, u"diktiert");
        form.Found(Control::chkCopyItem, {u"", 0});
        form.Found(Control::ActionCombo, {u"Nr. 7 (): Begehung", 0});
        form.Click(Control::btnOK);
    });
    const EnteredDocument entered = rig.dialog.Entered();
    EXPECT_TRUE(entered.isFile);
    EXPECT_FALSE(entered.isLink);
    EXPECT_FALSE(entered.isToBeCopied);
    EXPECT_EQ(entered.path, u"C:\\Plan.doc");
    EXPECT_EQ(entered.longDescription, u"diktiert");
    EXPECT_EQ(entered.action, u"Nr. 7 (): Begehung");
    EXPECT_EQ(rig.StoredCopy(), 0);
}

} // namespace talvix
