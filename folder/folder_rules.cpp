#include "folder/folder_rules.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "common/mod_message_handling.h"
#include "folder/file_name.h"
#include "folder/unc_conversion.h"

namespace talvix {

namespace {

/// A placeholder of the naming rule and where its text comes from.
struct Placeholder {
    std::u16string_view name;
    std::u16string_view missingWord;
    std::u16string (*text)(const Attachment& attachment);
};

const Placeholder kPlaceholders[] = {
    {u"<Project Number>", u", Projektnummer",
     [](const Attachment& attachment) { return attachment.UserProperty(u"Projektnummer"); }},
    {u"<Project Name>", u", Projektname",
     [](const Attachment& attachment) { return attachment.UserProperty(u"Projektname"); }},
    {u"<Company Name>", u", Firmenname",
     [](const Attachment& attachment) {
         return ToText(attachment.Item().Call(u"Companies"), attachment.platform.locale);
     }},
};

} // namespace

std::u16string CleanFileNameText(std::u16string_view text, std::u16string_view replacement) {
    std::u16string cleaned(text);
    for (const char16_t& each : kNotInFileNames) {
        cleaned = Replace(cleaned, std::u16string_view(&each, 1), replacement);
    }
    return cleaned;
}

std::optional<std::u16string> FolderByRules(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"GetProjectFolder"};
    std::u16string rule;
    next([&] { rule = attachment.ReadGlobalSetting(u"DOCUMENTS/RULES"); });
    std::u16string missing;
    for (const Placeholder& each : kPlaceholders) {
        if (rule.find(each.name) == std::u16string::npos) {
            continue;
        }
        std::u16string text; // what cannot be read is missing
        next([&] { text = each.text(attachment); });
        if (Trim(text).empty()) {
            missing += each.missingWord;
        } else {
            rule = Replace(rule, each.name, Trim(CleanFileNameText(text, u"_")));
        }
    }
    if (!missing.empty()) {
        const std::u16string detail = u"(Fehlende Angaben: " + missing.substr(2) + u")";
        next([&] { attachment.talvixCommon.Call(u"Log", kMissingProjectData, detail); });
        return std::nullopt;
    }
    std::u16string path;
    next([&] { path = BuildPath(attachment.ReadGlobalSetting(u"DOCUMENTS/PATH"), rule); });
    return ConvertToUNC(attachment.platform.network, attachment.platform.locale, attachment.trace,
                        path);
}

} // namespace talvix
