#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace talvix::grid {

/// A field of delimited text. A quoted field is text even when nothing stands between its quotes.
struct Field {
    std::u16string text;
    bool quoted = false;
};

/// Reads lines of fields: quotes double inside quoted fields, lines end with CR LF, LF or CR, a
/// last line end adds no line. Raises Failure with the line for a quote that is not closed or is
/// followed by more text. An empty text has no lines; an empty separator makes every line one
/// field.
std::vector<std::vector<Field>> ReadDelimited(std::u16string_view text,
                                              std::u16string_view separator);

/// Adds a field, quoted where its text would not be read back as it is.
void AppendField(std::u16string& out, const Field& field, std::u16string_view separator);

} // namespace talvix::grid
