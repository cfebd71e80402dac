#include "automation/failure.h"
#include "fuzz/fuzz.h"
#include "workbench/host/message_storage.h"
#include "workbench/host/mime_reader.h"

using namespace talvix;

/// Whatever stands in a mail file, it is read or refused; what was read can be stored.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string message(data, data + size);
    try {
        const host::Mail mail = host::ReadMime(message);
        std::size_t content = mail.text.size();
        for (const host::MailAttachment& each : mail.attachments) {
            content += each.content.size();
            Require(!each.fileName.empty());
        }
        Require(content <= size);
        host::ToMessageStorage(mail);
    } catch (const Failure&) {
        return 0;
    }
    return 0;
}
