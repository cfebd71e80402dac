#include "folder/project_folder.h"

#include "automation/resume_next.h"
#include "automation/text.h"
#include "folder/folder_rules.h"
#include "folder/project_folder_store.h"

namespace talvix {

namespace {

/// Shows the derived folder; the user takes it or chooses another one.
std::u16string AcceptedFolder(Attachment& attachment, const std::u16string& derived) {
    ResumeNext next{attachment.trace, u"GetProjectFolder"};
    const bool accepted = next.If([&] {
        return attachment.platform.messages.Show(
                   u"Als automatischer Ordnerpfad wurde ermittelt: \r\n" + derived +
                       u"\r\n\r\nSind sie damit zufrieden?",
                   kQuestion, u"Dokumentenablage") == kAnswerYes;
    });
    std::u16string path = derived;
    if (accepted) {
        next([&] { attachment.SetUserProperty(kFolderProperty, path); });
    } else {
        btnDMSSetStore_Click(attachment);
        next([&] { path = attachment.UserProperty(kFolderProperty); });
    }
    return std::u16string(Trim(path));
}

} // namespace

std::u16string GetProjectFolder(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"GetProjectFolder"};
    std::u16string path;
    next([&] { path = Trim(attachment.UserProperty(kFolderProperty)); });
    if (!path.empty()) {
        return path;
    }
    if (attachment.silentImport) {
        attachment.silentImport = false;
        return {};
    }
    const std::optional<std::u16string> derived = FolderByRules(attachment);
    return derived ? AcceptedFolder(attachment, *derived) : std::u16string();
}

bool ProjectFolderExists(Attachment& attachment) {
    const auto facts = attachment.platform.files.Query(GetProjectFolder(attachment));
    return facts && facts->isFolder;
}

} // namespace talvix
