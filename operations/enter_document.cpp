#include "operations/enter_document.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "common/general.h"
#include "core/forms.h"
#include "core/grid_setup.h"
#include "folder/copy_to_project_folder.h"
#include "folder/project_folder.h"
#include "folder/unc_conversion.h"
#include "operations/action_combo.h"
#include "operations/add_document.h"

namespace talvix {

namespace {

using Control = ItemControl;

std::u16string CurrentUser(Attachment& attachment, ResumeNext& next) {
    std::u16string user;
    next([&] {
        user = ToText(attachment.talvixCommon.Call(u"strCurrentUser"), attachment.platform.locale);
    });
    return user;
}

Date Now(Attachment& attachment, ResumeNext& next) {
    Date now;
    next([&] { now = attachment.platform.clock.Now(); });
    return now;
}

/// False when the file is not there.
bool AddEnteredFile(Attachment& attachment, const ItemDialog& dialog) {
    ResumeNext next{attachment.trace, u"NewDMSItem"};
    // Copies: while a file is stored, messages are let through, and the dialog may be opened again.
    // NOLINTBEGIN(performance-unnecessary-copy-initialization)
    const std::u16string path = dialog.Text(Control::TextPhysicalStore1);
    const std::u16string status = dialog.Text(Control::TextStatus);
    const std::u16string notes = dialog.Text(Control::TextLongDescription);
    // NOLINTEND(performance-unnecessary-copy-initialization)
    if (!next.If([&] { return FileExistsOnDisk(attachment.platform.files, path); })) {
        next([&] {
            attachment.platform.messages.Show(
                u"Die angegebene Datei wurde nicht gefunden. Der Vorgang wird abgebrochen.",
                kExclamation, u"Dateifehler");
        });
        return false;
    }
    if (dialog.Option(Control::chkCopyItem) != 0) {
        CopyToProjectFolder(attachment, {path, u"", status, notes, u"", Date{}, Date{}, u""});
    } else {
        AddFile(attachment,
                ConvertToUNC(attachment.platform.network, attachment.platform.locale,
                             attachment.trace, path),
                GetFileName(path), status, notes);
    }
    return true;
}

void AddEnteredLink(Attachment& attachment, const ItemDialog& dialog) {
    ResumeNext next{attachment.trace, u"NewDMSItem"};
    DocumentRecord record;
    record.objectType = kLinkDocument;
    record.subject = dialog.Text(Control::TextPhysicalStore1);
    record.creator = CurrentUser(attachment, next);
    record.creationDate = Now(attachment, next);
    record.lastModificationBy = record.creator;
    record.modificationDate = record.creationDate;
    record.status = dialog.Text(Control::TextStatus);
    record.longDescription = dialog.Text(Control::TextLongDescription);
    record.physicalStore1 = record.subject;
    record.physicalStore3 = SelectedActionNumber(attachment);
    AddDMSItem(attachment, record, ItemFiling{Nothing(), -1, true, u""});
}

/// The current row when it is the document that the command is for.
GridRow DocumentToChange(Attachment& attachment, ResumeNext& next) {
    const Grid grid = attachment.dmsGrid;
    GridRow row;
    next([&] { row = grid.CurrentRow(); });
    if (!row || !next.If([&] { return !row.IsGroup(); })) {
        return {};
    }
    std::vector<RowRange> ranges;
    next([&] { ranges = grid.Selection(); });
    if (ranges.empty()) {
        return row;
    }
    const bool isOne = ranges.size() == 1 && ranges.front().first == ranges.front().last;
    const bool isCurrent =
        isOne && next.If([&] { return grid.RowAt(ranges.front().first).Id() == row.Id(); });
    return isCurrent ? row : GridRow();
}

void FillFromRow(Attachment& attachment, ItemDialog& dialog, const GridRow& row) {
    ResumeNext next{attachment.trace, u"btnChangeDocument_Click"};
    const Culture& locale = attachment.platform.locale;
    std::u16string action;
    next([&] { action = ToText(row.Get(field::kPhysicalStore3), locale); });
    FillActionCombo(attachment, action);
    next([&] {
        const double kind = ToNumber(row.Get(field::kObjectType), locale);
        if (kind == kFileDocument) {
            dialog.ChooseOption(Control::optFile);
        } else if (kind == kOutlookDocument) {
            dialog.ClearOptions();
        } else if (kind == kLinkDocument) {
            dialog.ChooseOption(Control::optLink);
        }
    });
    for (const auto& each : {std::pair(Control::TextPhysicalStore1, field::kPhysicalStore1),
                             std::pair(Control::TextStatus, field::kStatus),
                             std::pair(Control::TextLongDescription, field::kLongDescription)}) {
        next([&] { dialog.SetText(each.first, ToText(row.Get(each.second), locale)); });
    }
}

void WriteToRow(Attachment& attachment, const ItemDialog& dialog, const GridRow& row) {
    ResumeNext next{attachment.trace, u"btnChangeDocument_Click"};
    next([&] {
        row.Set(field::kLastModificationBy, ToText(attachment.talvixCommon.Call(u"strCurrentUser"),
                                                   attachment.platform.locale));
    });
    next([&] { row.Set(field::kModificationDate, attachment.platform.clock.Now()); });
    next([&] { row.Set(field::kStatus, dialog.Text(Control::TextStatus)); });
    next([&] { row.Set(field::kLongDescription, dialog.Text(Control::TextLongDescription)); });
    next([&] { row.Set(field::kPhysicalStore3, SelectedActionNumber(attachment)); });
    if (dialog.Option(Control::optLink) != 0) {
        const std::u16string& address = dialog.Text(Control::TextPhysicalStore1);
        next([&] { row.Set(field::kPhysicalStore1, address); });
        next([&] { row.Set(field::kSubject, address); });
    }
}

void Persist(Attachment& attachment, ResumeNext& next) {
    next([&] { attachment.talvixManaging.Call(u"WriteGridDataToItemBody"); });
}

} // namespace

void NewDMSItem(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"NewDMSItem"};
    FillActionCombo(attachment, u"");
    ItemDialog& dialog = attachment.forms.Dialog();
    const DialogInUse inUse(attachment.forms);
    dialog.ShowDialog(true);
    if (dialog.Cancelled()) {
        return;
    }
    if (dialog.Option(Control::optFile) != 0) {
        if (!AddEnteredFile(attachment, dialog)) {
            return;
        }
    } else if (dialog.Option(Control::optLink) != 0) {
        AddEnteredLink(attachment, dialog);
    }
    CheckVersion(attachment);
    Persist(attachment, next);
}

void btnNewDocument_Click(Attachment& attachment) {
    if (!GetProjectFolder(attachment).empty()) {
        NewDMSItem(attachment);
    }
}

void btnChangeDocument_Click(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"btnChangeDocument_Click"};
    const GridRow row = DocumentToChange(attachment, next);
    if (!row) {
        return;
    }
    ItemDialog& dialog = attachment.forms.Dialog();
    const DialogInUse inUse(attachment.forms);
    FillFromRow(attachment, dialog, row);
    dialog.ShowDialog(false);
    if (!dialog.Cancelled()) {
        WriteToRow(attachment, dialog, row);
    }
    Persist(attachment, next);
}

} // namespace talvix
