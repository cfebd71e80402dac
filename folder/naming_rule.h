#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace talvix {

/// What a naming rule may ask for, in the order of its placeholders.
enum class ProjectText { Number, Name, Company };

struct FilledRule {
    std::u16string text;
    /// The words for what the project lacks, each after ", "; "" when it has everything.
    std::u16string missing;
};

/// Every "/", "\", "*", "?", "|", ">", "<", ":" and double quote replaced.
std::u16string CleanFileNameText(std::u16string_view text, std::u16string_view replacement);

/// Puts the project's texts in the place of the rule's placeholders, cleaned for file names.
/// `textOf` is asked only for those that the rule names; a blank answer is missing.
FilledRule FillNamingRule(std::u16string_view rule,
                          const std::function<std::u16string(ProjectText)>& textOf);

} // namespace talvix
