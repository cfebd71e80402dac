#include "automation/late.h"

#include "automation/failure.h"

namespace talvix {

Late Late::operator[](std::u16string_view name) const {
    return Late(CallWith(name, {}));
}

Value Late::CallWith(std::u16string_view name, std::span<const Value> values) const {
    const Object called = AsObject(); // whoever is called may have it let go of meanwhile
    return InvokeByName(*called, name, access::kCall, {values, {}});
}

void Late::Set(std::u16string_view name, const Value& value) const {
    Put(name, std::span<const Value>(&value, 1));
}

void Late::SetAt(std::u16string_view name, Value argument, Value value) const {
    const std::array<Value, 2> values{std::move(argument), std::move(value)};
    Put(name, values);
}

Object Late::AsObject() const {
    const auto* object = value_.If<Object>();
    if (object == nullptr || *object == nullptr) {
        throw Failure(failure_number::kNoObject, u"Object variable not set");
    }
    return *object;
}

void Late::Put(std::u16string_view name, std::span<const Value> values) const {
    const Object called = AsObject();
    if (values.back().Is<Object>()) {
        try {
            InvokeByName(*called, name, access::kPutReference, {values, {}});
            return;
        } catch (const Failure& failure) {
            if (failure.Number() == failure_number::kUnknownName) {
                throw;
            }
        }
    }
    InvokeByName(*called, name, access::kPut, {values, {}});
}

} // namespace talvix
