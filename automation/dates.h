#pragma once

#include "automation/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace talvix {

/// A moment of the calendar in local time.
struct CivilTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    auto operator<=>(const CivilTime&) const = default;
};

/// The automation date of a calendar moment. Days before 30 December 1899 are negative and their
/// time of day still counts forward, as automation has it.
Date ToDate(const CivilTime& time);
/// The calendar moment, rounded to the second; nothing outside the years 100 to 9999.
std::optional<CivilTime> ToCivilTime(Date date);

/// "2003-12-31 14:05:00", the form for files and exchange; empty for a date out of range.
std::u16string IsoText(Date date);
/// Reads IsoText's form, with or without the time; nothing for anything else.
std::optional<Date> ReadIsoText(std::u16string_view text);

} // namespace talvix
