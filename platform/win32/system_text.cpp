#include "platform/win32/system_text.h"

#include "automation/text.h"
#include "platform/win32/wide.h"

namespace talvix {

std::u16string SystemText(DWORD error) {
    std::u16string text(512, u'\0');
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                       0, WideBuffer(text), static_cast<DWORD>(text.size()), nullptr);
    while (length > 0 &&
           (text[length - 1] == u'\n' || text[length - 1] == u'\r' || text[length - 1] == u' ')) {
        --length;
    }
    if (length > 0) {
        text.resize(length);
        return text;
    }
    return u"Error 0x" + HexText(error);
}

} // namespace talvix
