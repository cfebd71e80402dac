#pragma once

#include "workbench/host/mail.h"

#include <string_view>

namespace talvix::workbench {

/// Writes a mail as an Outlook message file (".msg", a compound file), replacing an earlier one.
/// Failure with a German text when it cannot be written.
void WriteMessageFile(const host::Mail& mail, std::u16string_view path);

/// The mail in an ".eml" file. Failure with a German text that names the file.
host::Mail ReadMailFile(std::u16string_view path);

/// Writes a file, replacing an earlier one.
void WriteWholeFile(std::u16string_view path, std::string_view content);

} // namespace talvix::workbench
