#pragma once

#include "workbench/host/project.h"

#include <string>
#include <string_view>

namespace talvix::workbench {

/// The project as the text of a project file.
std::u16string ProjectXml(const host::Project& project);

/// Reads a project file. A damaged file or one of another kind raises Failure with a German text
/// that names the file and the place.
host::Project ReadProject(std::u16string_view path);

/// Writes a project file: whole, into a temporary file beside it, flushed, then put in the place of
/// the old one in one step. On Failure the old file is as it was.
void SaveProject(const host::Project& project, std::u16string_view path);

} // namespace talvix::workbench
