#pragma once

#include "workbench/host/project.h"

#include <string>

namespace talvix::host {

/// What the folder rules give for a project as it stands, in one or two German sentences: the
/// folder, or what is missing, and a warning where paths become too long for other programs.
std::u16string FolderPreview(const Project& project);

} // namespace talvix::host
