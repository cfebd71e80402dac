#pragma once

#include "automation/late_object.h"

#include <array>

namespace talvix {

/// A link of a late-bound chain: `Late{item}[u"GetInspector"](u"Controls", u"DMSGrid")`. A link on
/// something that is no object raises Failure.
class Late {
public:
    Late() = default;
    explicit Late(Value value) : value_(std::move(value)) {}

    /// Property or method without arguments.
    Late operator[](std::u16string_view name) const;
    /// Property or method with arguments.
    template <typename... Args>
    Late operator()(std::u16string_view name, Args&&... args) const {
        return Late(Call(name, std::forward<Args>(args)...));
    }
    template <typename... Args>
    Value Call(std::u16string_view name, Args&&... args) const {
        const std::array<Value, sizeof...(Args)> values{Value(std::forward<Args>(args))...};
        return CallWith(name, values);
    }
    Value CallWith(std::u16string_view name, std::span<const Value> values) const;
    /// Puts a property without arguments. An object is put by reference first, then by value.
    void Set(std::u16string_view name, const Value& value) const;
    /// Puts a property with one argument, such as a row's cell.
    void SetAt(std::u16string_view name, Value argument, Value value) const;
    /// Puts a property with arguments; the new value comes last.
    void Put(std::u16string_view name, std::span<const Value> values) const;

    const Value& Get() const { return value_; }
    /// The object; Failure when there is none.
    Object AsObject() const;
    explicit operator bool() const { return !value_.IsNothing(); }

private:
    Value value_;
};

} // namespace talvix
