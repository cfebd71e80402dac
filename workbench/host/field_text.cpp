#include "workbench/host/field_text.h"

#include "automation/coercion.h"
#include "automation/dates.h"
#include "automation/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace talvix::host {

namespace {

bool IsCarried(std::u16string_view text, std::size_t at) {
    const char16_t unit = text[at];
    const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
    const bool isLow = unit >= 0xDC00 && unit < 0xE000;
    if (isHigh) {
        return at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
    }
    if (isLow) {
        return at > 0 && text[at - 1] >= 0xD800 && text[at - 1] < 0xDC00;
    }
    // A blank at an end could be taken for layout.
    const bool isOuterBlank = unit == u' ' && (at == 0 || at + 1 == text.size());
    return unit >= u' ' && unit != u'\\' && unit != 0xFFFE && unit != 0xFFFF && !isOuterBlank;
}

std::u16string NumberText(double number) {
    char digits[40]{};
    std::snprintf(digits, sizeof digits, "%.17g", number);
    std::replace(digits, digits + sizeof digits, ',', '.');
    return FromUtf8(digits);
}

} // namespace

std::u16string EscapeText(std::u16string_view text) {
    std::u16string escaped;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (IsCarried(text, at)) {
            escaped += text[at];
            continue;
        }
        escaped += text[at] == u'\\' ? u"\\\\" : u"\\u" + HexText(text[at]).substr(4);
    }
    return escaped;
}

std::optional<std::u16string> UnescapeText(std::u16string_view text) {
    std::u16string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != u'\\') {
            plain += text[at];
        } else if (text.substr(at, 2) == u"\\\\") {
            plain += u'\\';
            ++at;
        } else {
            unsigned code = 0;
            const std::string digits = ToUtf8(text.substr(std::min(at + 2, text.size()), 4));
            const bool isHex =
                digits.size() == 4 &&
                digits.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
            if (text.substr(at, 2) != u"\\u" || !isHex ||
                std::sscanf(digits.c_str(), "%4x", &code) != 1) {
                return std::nullopt;
            }
            plain += static_cast<char16_t>(code);
            at += 5;
        }
    }
    return plain;
}

std::optional<FieldText> WriteFieldText(const Value& value) {
    if (const auto* text = value.If<std::u16string>()) {
        return FieldText{u"text", EscapeText(*text)};
    }
    if (const auto* truth = value.If<bool>()) {
        return FieldText{u"bool", *truth ? u"1" : u"0"};
    }
    if (const auto* date = value.If<Date>()) {
        const std::u16string text = IsoText(*date);
        return text.empty() ? std::nullopt : std::optional(FieldText{u"date", text});
    }
    const auto number = NumericContent(value);
    if (!number) {
        return std::nullopt;
    }
    const bool isLong = std::fabs(*number) <= INT32_MAX && *number == std::trunc(*number);
    return isLong ? FieldText{u"long", DecimalText(static_cast<long long>(*number))}
                  : FieldText{u"double", NumberText(*number)};
}

std::optional<Value> ReadFieldText(const FieldText& field) {
    if (field.kind == u"text") {
        auto text = UnescapeText(field.text);
        return text ? std::optional<Value>(std::move(*text)) : std::nullopt;
    }
    if (field.kind == u"date") {
        const auto date = ReadIsoText(field.text);
        return date ? std::optional<Value>(*date) : std::nullopt;
    }
    const auto number = PlainNumber(field.text);
    if (!number) {
        return std::nullopt;
    }
    if (field.kind == u"double") {
        return Value(*number);
    }
    if (field.kind == u"bool") {
        return Value(*number != 0);
    }
    const bool isLong =
        field.kind == u"long" && std::fabs(*number) <= INT32_MAX && *number == std::trunc(*number);
    return isLong ? std::optional<Value>(static_cast<std::int32_t>(*number)) : std::nullopt;
}

} // namespace talvix::host
