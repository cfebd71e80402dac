#include "folder/folder_import.h"

#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "core/document_record.h"
#include "core/grid_setup.h"
#include "folder/project_copy.h"
#include "folder/project_folder.h"
#include "operations/add_document.h"

namespace talvix {

namespace {

class FolderImport {
public:
    explicit FolderImport(Attachment& attachment)
        : attachment_(attachment), scope_(attachment), next_(attachment.trace, u"ImportFolder") {}

    void ImportFolder(std::u16string path) {
        if (path.empty() || path.back() != u'\\') {
            path += u'\\';
        }
        FolderListing listing;
        next_([&] { listing = attachment_.platform.files.List(path); });
        if (!ImportFiles(path, listing.files)) {
            return;
        }
        for (const std::u16string& name : listing.folders) {
            next_([&] { attachment_.platform.timers.RunPending(); });
            if (attachment_.stopImport) {
                return;
            }
            ImportFolder(path + name);
        }
    }

    std::int32_t AddedCount() const { return addedCount_; }

private:
    /// False when the import is to stop.
    bool ImportFiles(const std::u16string& folder, const std::vector<std::u16string>& names) {
        for (const std::u16string& name : names) {
            const std::u16string path = folder + name;
            if (IsUnfinishedCopy(name) ||
                next_.If([&] { return IsFileInList(attachment_, path); })) {
                continue;
            }
            AddOne(path);
            if (attachment_.stopImport) {
                return false;
            }
            ++addedCount_;
        }
        return true;
    }

    void AddOne(const std::u16string& path) {
        const std::u16string name = GetFileName(path);
        attachment_.strAddingFile = name;
        std::u16string typeName;
        next_([&] { typeName = attachment_.pass->TypeName(path); });
        AddFile(attachment_, path, name, u"", typeName);
    }

    Attachment& attachment_;
    PassScope scope_;
    ResumeNext next_;
    std::int32_t addedCount_ = 0;
};

} // namespace

bool IsFileInList(Attachment& attachment, std::u16string_view path) {
    return attachment.dmsGrid.Find(field::kPhysicalStore1, path) > 0;
}

void ImportProjectFolder(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"AddFilesFromProjectFolderEvent"};
    const std::u16string folder(Trim(GetProjectFolder(attachment)));
    if (folder.empty()) {
        return;
    }
    const Grid grid = attachment.dmsGrid;
    next([&] { grid.SetRedraw(false); });
    FolderImport import(attachment);
    import.ImportFolder(folder);
    next([&] { grid.SetRedraw(true); });
    if (import.AddedCount() > 0) {
        RefreshGrid(attachment);
        CheckVersion(attachment);
        next([&] { attachment.talvixManaging.Call(u"WriteGridDataToItemBody"); });
    }
}

} // namespace talvix
