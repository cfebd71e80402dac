#pragma once

#include "platform/files.h"
#include "platform/shell.h"
#include "platform/system_info.h"

#include <string>
#include <string_view>

namespace talvix {

/// True for files only; a folder or an empty path gives false.
bool FileExistsOnDisk(Files& files, std::u16string_view path);
/// Place of the small icon of a file that is there in the system image list.
std::int32_t GetSmallIconIndex(Shell& shell, std::u16string_view path);
/// What follows the last "\"; the path itself without one; "" for a blank path.
std::u16string GetFileName(std::u16string_view path);
/// Up to before the last "\", or up to and with the last ":" where that comes first from the end;
/// "" where neither occurs.
std::u16string GetFolderPath(std::u16string_view path);
/// `name` below `folder`, joined by exactly one "\\"; an empty part gives the other part alone.
std::u16string BuildPath(std::u16string_view folder, std::u16string_view name);
/// What follows the last "." of the file's name, "" without one.
std::u16string GetExtensionName(std::u16string_view path);
/// The shell's caption for the file's type, "" for none.
std::u16string GetFileTypeName(Shell& shell, std::u16string_view path);
/// Points (1/72 inch) of a length in pixels, never negative. Failure (overflow) where 72 times the
/// pixels does not fit into 32 bits.
float PixelsToPoints(SystemInfo& system, std::int32_t pixels);
/// The name of the running system, such as "Windows XP"; "" where it is not told.
std::u16string GetOSName(SystemInfo& system);

} // namespace talvix
