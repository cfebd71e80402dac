#pragma once

#include "automation/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace talvix {

/// The user's language rules: case, order and the way numbers and dates are written. The system's
/// own on Windows, a fixed German one in tests.
class Culture {
public:
    virtual ~Culture() = default;

    /// Upper case, one unit for one unit (a sharp s stays as it is).
    virtual std::u16string UpperCase(std::u16string_view text) const = 0;
    /// Lower case, one unit for one unit.
    virtual std::u16string LowerCase(std::u16string_view text) const = 0;
    /// Bytes whose plain order is the order of texts without regard to case.
    virtual std::string SortKey(std::u16string_view text) const = 0;
    /// Short date, and the time after a blank where it is not midnight; empty for a date that the
    /// calendar does not reach (years 100 to 9999).
    virtual std::u16string DateText(Date date) const = 0;
    /// A date written in the user's form, or nothing.
    virtual std::optional<Date> ReadDate(std::u16string_view text) const = 0;
    /// Shortest form with the user's decimal sign, not grouped.
    virtual std::u16string NumberText(double number) const = 0;
    /// A number written in the user's form, or nothing.
    virtual std::optional<double> ReadNumber(std::u16string_view text) const = 0;
    /// Pattern "#,##": whole number, halves away from zero, grouped thousands; "" for 0.
    virtual std::u16string GroupedText(double number) const = 0;

    /// Equality without case by this culture's upper-casing.
    bool SameText(std::u16string_view left, std::u16string_view right) const;
};

/// `text` with every occurrence of `what` replaced, compared without case.
std::u16string ReplaceNoCase(const Culture& culture, std::u16string_view text,
                             std::u16string_view what, std::u16string_view with);

} // namespace talvix
