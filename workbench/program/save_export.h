#pragma once

#include "automation/culture.h"
#include "workbench/host/project.h"

#include <windows.h>

#include <string_view>

namespace talvix::workbench {

/// Writes the list into a file, replacing an earlier one: CSV or a printable page, as the file's
/// extension says, else the XML as it is. Failure with a German text when it cannot be written.
void WriteExport(std::u16string_view path, const host::Project& project, std::u16string_view xml,
                 const Culture& culture);

/// Asks for a file and writes the list into it: the XML as it is, CSV or a printable page made from
/// the same list, as the file's extension says. Failure with a German text when it cannot be
/// written.
void SaveExport(HWND owner, const host::Project& project, std::u16string_view name,
                std::u16string_view xml, const Culture& culture);

} // namespace talvix::workbench
