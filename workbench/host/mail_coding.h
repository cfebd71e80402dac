#pragma once

#include <string>
#include <string_view>

namespace talvix::host {

// The codings of Internet mail (RFC 2045, 2047, 2231). What is malformed is taken as far as it
// goes.

/// Characters outside the alphabet are passed over.
std::string DecodeBase64(std::string_view text);
/// With `inHeader` an underscore is a blank.
std::string DecodeQuotedPrintable(std::string_view text, bool inHeader = false);
/// "%41" becomes "A".
std::string DecodePercent(std::string_view text);
/// Text of a character set; one that is not known is taken for Windows-1252, UTF-8 that is none
/// too.
std::u16string DecodeCharset(std::string_view bytes, std::string_view charset);
/// A header's text with its encoded words decoded.
std::u16string DecodeHeader(std::string_view text);

/// Equality without ASCII case.
bool SameAscii(std::string_view left, std::string_view right);
std::string_view TrimAscii(std::string_view text);

} // namespace talvix::host
