#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace talvix::host {

struct MailAddress {
    std::u16string name; ///< "" when only the address is told
    std::u16string address;
};

struct MailAttachment {
    std::u16string fileName;
    std::u16string mediaType; ///< "application/pdf"
    std::string content;
};

/// One mail, whatever it was read from.
struct Mail {
    std::u16string subject;
    std::optional<MailAddress> from;
    std::vector<MailAddress> to;
    std::vector<MailAddress> cc;
    std::optional<std::int64_t> sent; ///< seconds since 1 January 1970, UTC
    std::u16string text;              ///< the plain body
    std::u16string html;
    std::u16string headers; ///< as they were received
    std::vector<MailAttachment> attachments;
};

} // namespace talvix::host
