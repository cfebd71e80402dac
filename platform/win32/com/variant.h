#pragma once

#include "automation/value.h"

#include <windows.h>
#include <oleauto.h>

namespace talvix {

/// Owns an automation variant.
class Variant {
public:
    Variant() { VariantInit(&content_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&content_); }
    VARIANT* Get() { return &content_; }
    VARIANT* Out() {
        VariantClear(&content_);
        return &content_;
    }

private:
    VARIANT content_;
};

/// The value in a variant of any kind, by reference or not. Unsigned kinds become the smallest
/// signed kind that holds them, decimals doubles, null pointers Empty. Kinds without a meaning for
/// automation (records) raise Failure.
Value ToValue(const VARIANT& variant);
/// Fills `value` from a variant and reuses the memory of a text that it holds.
void AssignValue(Value& value, const VARIANT& variant);
/// Puts a value into a variant that is empty or uninitialised.
void ToVariant(const Value& value, VARIANT& variant);
/// Writes a value where a by-reference variant points to, converted to what is there. What cannot
/// be converted is left as it was.
void WriteBack(const Value& value, VARIANT& variant);

} // namespace talvix
