#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace talvix::workbench {

/// What the program remembers for the user, by name: texts below
/// HKEY_CURRENT_USER\Software\Talvix\Workbench.
/// "" for what is not remembered, is of another kind or longer than 32,000 characters.
std::u16string Remembered(const wchar_t* name);
/// What cannot be written is not remembered.
void Remember(const wchar_t* name, const std::u16string& text);

/// The project files used last, the newest first.
std::vector<std::u16string> RecentFiles();
void RememberFile(std::u16string_view path);
void ForgetFile(std::u16string_view path);

inline constexpr std::size_t kMostRecentFiles = 8;

} // namespace talvix::workbench
