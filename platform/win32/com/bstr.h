#pragma once

#include "platform/win32/wide.h"

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <utility>

namespace talvix {

/// Owns an automation string.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::u16string_view text)
        : text_(SysAllocStringLen(WideUnits(text), static_cast<UINT>(text.size()))) {
        if (text_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }

    BSTR Get() const { return text_; }
    BSTR* Out() {
        SysFreeString(text_);
        text_ = nullptr;
        return &text_;
    }
    BSTR Detach() { return std::exchange(text_, nullptr); }
    std::u16string Text() const { return std::u16string(View(text_)); }
    /// A null string is the empty text.
    static std::u16string_view View(BSTR text) {
        return text == nullptr ? std::u16string_view()
                               : std::u16string_view(reinterpret_cast<const char16_t*>(text),
                                                     SysStringLen(text));
    }

private:
    BSTR text_ = nullptr;
};

} // namespace talvix
