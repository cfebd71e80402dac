#include "folder/project_folder_store.h"

#include "automation/resume_next.h"
#include "automation/text.h"
#include "folder/project_folder.h"
#include "folder/sub_folders.h"
#include "folder/unc_conversion.h"

namespace talvix {

namespace {

constexpr std::uint32_t kFoldersOnly = 1;  // BIF_RETURNONLYFSDIRS
constexpr std::uint32_t kResizable = 0x40; // BIF_NEWDIALOGSTYLE

/// Where the levels begin that can be created: behind the share of a network path.
std::size_t FirstLevel(std::u16string_view path) {
    if (!path.starts_with(u"\\\\")) {
        return 0;
    }
    const std::size_t server = path.find(u'\\', 2);
    const std::size_t share =
        server == std::u16string_view::npos ? server : path.find(u'\\', server + 1);
    return share == std::u16string_view::npos ? path.size() : share + 1;
}

} // namespace

void btnOpenFolder_Click(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"btnOpenFolder_Click"};
    std::u16string path;
    next([&] { path = Trim(attachment.UserProperty(kFolderProperty)); });
    if (!path.empty()) {
        next([&] { attachment.platform.shell.Open(path, path); });
    }
}

void btnDMSSetStore_Click(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"btnDMSSetStore_Click"};
    std::u16string path;
    next([&] {
        path = attachment.platform.dialogs.BrowseForFolder(
            {kFoldersOnly | kResizable, u"Dokumentenablage", u"", u""});
    });
    if (path.empty()) {
        return;
    }
    path = ConvertToUNC(attachment.platform.network, attachment.platform.locale, attachment.trace,
                        path);
    next([&] { attachment.SetUserProperty(kFolderProperty, path); });
    if (SubFoldersActive(attachment)) {
        for (const std::u16string& name : GetSubFolderList(attachment)) {
            std::u16string subFolder = path;
            subFolder.append(u"\\").append(name);
            CreateSubFolder(attachment.platform.files, attachment.trace, subFolder);
        }
    }
}

void btnDMSDeletetStore_Click(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"btnDMSDeletetStore_Click"};
    const bool confirmed = next.If([&] {
        return attachment.platform.messages.Show(
                   u"Soll die Ordnerpfadangabe wirklich entfernt werden?", kWarningQuestion,
                   u"Ordnerpfadangabe entfernen") == kAnswerYes;
    });
    if (confirmed) {
        next([&] { attachment.SetUserProperty(kFolderProperty, u""); });
    }
}

bool MkDirs(Files& files, Trace& trace, std::u16string_view pathIn) {
    ResumeNext next{trace, u"MkDirs"};
    std::u16string path(pathIn);
    if (!path.ends_with(u'\\')) {
        path += u'\\';
    }
    return next([&] {
        for (std::size_t at = path.find(u'\\', FirstLevel(path)); at != std::u16string::npos;
             at = path.find(u'\\', at + 1)) {
            const std::u16string level = path.substr(0, at + 1);
            const auto facts = files.Query(level);
            if (!facts || !facts->isFolder) {
                files.CreateFolder(level);
            }
        }
    });
}

void CreateProjectFolderOnRequest(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"CreateProjectFolderOnRequest"};
    Messages& messages = attachment.platform.messages;
    const std::u16string path = GetProjectFolder(attachment);
    const bool wanted = next.If([&] {
        return messages.Show(u"Das Verzeichnis \"" + path +
                                 u"\" existiert nicht. Soll es jetzt angelegt werden?",
                             kQuestion, u"Dokumente") == kAnswerYes;
    });
    if (!wanted) {
        return;
    }
    if (!MkDirs(attachment.platform.files, attachment.trace, path)) {
        next([&] { messages.Show(u"Fehler", kPlainMessage, u""); });
    }
    // The pending error was cleared before and MkDirs handles its own: there is no text to show.
    next([&] { messages.Show(u"", kPlainMessage, u""); });
}

} // namespace talvix
