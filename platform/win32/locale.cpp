#include "platform/win32/locale.h"

#include "platform/win32/com/bstr.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <oleauto.h>

#include <array>
#include <cmath>

namespace talvix {

namespace {

constexpr int kUserDefault = -2; // "as the user has set it", for the VarFormat family

} // namespace

std::u16string Win32Locale::UpperCase(std::u16string_view text) const {
    std::u16string upper(text);
    if (!upper.empty()) {
        CharUpperBuffW(WideBuffer(upper), static_cast<DWORD>(upper.size()));
    }
    return upper;
}

std::u16string Win32Locale::LowerCase(std::u16string_view text) const {
    std::u16string lower(text);
    if (!lower.empty()) {
        CharLowerBuffW(WideBuffer(lower), static_cast<DWORD>(lower.size()));
    }
    return lower;
}

std::string Win32Locale::SortKey(std::u16string_view text) const {
    if (text.empty()) {
        return {};
    }
    constexpr DWORD kFlags = LCMAP_SORTKEY | NORM_IGNORECASE;
    const auto units = static_cast<int>(text.size());
    // For sort keys the size is in bytes although the type says otherwise.
    std::array<char, 512> room; // NOLINT(cppcoreguidelines-pro-type-member-init): is filled
    int length =
        LCMapStringW(LOCALE_USER_DEFAULT, kFlags, WideUnits(text), units,
                     reinterpret_cast<wchar_t*>(room.data()), static_cast<int>(room.size()));
    if (length > 0) {
        return {room.data(), static_cast<std::size_t>(length)};
    }
    length = LCMapStringW(LOCALE_USER_DEFAULT, kFlags, WideUnits(text), units, nullptr, 0);
    std::string key(static_cast<std::size_t>(length), '\0');
    LCMapStringW(LOCALE_USER_DEFAULT, kFlags, WideUnits(text), units,
                 reinterpret_cast<wchar_t*>(key.data()), length);
    return key;
}

std::u16string Win32Locale::DateText(Date date) const {
    Bstr text;
    return SUCCEEDED(VarBstrFromDate(date.days, LOCALE_USER_DEFAULT, 0, text.Out()))
               ? text.Text()
               : std::u16string();
}

std::optional<Date> Win32Locale::ReadDate(std::u16string_view text) const {
    Date date;
    const std::u16string ended(text);
    const HRESULT result =
        VarDateFromStr(const_cast<wchar_t*>(Wide(ended)), LOCALE_USER_DEFAULT, 0, &date.days);
    return SUCCEEDED(result) ? std::optional(date) : std::nullopt;
}

std::u16string Win32Locale::NumberText(double number) const {
    Bstr text;
    return SUCCEEDED(VarBstrFromR8(number, LOCALE_USER_DEFAULT, 0, text.Out())) ? text.Text()
                                                                                : std::u16string();
}

std::optional<double> Win32Locale::ReadNumber(std::u16string_view text) const {
    double number = 0;
    const std::u16string ended(text);
    const HRESULT result =
        VarR8FromStr(const_cast<wchar_t*>(Wide(ended)), LOCALE_USER_DEFAULT, 0, &number);
    return SUCCEEDED(result) ? std::optional(number) : std::nullopt;
}

std::u16string Win32Locale::GroupedText(double number) const {
    VARIANT value{};
    value.vt = VT_R8;
    value.dblVal = std::round(number);
    if (value.dblVal == 0) {
        return {};
    }
    Bstr text;
    const HRESULT result =
        VarFormatNumber(&value, 0, kUserDefault, kUserDefault, -1, 0, text.Out());
    return SUCCEEDED(result) ? text.Text() : std::u16string();
}

} // namespace talvix
