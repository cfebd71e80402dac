#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace talvix {

class LateObject;
class Value;

/// Shared automation object; an empty pointer is "Nothing".
using Object = std::shared_ptr<LateObject>;
/// An automation array, read only. Arrays of several dimensions are lists of lists.
using List = std::shared_ptr<const std::vector<Value>>;

struct Empty {
    auto operator<=>(const Empty&) const = default;
};
struct Null {
    auto operator<=>(const Null&) const = default;
};
/// An optional argument that was left out.
struct Missing {
    auto operator<=>(const Missing&) const = default;
};
/// Days since 30 December 1899, the fraction is the time of day.
struct Date {
    double days = 0;
    auto operator<=>(const Date&) const = default;
};
/// Fixed-point money, scaled by 10,000.
struct Currency {
    std::int64_t scaled = 0;
    auto operator<=>(const Currency&) const = default;
};
/// An error value carried as data (not a raised failure). Its copy is written out because libstdc++
/// 12 takes a variant of plain kinds, texts and shared pointers for one that always has a value:
/// when the copy of a text ran out of memory, it would destroy what is not there.
struct ErrorCode { // NOLINT(cppcoreguidelines-special-member-functions)
    ErrorCode() = default;
    ErrorCode(std::int32_t code) noexcept : number(code) {} // NOLINT(google-explicit-constructor)
    // NOLINTNEXTLINE(modernize-use-equals-default)
    ErrorCode(const ErrorCode& other) noexcept : number(other.number) {}
    ErrorCode& operator=(const ErrorCode& other) noexcept = default;

    std::int32_t number = 0;
    auto operator<=>(const ErrorCode&) const = default;
};

/// One automation value. The set of kinds is closed: what comes from outside is mapped onto it at
/// the edge, and no C++ type slips in by conversion.
class Value {
public:
    using Storage = std::variant<Empty, Null, Missing, bool, std::uint8_t, std::int16_t,
                                 std::int32_t, std::int64_t, float, double, Currency, Date,
                                 std::u16string, Object, List, ErrorCode>;

    // NOLINTBEGIN(google-explicit-constructor): a value of each kind is meant to be written as it
    // is.
    Value() = default;
    Value(Empty) {}
    Value(Null value) : storage_(value) {}
    Value(Missing value) : storage_(value) {}
    Value(bool value) : storage_(value) {}
    Value(std::uint8_t value) : storage_(value) {}
    Value(std::int16_t value) : storage_(value) {}
    Value(std::int32_t value) : storage_(value) {}
    Value(std::int64_t value) : storage_(value) {}
    Value(float value) : storage_(value) {}
    Value(double value) : storage_(value) {}
    Value(Currency value) : storage_(value) {}
    Value(Date value) : storage_(value) {}
    Value(std::u16string value) : storage_(std::move(value)) {}
    Value(std::u16string_view value) : storage_(std::u16string(value)) {}
    Value(const char16_t* value) : storage_(std::u16string(value)) {}
    Value(Object value) : storage_(std::move(value)) {}
    Value(List value) : storage_(std::move(value)) {}
    Value(const ErrorCode& value) : storage_(value) {}
    template <typename Derived>
    requires std::derived_from<Derived, LateObject> Value(std::shared_ptr<Derived> value)
        : storage_(Object(std::move(value))) {}
    template <typename Other>
    Value(Other) = delete;
    // NOLINTEND(google-explicit-constructor)

    template <typename Kind>
    bool Is() const {
        return std::holds_alternative<Kind>(storage_);
    }
    template <typename Kind>
    const Kind* If() const {
        return std::get_if<Kind>(&storage_);
    }
    const Storage& Content() const { return storage_; }

    /// True for Empty, and for arguments that were left out.
    bool IsAbsent() const { return Is<Empty>() || Is<Missing>(); }
    /// True for an object variable without an object, and for Empty, Null and Missing.
    bool IsNothing() const;
    /// Takes text over into the buffer that an earlier text of this value has left.
    void AssignText(std::u16string_view text);

    /// Same kind and same content; objects are compared by identity.
    bool operator==(const Value& other) const = default;

private:
    Storage storage_;
};

/// Nothing: an object variable that refers to no object.
inline Value Nothing() {
    return Value(Object());
}

} // namespace talvix
