#include "automation/dates.h"

#include "automation/text.h"

#include <chrono>
#include <cmath>

namespace talvix {

namespace {

constexpr std::chrono::sys_days kDayZero{std::chrono::year{1899} / 12 / 30};
constexpr int kSecondsPerDay = 86400;
constexpr double kFirstDay = -657434; // 1 January 100
constexpr double kLastDay = 2958465;  // 31 December 9999

/// `count` digits at `at`, or -1.
int Digits(std::u16string_view text, std::size_t at, std::size_t count) {
    if (at + count > text.size()) {
        return -1;
    }
    int number = 0;
    for (const char16_t digit : text.substr(at, count)) {
        if (digit < u'0' || digit > u'9') {
            return -1;
        }
        number = number * 10 + (digit - u'0');
    }
    return number;
}

bool ReadDay(std::u16string_view text, CivilTime& time) {
    time.year = Digits(text, 0, 4);
    time.month = Digits(text, 5, 2);
    time.day = Digits(text, 8, 2);
    const std::chrono::year_month_day day{std::chrono::year{time.year},
                                          std::chrono::month{static_cast<unsigned>(time.month)},
                                          std::chrono::day{static_cast<unsigned>(time.day)}};
    return text.size() >= 10 && text[4] == u'-' && text[7] == u'-' && time.year >= 100 &&
           time.month > 0 && time.day > 0 && day.ok();
}

bool ReadTime(std::u16string_view text, CivilTime& time) {
    time.hour = Digits(text, 11, 2);
    time.minute = Digits(text, 14, 2);
    time.second = Digits(text, 17, 2);
    const bool separated = text.size() == 19 && (text[10] == u' ' || text[10] == u'T') &&
                           text[13] == u':' && text[16] == u':';
    return separated && time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 &&
           time.second >= 0 && time.second < 60;
}

} // namespace

Date ToDate(const CivilTime& time) {
    const std::chrono::sys_days day{std::chrono::year{time.year} / static_cast<int>(time.month) /
                                    static_cast<int>(time.day)};
    const auto days = static_cast<double>((day - kDayZero).count());
    const double fraction =
        static_cast<double>(time.hour * 3600 + time.minute * 60 + time.second) / kSecondsPerDay;
    return Date{days < 0 ? days - fraction : days + fraction};
}

std::optional<CivilTime> ToCivilTime(Date date) {
    if (!(date.days > kFirstDay - 1 && date.days < kLastDay + 1)) {
        return std::nullopt;
    }
    double days = std::trunc(date.days);
    auto seconds =
        static_cast<long long>(std::floor(std::fabs(date.days - days) * kSecondsPerDay + 0.5));
    if (seconds >= kSecondsPerDay) {
        seconds = 0;
        days += 1;
    }
    if (days < kFirstDay || days > kLastDay) {
        return std::nullopt;
    }
    const std::chrono::year_month_day day{kDayZero + std::chrono::days{static_cast<int>(days)}};
    const auto clock = static_cast<int>(seconds);
    return CivilTime{static_cast<int>(day.year()),
                     static_cast<int>(static_cast<unsigned>(day.month())),
                     static_cast<int>(static_cast<unsigned>(day.day())),
                     clock / 3600,
                     clock / 60 % 60,
                     clock % 60};
}

std::u16string IsoText(Date date) {
    const auto time = ToCivilTime(date);
    if (!time) {
        return {};
    }
    return PaddedText(time->year, 4) + u"-" + PaddedText(time->month, 2) + u"-" +
           PaddedText(time->day, 2) + u" " + PaddedText(time->hour, 2) + u":" +
           PaddedText(time->minute, 2) + u":" + PaddedText(time->second, 2);
}

std::optional<Date> ReadIsoText(std::u16string_view text) {
    CivilTime time;
    if (!ReadDay(text, time)) {
        return std::nullopt;
    }
    if (text.size() > 10 && !ReadTime(text, time)) {
        return std::nullopt;
    }
    return ToDate(time);
}

} // namespace talvix
