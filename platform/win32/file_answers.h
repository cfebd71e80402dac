#pragma once

#include "platform/file_classes.h"
#include "platform/win32/key_watch.h"

namespace talvix {

class Win32FileAnswers : public FileAnswers {
public:
    std::optional<std::int32_t> AskForIcon(std::u16string_view path) override;
    std::optional<std::u16string> AskForTypeName(std::u16string_view path) override;
    bool CarriesOwnIcon(std::u16string_view path) override;
    bool HaveClassesChanged() override { return watch_.HasChanged(); }
    /// Handle of the system image list of small icons as a number; 0 when there is none.
    static std::int64_t SmallIconList();

private:
    /// What the user has chosen in "Open with", extension by extension.
    static constexpr const wchar_t* kChoices =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";

    bool mindsExeType_ = false; ///< SHGFI_EXETYPE has cost an answer that was there without it
    KeyWatch watch_{{{HKEY_LOCAL_MACHINE, L"Software\\Classes"},
                     {HKEY_CURRENT_USER, L"Software\\Classes"},
                     {HKEY_CURRENT_USER, kChoices}}};
};

} // namespace talvix
