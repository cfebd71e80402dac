#pragma once

#include "automation/culture.h"
#include "workbench/host/project.h"

#include <string>

namespace talvix::host {

/// The document list for a console: number, name, size and place of each document, divided by tabs,
/// lines ended by LF; tabs and line breaks within a text become blanks.
std::u16string ListAsText(const Project& project, const Culture& culture);

/// The project and its documents as JSON: fields by their column keys, numbers and truth values as
/// such, dates as "2003-12-31T14:05:00", all else as text. Fields without content are left out.
std::u16string ListAsJson(const Project& project);

} // namespace talvix::host
