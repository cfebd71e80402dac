#pragma once

#include "core/attachment.h"

#include <optional>
#include <string>

namespace talvix {

/// The folder that naming rule and base path give for the project, in network form. Nothing when
/// the project lacks what the rule asks for; the message 3500 then names it.
std::optional<std::u16string> FolderByRules(Attachment& attachment);

} // namespace talvix
