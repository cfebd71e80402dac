#include "workbench/host/folder_preview.h"

#include "automation/text.h"
#include "common/general.h"
#include "folder/naming_rule.h"

#include <algorithm>

namespace talvix::host {

namespace {

constexpr std::size_t kLongestPath = 259; // what most programs take
constexpr std::size_t kRoomForAName = 60;

std::u16string SettingOf(const Project& project, const char16_t* path) {
    const auto found = project.settings.find(path);
    return found == project.settings.end() ? std::u16string() : found->second;
}

/// Length of the longest sub-folder that is to be created, with its "\".
std::size_t LongestSubFolder(const Project& project) {
    if (SettingOf(project, u"DOCUMENTS/SUB_ACTIVE") != u"True") {
        return 0;
    }
    const std::u16string list = SettingOf(project, u"DOCUMENTS/SUB_LIST");
    std::size_t longest = 0;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(u',', start), list.size());
        longest = std::max(longest, end - start + 1);
        start = end + 1;
    }
    return longest;
}

} // namespace

std::u16string FolderPreview(const Project& project) {
    const FilledRule rule =
        FillNamingRule(SettingOf(project, u"DOCUMENTS/RULES"), [&](ProjectText text) {
            return text == ProjectText::Number ? project.number
                   : text == ProjectText::Name ? project.name
                                               : project.company;
        });
    if (!rule.missing.empty()) {
        return u"Für dieses Projekt fehlt: " + rule.missing.substr(2) + u".";
    }
    const std::u16string folder = BuildPath(SettingOf(project, u"DOCUMENTS/PATH"), rule.text);
    if (folder.empty()) {
        return u"Ohne Basisordner und Namensregel wird kein Ordner ermittelt.";
    }
    std::u16string text = u"Für dieses Projekt: " + folder;
    const std::size_t used = folder.size() + 1 + LongestSubFolder(project);
    if (used + kRoomForAName > kLongestPath) {
        const std::size_t rest = kLongestPath - std::min(kLongestPath, used);
        text += u"\r\nAchtung: Für Dateinamen bleiben nur " +
                DecimalText(static_cast<long long>(rest)) + u" Zeichen.";
    }
    return text;
}

} // namespace talvix::host
