#pragma once

#include "core/attachment.h"

#include <optional>
#include <string>

namespace talvix {

/// Every "/", "\", "*", "?", "|", ">", "<", ":" and double quote replaced.
std::u16string CleanFileNameText(std::u16string_view text, std::u16string_view replacement);

/// The folder that naming rule and base path give for the project, in network form. Nothing when
/// the project lacks what the rule asks for; the message 3500 then names it.
std::optional<std::u16string> FolderByRules(Attachment& attachment);

} // namespace talvix
