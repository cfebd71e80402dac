#pragma once

#include "platform/shell.h"

namespace talvix {

class Win32Shell : public Shell {
public:
    std::int32_t SmallIconIndex(std::u16string_view path) override;
    std::u16string TypeName(std::u16string_view path) override;
    bool HasOwnIcon(std::u16string_view path) override;
    std::int64_t SmallIconList() override;
    ShellCopy Copy(std::u16string_view source, std::u16string_view target) override;
    void Open(std::u16string_view what, std::u16string_view workingFolder) override;
};

} // namespace talvix
