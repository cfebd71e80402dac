#pragma once

#include "workbench/host/project.h"

#include <string_view>

namespace talvix::workbench {

/// Reads a project file. A damaged file or one of another kind raises Failure with a German text
/// that names the file and the place.
host::Project ReadProject(std::u16string_view path);

} // namespace talvix::workbench
