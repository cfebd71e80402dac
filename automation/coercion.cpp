#include "automation/coercion.h"

#include "automation/failure.h"
#include "automation/late_object.h"
#include "automation/text.h"

#include <cmath>
#include <type_traits>

namespace talvix {

namespace {

constexpr std::int32_t kOverflow = static_cast<std::int32_t>(0x8002000A);
constexpr double kCurrencyScale = 10000;

[[noreturn]] void RaiseMismatch(std::u16string_view wanted) {
    throw Failure(failure_number::kTypeMismatch,
                  u"Type mismatch: " + std::u16string(wanted) + u" was expected");
}

/// The value itself, or what the default members lead to.
Value Plain(const Value& value) {
    Value plain = value;
    for (int depth = 0; depth < 8; ++depth) {
        const auto* object = plain.If<Object>();
        if (object == nullptr) {
            return plain;
        }
        if (*object == nullptr) {
            throw Failure(failure_number::kNoObject, u"Object variable not set");
        }
        const Object held = *object;
        plain = held->Invoke(kDefaultMember, access::kCall, {});
    }
    RaiseMismatch(u"a plain value");
}

template <typename Kind>
std::optional<double> NumberIn(const Kind& kind) {
    if constexpr (std::is_same_v<Kind, bool>) {
        return kind ? -1 : 0;
    } else if constexpr (std::is_arithmetic_v<Kind>) {
        return static_cast<double>(kind);
    } else if constexpr (std::is_same_v<Kind, Currency>) {
        return static_cast<double>(kind.scaled) / kCurrencyScale;
    } else if constexpr (std::is_same_v<Kind, Date>) {
        return kind.days;
    } else {
        return std::nullopt;
    }
}

} // namespace

std::optional<double> NumericContent(const Value& value) {
    return std::visit([](const auto& kind) { return NumberIn(kind); }, value.Content());
}

std::u16string ToText(const Value& value, const Culture& culture) {
    const Value plain = Plain(value);
    if (const auto* text = plain.If<std::u16string>()) {
        return *text;
    }
    if (plain.Is<Empty>() || plain.Is<Null>()) {
        return {};
    }
    if (const auto* truth = plain.If<bool>()) {
        return *truth ? u"True" : u"False";
    }
    if (const auto* date = plain.If<Date>()) {
        return culture.DateText(*date);
    }
    if (const auto* number = plain.If<std::int64_t>()) {
        return DecimalText(*number);
    }
    const auto number = NumericContent(plain);
    if (!number) {
        RaiseMismatch(u"text");
    }
    return culture.NumberText(*number);
}

double ToNumber(const Value& value, const Culture& culture) {
    const Value plain = Plain(value);
    if (const auto* text = plain.If<std::u16string>()) {
        const auto read = culture.ReadNumber(*text);
        if (!read) {
            RaiseMismatch(u"a number");
        }
        return *read;
    }
    if (plain.Is<Empty>()) {
        return 0;
    }
    const auto number = NumericContent(plain);
    if (!number) {
        RaiseMismatch(u"a number");
    }
    return *number;
}

std::int32_t ToLong(const Value& value, const Culture& culture) {
    if (const auto* number = value.If<std::int32_t>()) {
        return *number;
    }
    const double rounded = std::nearbyint(ToNumber(value, culture));
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
        throw Failure(kOverflow, u"The number does not fit into 32 bits");
    }
    return static_cast<std::int32_t>(rounded);
}

bool ToBoolean(const Value& value, const Culture& culture) {
    const Value plain = Plain(value);
    if (const auto* text = plain.If<std::u16string>()) {
        if (SameName(*text, u"True")) {
            return true;
        }
        if (SameName(*text, u"False")) {
            return false;
        }
    }
    return ToNumber(plain, culture) != 0;
}

Date ToDateValue(const Value& value, const Culture& culture) {
    const Value plain = Plain(value);
    if (const auto* text = plain.If<std::u16string>()) {
        const auto date = culture.ReadDate(*text);
        if (!date) {
            RaiseMismatch(u"a date");
        }
        return *date;
    }
    return Date{ToNumber(plain, culture)};
}

} // namespace talvix
