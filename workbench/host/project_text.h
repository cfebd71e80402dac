#pragma once

#include "automation/late.h"
#include "workbench/host/project.h"

#include <string>
#include <string_view>

namespace talvix::host {

/// The project as the text of a project file.
std::u16string ProjectXml(const Project& project);

/// The project in an XML document that has been read, by the names that MSXML's document and nodes
/// have (`documentElement`, `selectNodes`, `nextNode`, `nodeName`, `getAttribute`, `text`). What is
/// no project, or only a part of one, raises Failure as RefuseProject does.
Project ProjectIn(const Late& document, std::u16string_view path);

/// Raises Failure with a German text that names the file and, in `reason`, the place in it.
[[noreturn]] void RefuseProject(std::u16string_view path, const std::u16string& reason);

/// A member of an XML service's object; empty when it is no text.
std::u16string TextIn(const Late& node, std::u16string_view member);

} // namespace talvix::host
