#pragma once

#include "automation/culture.h"

namespace talvix {

// The usual conversions of automation values. Objects give their default member. What has no
// meaning in the wanted kind raises Failure (type mismatch); what does not fit raises overflow.

/// Empty and Null give ""; Booleans "True" and "False"; dates and numbers the user's form.
std::u16string ToText(const Value& value, const Culture& culture);
/// Text is read in the user's form; Empty is 0.
double ToNumber(const Value& value, const Culture& culture);
/// Halves are rounded to even numbers, as automation does.
std::int32_t ToLong(const Value& value, const Culture& culture);
/// Numbers other than 0 are true; the texts "True" and "False" are read without case.
bool ToBoolean(const Value& value, const Culture& culture);
Date ToDateValue(const Value& value, const Culture& culture);

/// The number in a numeric, Boolean or date value; nothing for every other kind, text included.
std::optional<double> NumericContent(const Value& value);

} // namespace talvix
