#pragma once

#include "automation/late.h"

namespace talvix {

/// The component's one registered message: project data for the folder rules is missing.
inline constexpr std::int32_t kMissingProjectData = 3500;

/// Registers the component's message with the host's common library.
void RegisterMessages(const Late& common);

} // namespace talvix
