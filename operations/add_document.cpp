#include "operations/add_document.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "common/general.h"
#include "core/row_presentation.h"
#include "folder/project_folder.h"
#include "operations/action_combo.h"
#include "operations/file_outlook_item.h"

#include <limits>
#include <utility>

namespace talvix {

namespace {

std::int16_t AsInteger16(std::int32_t number) {
    if (number < std::numeric_limits<std::int16_t>::min() ||
        number > std::numeric_limits<std::int16_t>::max()) {
        throw Failure(failure_number::kTypeMismatch, u"The object type does not fit into 16 bits");
    }
    return static_cast<std::int16_t>(number);
}

void FillRow(Attachment& attachment, const GridRow& row, DocumentRecord record) {
    ResumeNext next{attachment.trace, u"AddDMSItem"};
    // A row that waits for its place is seen by nobody before its presentation.
    const bool needsPlaceholders = !attachment.placesRowsLater;
    const auto set = [&](const char16_t* key, auto&& value) {
        next([&] { row.Set(key, std::forward<decltype(value)>(value)); });
    };
    next([&] { row.Set(field::kId, attachment.talvixManaging.Call(u"GetNextID", u"DMS")); });
    next([&] { row.Set(field::kObjectType, AsInteger16(record.objectType)); });
    if (needsPlaceholders) {
        set(field::kIcon, std::int32_t{0});
    }
    set(field::kSubject, std::move(record.subject));
    if (needsPlaceholders) {
        set(field::kItemSize, std::int32_t{0});
        set(field::kObjectDescription, u"");
    }
    set(field::kCreator, std::move(record.creator));
    set(field::kCreationDate, record.creationDate);
    set(field::kLastModificationBy, std::move(record.lastModificationBy));
    set(field::kModificationDate, record.modificationDate);
    set(field::kStatus, std::move(record.status));
    set(field::kLongDescription, std::move(record.longDescription));
    set(field::kPhysicalStore1, std::move(record.physicalStore1));
    set(field::kPhysicalStore2, std::move(record.physicalStore2));
    set(field::kPhysicalStore3, std::move(record.physicalStore3));
}

void AddRow(Attachment& attachment, DocumentRecord record) {
    ResumeNext next{attachment.trace, u"AddDMSItem"};
    const Grid grid = attachment.dmsGrid;
    GridRow row;
    next([&] { row = grid.AddRow(); });
    const std::int32_t objectType = record.objectType;
    const std::u16string path = record.physicalStore1;
    FillRow(attachment, row, std::move(record));
    PresentNewRow(attachment, row, objectType, path);
    if (!attachment.placesRowsLater) {
        PlaceNewRow(attachment.trace, grid);
    }
}

} // namespace

void PlaceNewRow(Trace& trace, const Grid& grid) {
    ResumeNext next{trace, u"AddDMSItem"};
    next([&] { grid.RefreshRows(); });
    next([&] { grid.RefreshSort(); });
    next([&] { grid.Expand(); });
}

void AddDMSItem(Attachment& attachment, const DocumentRecord& record, const ItemFiling& filing) {
    if (GetProjectFolder(attachment).empty()) {
        return;
    }
    if (filing.item.IsNothing()) {
        AddRow(attachment, record);
    } else {
        FileOutlookItem(attachment, record, filing);
    }
}

void AddFile(Attachment& attachment, std::u16string_view physicalStore1,
             std::u16string_view subject, std::u16string_view status,
             std::u16string_view longDescription, Date creationDate, Date modificationDate,
             const std::optional<std::u16string>& action) {
    ResumeNext next{attachment.trace, u"AddFile"};
    const bool needsNow = creationDate.days == 0 || modificationDate.days == 0;
    if (Date now; needsNow && next([&] { now = attachment.platform.clock.Now(); })) {
        creationDate = creationDate.days == 0 ? now : creationDate;
        modificationDate = modificationDate.days == 0 ? now : modificationDate;
    }
    std::u16string user;
    next([&] {
        user = ToText(attachment.talvixCommon.Call(u"strCurrentUser"), attachment.platform.locale);
    });
    std::u16string relativeFolder;
    std::u16string projectFolder;
    next([&] {
        const std::u16string folder = GetFolderPath(physicalStore1);
        projectFolder = GetProjectFolder(attachment);
        relativeFolder = ReplaceNoCase(attachment.platform.locale, folder, projectFolder, u"");
    });
    DocumentRecord record;
    record.subject = subject;
    record.creator = user;
    record.creationDate = creationDate;
    record.lastModificationBy = std::move(user);
    record.modificationDate = modificationDate;
    record.status = status;
    record.longDescription = longDescription;
    record.physicalStore1 = physicalStore1;
    record.physicalStore2 = std::move(relativeFolder);
    record.physicalStore3 = action ? *action : SelectedActionNumber(attachment);
    if (attachment.placesRowsLater && !projectFolder.empty()) {
        AddRow(attachment, std::move(record)); // the import need not ask for the folder again
    } else {
        AddDMSItem(attachment, record, ItemFiling{Nothing(), -1, true, u""});
    }
}

} // namespace talvix
