#pragma once

#include "workbench/host/mail.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace talvix::host {

/// A header field such as Content-Type: a value and named parameters, decoded.
struct HeaderValue {
    std::string value;
    std::vector<std::pair<std::string, std::u16string>> parameters;

    /// "" when there is no such parameter.
    std::u16string Parameter(std::string_view name) const;
};

/// The fields at the head of a message or part.
class MailHeader {
public:
    /// Takes the head off `message`, which then begins with the body.
    explicit MailHeader(std::string_view& message);

    bool IsEmpty() const { return fields_.empty(); }
    /// The first field of that name, unfolded; "" without one.
    std::string_view Field(std::string_view name) const;
    HeaderValue Structured(std::string_view name) const;
    std::vector<MailAddress> Addresses(std::string_view name) const;
    /// All fields as they stand.
    std::string_view Text() const { return text_; }

private:
    std::string_view text_;
    std::vector<std::pair<std::string, std::string>> fields_;
};

/// Seconds since 1970 of "Fri, 20 Nov 2026 10:15:00 +0100"; nothing for what is no date.
std::optional<std::int64_t> ReadMailDate(std::string_view text);

} // namespace talvix::host
