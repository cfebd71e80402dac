#pragma once

#include "automation/culture.h"
#include "automation/late_object.h"
#include "workbench/host/mail.h"

#include <functional>
#include <memory>

namespace talvix::host {

/// How a mail item and its attachments get onto the disk.
struct MailFiling {
    /// Writes the mail as an Outlook message (".msg").
    std::function<void(const Mail& mail, std::u16string_view path)> saveMessage;
    std::function<void(std::u16string_view path, std::string_view content)> saveFile;
};

/// A mail as an object with the members of a mail item that filing asks for: attachments can be
/// deleted from it, and `Close(1)` discards that.
Object MakeMailItem(const Mail& mail, MailFiling filing, const Culture& culture);

} // namespace talvix::host
