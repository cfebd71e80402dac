#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace talvix {

/// Without leading and trailing blanks (U+0020 only; tabs and line breaks stay).
std::u16string_view Trim(std::u16string_view text);
/// The first `count` characters; all of a shorter text, nothing for a count of 0.
std::u16string_view Left(std::u16string_view text, std::size_t count);
/// From the `start`-th character (counted from 1) to the end; empty when start is past the end.
std::u16string_view Mid(std::u16string_view text, std::size_t start);
/// Every occurrence of `what` replaced; an empty `what` replaces nothing.
std::u16string Replace(std::u16string_view text, std::u16string_view what,
                       std::u16string_view with);
/// Decimal digits with a sign where negative; never grouped.
std::u16string DecimalText(long long number);
/// Decimal digits of a number that is not negative, filled up with zeros to at least `width`.
std::u16string PaddedText(int number, std::size_t width);
/// Eight hexadecimal digits in capitals.
std::u16string HexText(std::uint32_t number);
/// The number that the text begins with: blanks, a sign, digits and a point are read, what follows
/// is ignored. 0 when the text begins otherwise.
double LeadingNumber(std::u16string_view text);
/// The whole text as a number in plain form ("-12.5e3"); nothing when anything else stands there.
std::optional<double> PlainNumber(std::u16string_view text);

/// ASCII letters lower-cased, all other characters as they are.
constexpr char16_t FoldAscii(char16_t character) {
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 32)
                                                  : character;
}
/// Equality without ASCII case: the rule for member names.
bool SameName(std::u16string_view left, std::u16string_view right);
/// A hash of a text, each of its units taken with the bits of `always` set.
std::size_t UnitHash(std::u16string_view text, char16_t always = 0);
/// A hash that is equal for names that differ in ASCII case only: capitals and small letters differ
/// in one bit.
inline std::size_t NameHash(std::u16string_view name) {
    return UnitHash(name, 0x20);
}

/// Unpaired surrogates become U+FFFD.
std::string ToUtf8(std::u16string_view text);
/// Malformed bytes become U+FFFD.
std::u16string FromUtf8(std::string_view text);

} // namespace talvix
