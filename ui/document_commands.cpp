#include "ui/document_commands.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "core/document_record.h"
#include "core/row_presentation.h"

namespace talvix {

namespace {

constexpr std::int32_t kManyDocuments = 5;
constexpr std::int32_t kAnswerNo = 7;

/// The current row when it is a document.
GridRow CurrentDocument(Attachment& attachment, ResumeNext& next) {
    GridRow row;
    next([&] { row = attachment.dmsGrid.CurrentRow(); });
    const bool isDocument = row && next.If([&] { return !row.IsGroup(); });
    return isDocument ? row : GridRow();
}

std::vector<RowRange> SelectedRanges(Attachment& attachment, ResumeNext& next) {
    std::vector<RowRange> ranges;
    next([&] { ranges = attachment.dmsGrid.Selection(); });
    return ranges;
}

void OpenRow(Attachment& attachment, const GridRow& row) {
    ResumeNext next{attachment.trace, u"OpenDocument"};
    const Culture& locale = attachment.platform.locale;
    std::u16string location;
    next([&] { location = ToText(row.Get(field::kPhysicalStore1), locale); });
    const bool isLink = next.If([&] { return ObjectTypeOf(row, locale) == kLinkDocument; });
    const bool isThere =
        next.If([&] { return FileExistsOnDisk(attachment.platform.files, location); });
    if (isThere || (isLink && !Trim(location).empty())) {
        next([&] { attachment.platform.shell.Open(location, GetFolderPath(location)); });
    }
}

void OpenOne(Attachment& attachment, std::int32_t id) {
    ResumeNext next{attachment.trace, u"OpenDocument"};
    std::int32_t number = 0;
    next([&] { number = attachment.dmsGrid.Find(field::kId, id); });
    GridRow row;
    if (number > 0 && next([&] { row = attachment.dmsGrid.RowAt(number); })) {
        OpenRow(attachment, row);
    }
}

void OpenSelected(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"OpenDocument"};
    if (!CurrentDocument(attachment, next)) {
        return;
    }
    std::int64_t count = 0;
    const std::vector<RowRange> ranges = SelectedRanges(attachment, next);
    for (const RowRange& range : ranges) {
        count += std::int64_t{range.last} - range.first + 1;
    }
    const bool isRefused = count > kManyDocuments && next.If([&] {
        return attachment.platform.messages.Show(
                   u"Sie versuchen, " + DecimalText(count) +
                       u" Dokumente gleichzeitig zu öffnen. Möchten Sie fortfahren?",
                   kWarningQuestion, u"Hohe Anzahl an Dokumenten") == kAnswerNo;
    });
    if (isRefused) {
        return;
    }
    // Rows are taken before the first is opened: what is opened may change the list.
    std::vector<GridRow> rows;
    for (const RowRange& range : ranges) {
        for (std::int32_t number = range.first; number <= range.last; ++number) {
            next([&] { rows.push_back(attachment.dmsGrid.RowAt(number)); });
        }
    }
    for (const GridRow& row : rows) {
        if (next.If([&] { return !row.IsGroup(); })) {
            OpenRow(attachment, row);
        }
    }
}

std::vector<GridRow> SelectedDocuments(Attachment& attachment, ResumeNext& next) {
    std::vector<GridRow> rows;
    const auto take = [&](std::int32_t number) {
        GridRow row = attachment.dmsGrid.RowAt(number);
        if (!row.IsGroup()) {
            rows.push_back(std::move(row));
        }
    };
    for (const RowRange& range : SelectedRanges(attachment, next)) {
        for (std::int32_t number = range.first; number <= range.last; ++number) {
            next([&] { take(number); });
        }
    }
    return rows;
}

} // namespace

void OpenDocument(Attachment& attachment, std::int32_t id) {
    if (id == kSelectedDocuments) {
        OpenSelected(attachment);
    } else {
        OpenOne(attachment, id);
    }
}

void DeleteDMSItem(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"DeleteDMSItem"};
    if (!CurrentDocument(attachment, next)) {
        return;
    }
    const bool isConfirmed = next.If([&] {
        return attachment.platform.messages.Show(
                   u"Sind Sie sicher, dass Sie diese Dokumente aus der Liste entfernen wollen?",
                   kWarningQuestion, u"Dokument entfernen...") == kAnswerYes;
    });
    if (!isConfirmed) {
        return;
    }
    const Grid grid = attachment.dmsGrid;
    for (const GridRow& row : SelectedDocuments(attachment, next)) {
        next([&] { grid.RemoveRow(row); });
    }
    next([&] { attachment.talvixManaging.Call(u"WriteGridDataToItemBody"); });
}

void btnExportDocuments_Click(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"btnExportDocuments_Click"};
    next([&] { attachment.talvixManaging.Call(u"SetUserFieldValues"); });
    next([&] {
        const Late item = attachment.Item();
        const Value xml = attachment.talvixManaging.Call(u"GetXMLDataAsString");
        attachment.talvixExport.Call(u"ExportItem", item.Get(), u"Dokumente", Missing(), xml);
    });
}

void ShowFileProperties(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"ShowFileProperties"};
    GridRow row;
    next([&] { row = attachment.dmsGrid.CurrentRow(); });
    const Culture& locale = attachment.platform.locale;
    const bool isFile = row && next.If([&] { return ObjectTypeOf(row, locale) == kFileDocument; });
    if (!isFile) {
        return;
    }
    std::u16string path;
    next([&] { path = Trim(ToText(row.Get(field::kPhysicalStore1), locale)); });
    std::int64_t owner = 0;
    next([&] { owner = attachment.dmsGrid.Window(); });
    next([&] { attachment.platform.shell.ShowProperties(path, owner); });
}

} // namespace talvix
