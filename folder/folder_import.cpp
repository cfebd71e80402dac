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

#include <algorithm>

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
        next_([&] { ImportFolder(folder); });
        while (!levels_.empty()) {
            GoOn();
        }
        if (hasRowsToPlace_) {
            PlaceNewRow(attachment_.trace, grid_);
        }
        return addedCount_;
    }

private:
    /// A folder whose files are done and whose sub-folders follow. Kept here and not on the stack,
    /// which a tree of folders can be too deep for.
    struct Level {
        std::size_t placeLength;
        std::vector<std::u16string> folders; ///< those that are left, the next one last
    };

    /// The files of a folder; its sub-folders become a level.
    void ImportFolder(std::u16string path) {
        if (path.empty() || path.back() != u'\\') {
            path += u'\\';
        }
        if (!GoTo(attachment_.platform.files.FullPath(path))) {
            return;
        }
        FolderListing listing = ListedHere();
        PlaceRowsLaterWhereNothingIsGrouped();
        hasAddedHere_ = false;
        if (!ImportFiles(place_, listing.files)) {
            return;
        }
        if (hasAddedHere_) { // whoever was told of the rows may have changed what lies here
            listing = ListedHere();
        }
        std::reverse(listing.folders.begin(), listing.folders.end());
        levels_.push_back({place_.size(), std::move(listing.folders)});
    }

    /// False for a folder that does not lie in the one around it: the system takes some names, such
    /// as "...", for other ones.
    bool GoTo(std::u16string place) {
        if (!place.ends_with(u'\\')) {
            place += u'\\';
        }
        if (!levels_.empty()) {
            const std::u16string_view outer = OuterPlace();
            if (place.size() == outer.size() || !place.starts_with(outer)) {
                return false;
            }
        }
        place_ = std::move(place);
        return true;
    }

    std::u16string_view OuterPlace() const {
        return std::u16string_view(place_).substr(0, levels_.back().placeLength);
    }

    FolderListing ListedHere() {
        FolderListing listing;
        next_([&] { listing = attachment_.platform.files.List(place_); });
        return listing;
    }

    /// The next sub-folder of the innermost level, or back to the level around it.
    void GoOn() {
        if (levels_.back().folders.empty()) {
            levels_.pop_back();
            return;
        }
        attachment_.placesRowsLater = false; // who adds a row meanwhile sees it in its place
        next_([&] { attachment_.platform.timers.RunPending(); });
        if (attachment_.stopImport) {
            levels_.pop_back();
            return;
        }
        const std::u16string name = std::move(levels_.back().folders.back());
        levels_.back().folders.pop_back();
        next_([&] { ImportFolder(std::u16string(OuterPlace()) + name); });
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
        hasAddedHere_ = true;
        AddFile(attachment_, path, name, u"", typeName);
    }

    Attachment& attachment_;
    PassScope pass_;
    Grid grid_;
    ResumeNext next_;
    std::vector<Level> levels_; ///< from the project's folder inwards
    std::u16string place_;      ///< full path of the folder at hand, with a closing "\"
    std::int32_t addedCount_ = 0;
    bool hasAddedHere_ = false;
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
