#include "folder/sub_folders.h"

#include "automation/resume_next.h"
#include "automation/text.h"

#include <algorithm>

namespace talvix {

bool SubFoldersActive(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"SubFoldersActive"};
    return next.If(
        [&] { return attachment.ReadGlobalSetting(u"DOCUMENTS/SUB_ACTIVE") == u"True"; });
}

std::vector<std::u16string> GetSubFolderList(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"GetSubFolderList"};
    std::u16string list;
    next([&] { list = attachment.ReadGlobalSetting(u"DOCUMENTS/SUB_LIST"); });
    std::vector<std::u16string> names;
    for (std::size_t start = 0; start < list.size() + 1 && !list.empty();) {
        const std::size_t comma = std::min(list.find(u',', start), list.size());
        names.push_back(list.substr(start, comma - start));
        start = comma + 1;
    }
    return names;
}

void CreateSubFolder(Files& files, Trace& trace, std::u16string& path) {
    ResumeNext next{trace, u"CreateSubFolder"};
    if (!path.ends_with(u'\\')) {
        path += u'\\';
    }
    for (std::size_t at = path.find(u'\\'); at != std::u16string::npos;
         at = path.find(u'\\', at + 1)) {
        if (path.compare(at, 2, u"\\\\") == 0) {
            ++at; // the start of a network path
            continue;
        }
        const std::u16string level = path.substr(0, at + 1);
        const bool exists = next.If([&] {
            const auto facts = files.Query(level);
            return facts && facts->isFolder;
        });
        if (!exists) {
            next([&] { files.CreateFolder(level); });
        }
    }
}

} // namespace talvix
