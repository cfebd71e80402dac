#include "folder/copy_to_project_folder.h"

#include "automation/resume_next.h"
#include "common/general.h"
#include "folder/project_copy.h"
#include "folder/project_folder.h"
#include "folder/sub_folders.h"
#include "operations/add_document.h"

namespace talvix {

namespace {

std::u16string TargetFolder(Attachment& attachment, const std::u16string& subFolder) {
    const std::u16string folder = GetProjectFolder(attachment);
    return subFolder.empty() || subFolder == u"\\" ? folder : BuildPath(folder, subFolder);
}

void CreateSubFolders(Attachment& attachment) {
    if (!SubFoldersActive(attachment)) {
        return;
    }
    for (const std::u16string& name : GetSubFolderList(attachment)) {
        std::u16string path = GetProjectFolder(attachment) + u"\\" + name;
        CreateSubFolder(attachment.platform.files, attachment.trace, path);
    }
}

} // namespace

void CopyToProjectFolder(Attachment& attachment, const DocumentCopy& copy) {
    const std::u16string folder = TargetFolder(attachment, copy.subFolder);
    const std::u16string name = copy.fileName.empty() ? GetFileName(copy.source) : copy.fileName;
    const auto placed = PlaceCopy(attachment, copy.source, folder, name);
    if (!placed) {
        return;
    }
    CreateSubFolders(attachment);
    const bool keepsSubject = !placed->isNumbered && !copy.subject.empty();
    AddFile(attachment, placed->path, keepsSubject ? copy.subject : GetFileName(placed->path),
            copy.status, copy.longDescription, copy.creationDate, copy.modificationDate,
            copy.action);
}

} // namespace talvix
