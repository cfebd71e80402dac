#pragma once

#include <string>
#include <string_view>

namespace talvix {

/// Begins a path that Windows takes as it stands, of whatever length; its "?" is no wildcard.
inline constexpr std::u16string_view kLiteralMark = u"\\\\?\\";

/// What follows the mark of such a path; any other path itself.
std::u16string_view BehindLiteralMark(std::u16string_view path);

/// True for a pattern, or for what the system takes for one.
bool HoldsWildcards(std::u16string_view path);

/// The same place without the mark: "C:\a" of "\\?\C:\a" and "\\srv\a" of "\\?\UNC\srv\a"; any
/// other path itself.
std::u16string PlainPath(std::u16string_view path);

} // namespace talvix
