#include "automation/text.h"
#include "folder/file_name.h"
#include "folder/naming_rule.h"
#include "fuzz/fuzz.h"

using namespace talvix;

/// A filled rule holds none of the placeholders that the project could fill, and what is missing is
/// named once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string input = TextOfInput(data, size);
    std::u16string_view rest = input;
    const std::u16string_view rule = NextPiece(rest);
    std::u16string_view texts[3];
    for (std::u16string_view& text : texts) {
        text = NextPiece(rest);
    }
    const FilledRule filled = FillNamingRule(rule, [&](ProjectText text) {
        return std::u16string(texts[static_cast<std::size_t>(text)]);
    });
    std::size_t longest = rule.size();
    for (const std::u16string_view text : texts) {
        const std::u16string cleaned = CleanFileNameText(text, u"_");
        Require(cleaned.size() == text.size());
        Require(cleaned.find_first_of(kNotInFileNames) == std::u16string::npos);
        longest += rule.size() * text.size();
    }
    Require(filled.text.size() <= longest + longest * longest);
    Require(filled.missing.empty() || filled.missing.starts_with(u", "));
    Require(filled.missing.size() <=
            std::u16string_view(u", Projektnummer, Projektname, Firmenname").size());
    return 0;
}
