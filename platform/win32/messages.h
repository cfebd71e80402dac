#pragma once

#include "platform/messages.h"

namespace talvix {

/// Message boxes over the thread's active window.
class Win32Messages : public Messages {
public:
    std::int32_t Show(std::u16string_view text, std::int32_t style,
                      std::u16string_view title) override;
};

} // namespace talvix
