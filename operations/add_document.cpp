#include "operations/add_document.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "common/general.h"
#include "core/row_presentation.h"
#include "folder/project_folder.h"
#include "operations/action_combo.h"
#include "operations/file_outlook_item.h"

#include <limits>

namespace talvix {

namespace {

std::int16_t AsInteger16(std::int32_t number) {
    if (number < std::numeric_limits<std::int16_t>::min() ||
        number > std::numeric_limits<std::int16_t>::max()) {
        throw Failure(failure_number::kTypeMismatch, u"The object type does not fit into 16 bits");
    }
    return static_cast<std::int16_t>(number);
}

void FillRow(Attachment& attachment, const GridRow& row, const DocumentRecord& record) {
    ResumeNext next{attachment.trace, u"AddDMSItem"};
    next([&] { row.Set(field::kId, attachment.talvixManaging.Call(u"GetNextID", u"DMS")); });
    next([&] { row.Set(field::kObjectType, AsInteger16(record.objectType)); });
    next([&] { row.Set(field::kIcon, std::int32_t{0}); });
    next([&] { row.Set(field::kSubject, record.subject); });
    next([&] { row.Set(field::kItemSize, std::int32_t{0}); });
    next([&] { row.Set(field::kObjectDescription, u""); });
    next([&] { row.Set(field::kCreator, record.creator); });
    next([&] { row.Set(field::kCreationDate, record.creationDate); });
    next([&] { row.Set(field::kLastModificationBy, record.lastModificationBy); });
    next([&] { row.Set(field::kModificationDate, record.modificationDate); });
    next([&] { row.Set(field::kStatus, record.status); });
    next([&] { row.Set(field::kLongDescription, record.longDescription); });
    next([&] { row.Set(field::kPhysicalStore1, record.physicalStore1); });
    next([&] { row.Set(field::kPhysicalStore2, record.physicalStore2); });
    next([&] { row.Set(field::kPhysicalStore3, record.physicalStore3); });
}

void AddRow(Attachment& attachment, const DocumentRecord& record) {
    ResumeNext next{attachment.trace, u"AddDMSItem"};
    const Grid grid = attachment.dmsGrid;
    GridRow row;
    next([&] { row = grid.AddRow(); });
    FillRow(attachment, row, record);
    PresentRow(attachment, row, true);
    next([&] { grid.RefreshRows(); });
    next([&] { grid.RefreshSort(); });
    next([&] { grid.Expand(); });
}

/// The file's folder relative to the project folder.
std::u16string RelativeFolder(Attachment& attachment, std::u16string_view path) {
    const std::u16string folder = GetFolderPath(path);
    return ReplaceNoCase(attachment.platform.locale, folder, GetProjectFolder(attachment), u"");
}

} // namespace

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
             std::u16string_view longDescription, Date creationDate, Date modificationDate) {
    ResumeNext next{attachment.trace, u"AddFile"};
    for (Date* date : {&creationDate, &modificationDate}) {
        if (date->days == 0) {
            next([&] { *date = attachment.platform.clock.Now(); });
        }
    }
    std::u16string user;
    next([&] {
        user = ToText(attachment.talvixCommon.Call(u"strCurrentUser"), attachment.platform.locale);
    });
    std::u16string relativeFolder;
    next([&] { relativeFolder = RelativeFolder(attachment, physicalStore1); });
    DocumentRecord record;
    record.subject = subject;
    record.creator = user;
    record.creationDate = creationDate;
    record.lastModificationBy = user;
    record.modificationDate = modificationDate;
    record.status = status;
    record.longDescription = longDescription;
    record.physicalStore1 = physicalStore1;
    record.physicalStore2 = relativeFolder;
    record.physicalStore3 = SelectedActionNumber(attachment);
    AddDMSItem(attachment, record, ItemFiling{Nothing(), -1, true, u""});
}

} // namespace talvix
