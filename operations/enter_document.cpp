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

#include <optional>

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

/// What the user has confirmed in a dialog that was shown; nothing after "Abbrechen".
std::optional<EnteredDocument> Confirmed(const ItemDialog& dialog) {
    return dialog.Cancelled() ? std::nullopt : std::optional(dialog.Entered());
}

/// Nothing, too, while somebody else has the dialog.
std::optional<EnteredDocument> EnterNew(Attachment& attachment) {
    const TakenDialog dialog(attachment.forms);
    if (!dialog) {
        return std::nullopt;
    }
    FillActions(attachment, *dialog, u"");
    dialog->ShowDialog(true);
    return Confirmed(*dialog);
}

/// False when the file is not there.
bool AddEnteredFile(Attachment& attachment, const EnteredDocument& entered) {
    ResumeNext next{attachment.trace, u"NewDMSItem"};
    const std::u16string& path = entered.path;
    if (!next.If([&] { return FileExistsOnDisk(attachment.platform.files, path); })) {
        next([&] {
            attachment.platform.messages.Show(
                u"Die angegebene Datei wurde nicht gefunden. Der Vorgang wird abgebrochen.",
                kExclamation, u"Dateifehler");
        });
        return false;
    }
    const std::u16string action = ActionNumberIn(entered.action);
    if (entered.isToBeCopied) {
        CopyToProjectFolder(attachment, {path, u"", entered.status, entered.longDescription, u"",
                                         Date{}, Date{}, u"", action});
    } else {
        AddFile(attachment,
                ConvertToUNC(attachment.platform.network, attachment.platform.locale,
                             attachment.trace, path),
                GetFileName(path), entered.status, entered.longDescription, Date{}, Date{}, action);
    }
    return true;
}

void AddEnteredLink(Attachment& attachment, const EnteredDocument& entered) {
    ResumeNext next{attachment.trace, u"NewDMSItem"};
    DocumentRecord record;
    record.objectType = kLinkDocument;
    record.subject = entered.path;
    record.creator = CurrentUser(attachment, next);
    record.creationDate = Now(attachment, next);
    record.lastModificationBy = record.creator;
    record.modificationDate = record.creationDate;
    record.status = entered.status;
    record.longDescription = entered.longDescription;
    record.physicalStore1 = entered.path;
    record.physicalStore3 = ActionNumberIn(entered.action);
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
    const bool isCurrent = isOne && next.If([&] {
        const std::int32_t selected = grid.RowAt(ranges.front().first).Id();
        return selected == row.Id();
    });
    return isCurrent ? row : GridRow();
}

void FillFromRow(Attachment& attachment, ItemDialog& dialog, const GridRow& row) {
    ResumeNext next{attachment.trace, u"btnChangeDocument_Click"};
    const Culture& locale = attachment.platform.locale;
    std::u16string action;
    next([&] { action = ToText(row.Get(field::kPhysicalStore3), locale); });
    FillActions(attachment, dialog, action);
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

/// Nothing, too, while somebody else has the dialog.
std::optional<EnteredDocument> EnterChange(Attachment& attachment, const GridRow& row) {
    const TakenDialog dialog(attachment.forms);
    if (!dialog) {
        return std::nullopt;
    }
    FillFromRow(attachment, *dialog, row);
    dialog->ShowDialog(false);
    return Confirmed(*dialog);
}

void WriteToRow(Attachment& attachment, const EnteredDocument& entered, const GridRow& row) {
    ResumeNext next{attachment.trace, u"btnChangeDocument_Click"};
    next([&] {
        row.Set(field::kLastModificationBy, ToText(attachment.talvixCommon.Call(u"strCurrentUser"),
                                                   attachment.platform.locale));
    });
    next([&] { row.Set(field::kModificationDate, attachment.platform.clock.Now()); });
    next([&] { row.Set(field::kStatus, entered.status); });
    next([&] { row.Set(field::kLongDescription, entered.longDescription); });
    next([&] { row.Set(field::kPhysicalStore3, ActionNumberIn(entered.action)); });
    if (entered.isLink) {
        next([&] { row.Set(field::kPhysicalStore1, entered.path); });
        next([&] { row.Set(field::kSubject, entered.path); });
    }
}

void Persist(Attachment& attachment, ResumeNext& next) {
    next([&] { attachment.talvixManaging.Call(u"WriteGridDataToItemBody"); });
}

} // namespace

void NewDMSItem(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"NewDMSItem"};
    const std::optional<EnteredDocument> entered = EnterNew(attachment);
    if (!entered) {
        return;
    }
    if (entered->isFile) {
        if (!AddEnteredFile(attachment, *entered)) {
            return;
        }
    } else if (entered->isLink) {
        AddEnteredLink(attachment, *entered);
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
    std::optional<EnteredDocument> entered;
    next([&] { entered = EnterChange(attachment, row); });
    if (entered) {
        WriteToRow(attachment, *entered, row);
    }
    Persist(attachment, next);
}

} // namespace talvix
