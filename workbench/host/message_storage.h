#pragma once

#include "workbench/host/mail.h"

#include <string>
#include <utility>
#include <vector>

namespace talvix::host {

/// A storage of a compound file: named streams and storages within it.
struct MessageStorage {
    std::u16string name; ///< "" for the outermost one
    std::vector<std::pair<std::u16string, std::string>> streams;
    std::vector<MessageStorage> storages;
};

/// The mail as an Outlook message stores it ([MS-OXMSG]): Unicode, sender, recipients, bodies,
/// dates and attachments.
MessageStorage ToMessageStorage(const Mail& mail);

} // namespace talvix::host
