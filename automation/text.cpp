#include "automation/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace talvix {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char32_t NextCodePoint(std::u16string_view text, std::size_t& at) {
    const char16_t unit = text[at++];
    if (IsHighSurrogate(unit) && at < text.size() && IsLowSurrogate(text[at])) {
        const char32_t high = static_cast<char32_t>(unit - 0xD800) << 10U;
        return 0x10000 + high + static_cast<char32_t>(text[at++] - 0xDC00);
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kReplacement : unit;
}

void AppendUtf8(std::string& bytes, char32_t point) {
    const auto tail = [&](unsigned shift) {
        bytes += static_cast<char>(0x80U | ((point >> shift) & 0x3FU));
    };
    if (point < 0x80) {
        bytes += static_cast<char>(point);
    } else if (point < 0x800) {
        bytes += static_cast<char>(0xC0U | (point >> 6U));
        tail(0);
    } else if (point < 0x10000) {
        bytes += static_cast<char>(0xE0U | (point >> 12U));
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xF0U | (point >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

char32_t NextUtf8(std::string_view text, std::size_t& at) {
    static constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || at + length > text.size()) {
        ++at;
        return kReplacement;
    }
    char32_t point = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t next = 1; next < length; ++next) {
        const auto byte = static_cast<unsigned char>(text[at + next]);
        if ((byte & 0xC0U) != 0x80) {
            ++at;
            return kReplacement;
        }
        point = (point << 6U) | (byte & 0x3FU);
    }
    at += length;
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    return point < smallest[length] || point > 0x10FFFF || surrogate ? kReplacement : point;
}

bool NarrowPlain(std::u16string_view text, std::string& narrow) {
    for (const char16_t unit : text) {
        if (unit > 0x7E) {
            return false;
        }
        narrow += static_cast<char>(unit);
    }
    return true;
}

} // namespace

std::u16string_view Trim(std::u16string_view text) {
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == std::u16string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::u16string_view Left(std::u16string_view text, std::size_t count) {
    return text.substr(0, count);
}

std::u16string_view Mid(std::u16string_view text, std::size_t start) {
    return start == 0 || start > text.size() ? std::u16string_view() : text.substr(start - 1);
}

std::u16string Replace(std::u16string_view text, std::u16string_view what,
                       std::u16string_view with) {
    std::u16string result;
    std::size_t from = 0;
    while (!what.empty()) {
        const std::size_t found = text.find(what, from);
        if (found == std::u16string_view::npos) {
            break;
        }
        result.append(text.substr(from, found - from)).append(with);
        from = found + what.size();
    }
    return result.append(text.substr(from));
}

std::u16string DecimalText(long long number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

std::u16string PaddedText(int number, std::size_t width) {
    const std::u16string digits = DecimalText(number);
    return std::u16string(width - std::min(width, digits.size()), u'0') + digits;
}

std::u16string HexText(std::uint32_t number) {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::u16string text;
    for (unsigned shift = 32; shift > 0; shift -= 4) {
        text += kDigits[(number >> (shift - 4)) & 0xFU];
    }
    return text;
}

double LeadingNumber(std::u16string_view text) {
    text = Trim(text);
    if (!text.empty() && text.front() == u'+') {
        text.remove_prefix(1);
    }
    std::string narrow;
    NarrowPlain(text.substr(0, text.find_first_not_of(u"-.0123456789")), narrow);
    double number = 0;
    std::from_chars(narrow.data(), narrow.data() + narrow.size(), number);
    return number;
}

std::optional<double> PlainNumber(std::u16string_view text) {
    text = Trim(text);
    std::string narrow;
    if (text.empty() || !NarrowPlain(text, narrow)) {
        return std::nullopt;
    }
    const char* begin = narrow.data() + (narrow.front() == '+' ? 1 : 0);
    const char* end = narrow.data() + narrow.size();
    double number = 0;
    const auto [stop, error] = std::from_chars(begin, end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

bool SameName(std::u16string_view left, std::u16string_view right) {
    if (left.size() != right.size()) {
        return false;
    }
    for (std::size_t at = 0; at < left.size(); ++at) {
        if (left[at] != right[at] && FoldAscii(left[at]) != FoldAscii(right[at])) {
            return false;
        }
    }
    return true;
}

std::size_t UnitHash(std::u16string_view text, char16_t always) {
    using Word = std::size_t; // what the processor multiplies at once
    constexpr auto kFactor = static_cast<Word>(0x9E3779B97F4A7C15ULL);
    constexpr std::size_t kStep = sizeof(Word) / sizeof(char16_t);
    constexpr unsigned kHalf = sizeof(Word) * 4;
    const auto mask = static_cast<Word>(always * 0x0001000100010001ULL);
    Word hash = text.size() * kFactor;
    const auto mix = [&](Word block) {
        hash = (hash ^ block) * kFactor;
        hash ^= hash >> (kHalf - 3);
    };
    std::size_t at = 0;
    for (; at + kStep <= text.size(); at += kStep) {
        Word block = 0;
        std::memcpy(&block, text.data() + at, sizeof block);
        mix(block | mask);
    }
    for (; at < text.size(); ++at) {
        mix(static_cast<Word>(text[at]) | always);
    }
    return static_cast<std::uint32_t>(hash ^ (hash >> kHalf));
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        AppendUtf8(bytes, NextCodePoint(text, at));
    }
    return bytes;
}

std::u16string FromUtf8(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t point = NextUtf8(text, at);
        if (point < 0x10000) {
            units += static_cast<char16_t>(point);
        } else {
            units += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10U));
            units += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FFU));
        }
    }
    return units;
}

} // namespace talvix
