#pragma once

#include "platform/shell.h"
#include "platform/win32/key_watch.h"

#include <map>
#include <optional>

namespace talvix {

/// What the shell says of a file whose class has one icon and one name for all its files is kept as
/// long as no registered class changes: asking costs milliseconds, over a network far more.
class Win32Shell : public Shell {
public:
    std::int32_t SmallIconIndex(std::u16string_view path) override;
    std::u16string TypeName(std::u16string_view path) override;
    bool HasOwnIcon(std::u16string_view path) override;
    std::int64_t SmallIconList() override;
    ShellCopy Copy(std::u16string_view source, std::u16string_view target) override;
    void Open(std::u16string_view what, std::u16string_view workingFolder) override;
    std::int32_t ShowProperties(std::u16string_view path, std::int64_t owner) override;

private:
    struct FileClass {
        bool hasOwnIcon = true;
        std::optional<std::int32_t> icon;
        std::optional<std::u16string> typeName;
    };
    /// Null for a path whose answers are not to be kept.
    FileClass* ClassOf(std::u16string_view path);
    std::u16string AskForTypeName(const std::u16string& path);

    std::map<std::u16string, FileClass> classes_;
    bool mindsExeType_ = false; ///< SHGFI_EXETYPE has cost an answer that was there without it
    KeyWatch watch_{
        {{HKEY_LOCAL_MACHINE, L"Software\\Classes"}, {HKEY_CURRENT_USER, L"Software\\Classes"}}};
};

} // namespace talvix
