#pragma once

#include "automation/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace talvix::host {

/// A field's value in a project file: a kind and a text. Dates stand as "2003-12-31 14:05:00",
/// numbers in plain form; characters that XML cannot carry or would change stand as "\uXXXX", "\"
/// as "\\".
struct FieldText {
    std::u16string kind; ///< "text", "long", "date", "double" or "bool"
    std::u16string text;
};

/// Nothing for values that a project file does not keep (objects, lists, Empty).
std::optional<FieldText> WriteFieldText(const Value& value);
/// Nothing for an unknown kind or a text that is not of its kind.
std::optional<Value> ReadFieldText(const FieldText& field);

std::u16string EscapeText(std::u16string_view text);
/// Nothing for a text with a malformed escape.
std::optional<std::u16string> UnescapeText(std::u16string_view text);

} // namespace talvix::host
