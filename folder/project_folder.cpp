#include "folder/project_folder.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "automation/text.h"

namespace talvix {

namespace {

std::u16string StoredFolder(Attachment& attachment) {
    const Late property = attachment.Item()[u"UserProperties"](u"Item", kFolderProperty);
    const std::u16string path = ToText(property.Call(u"Value"), attachment.platform.locale);
    return std::u16string(Trim(path));
}

} // namespace

std::u16string GetProjectFolder(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"GetProjectFolder"};
    std::u16string path;
    next([&] { path = StoredFolder(attachment); });
    if (path.empty()) {
        attachment.silentImport = false;
    }
    return path;
}

} // namespace talvix
