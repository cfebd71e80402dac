#include "folder/folder_import.h"

#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "core/document_record.h"
#include "core/grid_setup.h"
#include "core/redraw_pause.h"
#include "folder/project_copy.h"
#include "folder/project_folder.h"
#include "operations/add_document.h"

namespace talvix {

namespace {

class FolderImport {
public:
    explicit FolderImport(Attachment& attachment)
        : attachment_(attachment),
          pass_(attachment),
          grid_(attachment.dmsGrid),
          next_(attachment.trace, u"ImportFolder") {}
    FolderImport(const FolderImport&) = delete;
    FolderImport& operator=(const FolderImport&) = delete;
    ~FolderImport() { attachment_.placesRowsLater = false; }

    std::int32_t Run(const std::u16string& folder) {
        ImportFolder(folder);
        if (hasRowsToPlace_) {
            PlaceNewRow(attachment_.trace, grid_);
        }
        return addedCount_;
    }

private:
    void ImportFolder(std::u16string path) {
        if (path.empty() || path.back() != u'\\') {
            path += u'\\';
        }
        FolderListing listing;
        next_([&] { listing = attachment_.platform.files.List(path); });
        PlaceRowsLaterWhereNothingIsGrouped();
        if (!ImportFiles(path, listing.files)) {
            return;
        }
        for (const std::u16string& name : listing.folders) {
            attachment_.placesRowsLater = false; // who adds a row meanwhile sees it in its place
            next_([&] { attachment_.platform.timers.RunPending(); });
            if (attachment_.stopImport) {
                return;
            }
            next_([&] { ImportFolder(path + name); });
        }
    }

    /// Each row of a grouped list opens the headings above it, so that none can wait there.
    void PlaceRowsLaterWhereNothingIsGrouped() {
        attachment_.placesRowsLater = next_.If([&] { return grid_.GroupCount() == 0; });
    }

    /// False when the import is to stop.
    bool ImportFiles(const std::u16string& folder, const std::vector<ListedFile>& files) {
        for (const ListedFile& file : files) {
            if (!next_.If([&] { return ImportFile(folder + file.name, file); })) {
                continue;
            }
            if (attachment_.stopImport) {
                return false;
            }
            ++addedCount_;
        }
        return true;
    }

    /// False for a file that needs no row.
    bool ImportFile(const std::u16string& path, const ListedFile& file) {
        if (IsUnfinishedCopy(file.name) ||
            next_.If([&] { return IsFileInList(attachment_, path); })) {
            return false;
        }
        if (file.facts) {
            attachment_.pass->Expect(path, *file.facts);
        }
        AddOne(path);
        return true;
    }

    void AddOne(const std::u16string& path) {
        const std::u16string name = GetFileName(path);
        attachment_.strAddingFile = name;
        std::u16string typeName;
        next_([&] { typeName = attachment_.pass->TypeName(path); });
        hasRowsToPlace_ = attachment_.placesRowsLater;
        AddFile(attachment_, path, name, u"", typeName);
    }

    Attachment& attachment_;
    PassScope pass_;
    Grid grid_;
    ResumeNext next_;
    std::int32_t addedCount_ = 0;
    bool hasRowsToPlace_ = false;
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
    std::int32_t addedCount = 0;
    {
        const RedrawPause pause(grid, attachment.trace, u"AddFilesFromProjectFolderEvent");
        next([&] { addedCount = FolderImport(attachment).Run(folder); });
    }
    if (addedCount > 0) {
        RefreshGrid(attachment);
        CheckVersion(attachment);
        next([&] { attachment.talvixManaging.Call(u"WriteGridDataToItemBody"); });
    }
}

} // namespace talvix
