#pragma once

#include <array>
#include <string>
#include <string_view>

namespace talvix {

// The one place where our UTF-16 text and Windows' wide characters are taken for each other: both
// are 16-bit units on Windows.
static_assert(sizeof(wchar_t) == sizeof(char16_t));

/// A NUL-ended wide string that lives as long as the text.
inline const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
/// A NUL-ended copy of a name; only a long one needs memory.
class EndedName {
public:
    explicit EndedName(std::u16string_view name) {
        if (name.size() < short_.size()) {
            name.copy(short_.data(), name.size());
            short_[name.size()] = u'\0';
        } else {
            long_ = name;
        }
    }
    EndedName(const EndedName&) = delete;
    EndedName& operator=(const EndedName&) = delete;
    wchar_t* Get() {
        return reinterpret_cast<wchar_t*>(long_.empty() ? short_.data() : long_.data());
    }

private:
    std::array<char16_t, 40> short_;
    std::u16string long_;
};
/// Writable units of a text that Windows is to fill.
inline wchar_t* WideBuffer(std::u16string& text) {
    return reinterpret_cast<wchar_t*>(text.data());
}
/// Units without a closing NUL.
inline const wchar_t* WideUnits(std::u16string_view text) {
    return reinterpret_cast<const wchar_t*>(text.data());
}
inline std::u16string_view Text(std::wstring_view wide) {
    return {reinterpret_cast<const char16_t*>(wide.data()), wide.size()};
}
/// Text of a NUL-ended string; "" for null.
inline std::u16string TextOf(const wchar_t* wide) {
    return wide == nullptr ? std::u16string() : std::u16string(Text(wide));
}

} // namespace talvix
