#pragma once

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
