#pragma once

#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "tests/fakes/expando.h"

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace talvix {

/// Writes a real file, replacing an earlier one.
inline void WriteRealFile(std::u16string_view path, std::string_view content) {
    const OwnedFile file(CreateFileW(Wide(std::u16string(path)), GENERIC_WRITE, 0, nullptr,
                                     CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
}

inline std::string ReadRealFile(std::u16string_view path) {
    const OwnedFile file(CreateFileW(Wide(std::u16string(path)), GENERIC_READ, FILE_SHARE_READ,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
    std::string content(1000, '\0');
    DWORD read = 0;
    ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    content.resize(read);
    return content;
}

/// An attachment: its name and what its file holds.
struct RealAttachment {
    std::u16string name;
    std::string content;
};

/// A mail whose saving writes real files.
inline std::shared_ptr<Expando> MakeSavingItem(const std::string& message,
                                               const std::vector<RealAttachment>& attachments) {
    auto item = std::make_shared<Expando>(u"MailItem");
    item->On(u"SaveAs", [message](std::span<const Value> arguments) -> Value {
        WriteRealFile(*arguments[0].If<std::u16string>(), message);
        return {};
    });
    item->With(u"Close", Empty());
    auto collection = std::make_shared<Expando>(u"Attachments");
    collection->With(u"count", static_cast<std::int32_t>(attachments.size()));
    collection->On(u"Item", [attachments](std::span<const Value> arguments) -> Value {
        const RealAttachment& attachment =
            attachments.at(static_cast<std::size_t>(*arguments[0].If<std::int32_t>() - 1));
        auto made = std::make_shared<Expando>(u"Attachment");
        made->With(u"FileName", attachment.name).With(u"Delete", Empty());
        made->On(u"SaveAsFile", [attachment](std::span<const Value> path) -> Value {
            WriteRealFile(*path[0].If<std::u16string>(), attachment.content);
            return {};
        });
        return made;
    });
    item->With(u"Attachments", collection);
    return item;
}

} // namespace talvix
