#include "tests/fakes/fake_culture.h"

#include "automation/dates.h"
#include "automation/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace talvix {

namespace {

char16_t Upper(char16_t unit) {
    if (unit >= u'a' && unit <= u'z') {
        return static_cast<char16_t>(unit - 32);
    }
    if (unit == 0xFF) {
        return 0x178;
    }
    if (unit >= 0xE0 && unit <= 0xFE && unit != 0xF7) {
        return static_cast<char16_t>(unit - 32);
    }
    if ((unit >= 0x3B1 && unit <= 0x3C9 && unit != 0x3C2) || (unit >= 0x430 && unit <= 0x44F)) {
        return static_cast<char16_t>(unit - 32);
    }
    return unit;
}

/// Umlauts sort with their base letters, behind them where all else is equal.
char16_t Base(char16_t upper) {
    switch (upper) {
    case u'Ä':
        return u'A';
    case u'Ö':
        return u'O';
    case u'Ü':
        return u'U';
    case u'ß':
        return u'S';
    default:
        return upper;
    }
}

} // namespace

std::u16string FakeCulture::UpperCase(std::u16string_view text) const {
    std::u16string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

std::u16string FakeCulture::LowerCase(std::u16string_view text) const {
    std::u16string lower(text);
    for (char16_t& unit : lower) {
        for (char16_t small = u'a'; small <= u'\u00FE'; ++small) {
            if (unit != small && Upper(small) == unit) {
                unit = small;
                break;
            }
        }
    }
    return lower;
}

std::string FakeCulture::SortKey(std::u16string_view text) const {
    const std::u16string upper = UpperCase(text);
    std::string primary;
    std::string secondary;
    for (const char16_t unit : upper) {
        const char16_t base = Base(unit);
        primary += static_cast<char>(base >> 8U);
        primary += static_cast<char>(base & 0xFFU);
        secondary += base == unit ? '\1' : '\2';
    }
    return primary + std::string(2, '\0') + secondary;
}

std::u16string FakeCulture::DateText(Date date) const {
    const auto time = ToCivilTime(date);
    if (!time) {
        return {};
    }
    char text[64];
    std::snprintf(text, sizeof text, "%02d.%02d.%04d", time->day, time->month, time->year);
    std::u16string result = FromUtf8(text);
    if (time->hour != 0 || time->minute != 0 || time->second != 0) {
        std::snprintf(text, sizeof text, " %02d:%02d:%02d", time->hour, time->minute, time->second);
        result += FromUtf8(text);
    }
    return result;
}

std::optional<Date> FakeCulture::ReadDate(std::u16string_view text) const {
    int day = 0;
    int month = 0;
    int year = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    const int read = std::sscanf(ToUtf8(text).c_str(), "%d.%d.%d %d:%d:%d", &day, &month, &year,
                                 &hour, &minute, &second);
    const bool plausible = read >= 3 && day >= 1 && day <= 31 && month >= 1 && month <= 12 &&
                           year >= 100 && year <= 9999 && hour >= 0 && hour < 24;
    return plausible ? std::optional(ToDate({year, month, day, hour, minute, second}))
                     : std::nullopt;
}

std::u16string FakeCulture::NumberText(double number) const {
    char digits[40];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    std::u16string text(digits, end);
    std::replace(text.begin(), text.end(), u'.', u',');
    return text;
}

std::optional<double> FakeCulture::ReadNumber(std::u16string_view text) const {
    return PlainNumber(Replace(Replace(text, u".", u""), u",", u"."));
}

std::u16string FakeCulture::GroupedText(double number) const {
    const auto whole = static_cast<long long>(std::round(std::fabs(number)));
    if (whole == 0) {
        return {};
    }
    std::u16string digits = DecimalText(whole);
    for (std::size_t at = digits.size(); at > 3; at -= 3) {
        digits.insert(at - 3, u".");
    }
    return number < 0 ? u"-" + digits : digits;
}

} // namespace talvix
