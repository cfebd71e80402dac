#include "folder/naming_rule.h"

#include "automation/text.h"
#include "folder/file_name.h"

namespace talvix {

namespace {

struct Placeholder {
    std::u16string_view name;
    std::u16string_view missingWord;
    ProjectText text;
};

constexpr Placeholder kPlaceholders[] = {
    {u"<Project Number>", u", Projektnummer", ProjectText::Number},
    {u"<Project Name>", u", Projektname", ProjectText::Name},
    {u"<Company Name>", u", Firmenname", ProjectText::Company},
};

} // namespace

std::u16string CleanFileNameText(std::u16string_view text, std::u16string_view replacement) {
    std::u16string cleaned(text);
    for (const char16_t& each : kNotInFileNames) {
        cleaned = Replace(cleaned, std::u16string_view(&each, 1), replacement);
    }
    return cleaned;
}

FilledRule FillNamingRule(std::u16string_view rule,
                          const std::function<std::u16string(ProjectText)>& textOf) {
    FilledRule filled{std::u16string(rule), {}};
    for (const Placeholder& each : kPlaceholders) {
        if (filled.text.find(each.name) == std::u16string::npos) {
            continue;
        }
        const std::u16string text = textOf(each.text);
        if (Trim(text).empty()) {
            filled.missing += each.missingWord;
        } else {
            filled.text = Replace(filled.text, each.name, Trim(CleanFileNameText(text, u"_")));
        }
    }
    return filled;
}

} // namespace talvix
