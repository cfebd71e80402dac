#pragma once

#include "platform/shell.h"
#include "platform/win32/file_answers.h"

namespace talvix {

class Win32Shell : public Shell {
public:
    FileClasses& Classes() override { return classes_; }
    std::u16string TypeName(std::u16string_view path) override;
    std::int64_t SmallIconList() override;
    ShellCopy Copy(std::u16string_view source, std::u16string_view target) override;
    void Open(std::u16string_view what, std::u16string_view workingFolder) override;
    std::int32_t ShowProperties(std::u16string_view path, std::int64_t owner) override;

private:
    Win32FileAnswers answers_;
    FileClasses classes_{answers_};
};

} // namespace talvix
