#pragma once

#include "workbench/host/mail.h"

#include <string_view>

namespace talvix::host {

/// Reads an Internet message (RFC 5322 with MIME), as ".eml" files hold it: bodies in text and
/// HTML, attachments with encoded names, nested parts. What is malformed is taken as far as it
/// goes. Raises Failure when the text does not begin with a header.
Mail ReadMime(std::string_view message);

} // namespace talvix::host
