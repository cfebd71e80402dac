#include "folder/folder_rules.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "common/general.h"
#include "common/mod_message_handling.h"
#include "folder/naming_rule.h"
#include "folder/unc_conversion.h"

namespace talvix {

namespace {

std::u16string TextOf(const Attachment& attachment, ProjectText text) {
    switch (text) {
    case ProjectText::Number:
        return attachment.UserProperty(u"Projektnummer");
    case ProjectText::Name:
        return attachment.UserProperty(u"Projektname");
    default:
        return ToText(attachment.Item().Call(u"Companies"), attachment.platform.locale);
    }
}

} // namespace

std::optional<std::u16string> FolderByRules(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"GetProjectFolder"};
    std::u16string rule;
    next([&] { rule = attachment.ReadGlobalSetting(u"DOCUMENTS/RULES"); });
    const FilledRule filled = FillNamingRule(rule, [&](ProjectText which) {
        std::u16string text; // what cannot be read is missing
        next([&] { text = TextOf(attachment, which); });
        return text;
    });
    if (!filled.missing.empty()) {
        const std::u16string detail = u"(Fehlende Angaben: " + filled.missing.substr(2) + u")";
        next([&] { attachment.talvixCommon.Call(u"Log", kMissingProjectData, detail); });
        return std::nullopt;
    }
    std::u16string path;
    next([&] { path = BuildPath(attachment.ReadGlobalSetting(u"DOCUMENTS/PATH"), filled.text); });
    return ConvertToUNC(attachment.platform.network, attachment.platform.locale, attachment.trace,
                        path);
}

} // namespace talvix
