#include "workbench/host/message_storage.h"

#include "automation/text.h"

#include <cstdint>
#include <tuple>

namespace talvix::host {

namespace {

// Property types, the lower half of a property's tag.
constexpr std::uint32_t kInteger = 0x0003;
constexpr std::uint32_t kTime = 0x0040;
constexpr std::uint32_t kText = 0x001F;
constexpr std::uint32_t kBinary = 0x0102;

constexpr std::uint32_t kReadAndWrite = 6;
constexpr std::size_t kHeadOfMessage = 8;            // reserved bytes before the counts
constexpr std::int64_t kSecondsTo1970 = 11644473600; // from 1601
constexpr std::int64_t kTicksPerSecond = 10000000;
constexpr std::int64_t kUtf8 = 65001;

void AppendNumber(std::string& bytes, std::uint64_t number, int count) {
    for (int at = 0; at < count; ++at) {
        bytes += static_cast<char>((number >> (8U * static_cast<unsigned>(at))) & 0xFFU);
    }
}

/// A storage with its table of properties.
class PropertyStorage {
public:
    /// `head` stands before the table.
    explicit PropertyStorage(std::string head) : table_(std::move(head)) {}

    void Integer(std::uint32_t id, std::int64_t value) {
        Entry((id << 16U) | kInteger, static_cast<std::uint64_t>(value) & 0xFFFFFFFFU);
    }
    /// Seconds since 1970.
    void Time(std::uint32_t id, std::int64_t seconds) {
        Entry((id << 16U) | kTime,
              static_cast<std::uint64_t>((seconds + kSecondsTo1970) * kTicksPerSecond));
    }
    /// An empty text is left out.
    void Text(std::uint32_t id, std::u16string_view text) {
        if (text.empty()) {
            return;
        }
        std::string bytes;
        for (const char16_t unit : text) {
            AppendNumber(bytes, unit, 2);
        }
        Stream((id << 16U) | kText, std::move(bytes), sizeof(char16_t));
    }
    void Binary(std::uint32_t id, std::string bytes) {
        Stream((id << 16U) | kBinary, std::move(bytes), 0);
    }
    void Add(std::u16string name, MessageStorage storage) {
        storage.name = std::move(name);
        storage_.storages.push_back(std::move(storage));
    }
    MessageStorage Finish() {
        storage_.streams.emplace_back(u"__properties_version1.0", std::move(table_));
        return std::move(storage_);
    }

private:
    void Entry(std::uint32_t tag, std::uint64_t value) {
        AppendNumber(table_, tag, 4);
        AppendNumber(table_, kReadAndWrite, 4);
        AppendNumber(table_, value, 8);
    }
    /// The length in the table counts a text's closing NUL, which the stream does not hold.
    void Stream(std::uint32_t tag, std::string bytes, std::size_t closing) {
        Entry(tag, bytes.size() + closing);
        storage_.streams.emplace_back(u"__substg1.0_" + HexText(tag), std::move(bytes));
    }

    std::string table_;
    MessageStorage storage_;
};

std::u16string Shown(const MailAddress& address) {
    return address.name.empty() ? address.address : address.name;
}

std::u16string ShownList(const std::vector<MailAddress>& addresses) {
    std::u16string text;
    for (const MailAddress& each : addresses) {
        text += (text.empty() ? u"" : u"; ") + Shown(each);
    }
    return text;
}

MessageStorage Recipient(const MailAddress& address, std::int64_t kind, std::int64_t number) {
    PropertyStorage recipient(std::string(8, '\0'));
    recipient.Integer(0x0C15, kind);   // PR_RECIPIENT_TYPE
    recipient.Integer(0x3000, number); // PR_ROWID
    recipient.Integer(0x0FFE, 6);      // PR_OBJECT_TYPE: a user
    recipient.Text(0x3001, Shown(address));
    recipient.Text(0x3002, u"SMTP");
    recipient.Text(0x3003, address.address);
    return recipient.Finish();
}

MessageStorage Attachment(const MailAttachment& attachment, std::int64_t number) {
    PropertyStorage made(std::string(8, '\0'));
    const std::size_t dot = attachment.fileName.rfind(u'.');
    made.Integer(0x0E21, number); // PR_ATTACH_NUM
    made.Integer(0x3705, 1);      // PR_ATTACH_METHOD: the file itself
    made.Integer(0x370B, -1);     // PR_RENDERING_POSITION: not in the text
    made.Integer(0x0FFE, 7);      // PR_OBJECT_TYPE: an attachment
    made.Text(0x3001, attachment.fileName);
    made.Text(0x3704, attachment.fileName);
    made.Text(0x3707, attachment.fileName);
    made.Text(0x3703, dot == std::u16string::npos ? u"" : attachment.fileName.substr(dot));
    made.Text(0x370E, attachment.mediaType);
    made.Binary(0x3701, attachment.content);
    return made.Finish();
}

/// Reserved, next recipient, next attachment, both counts, reserved.
std::string HeadOf(const Mail& mail) {
    const std::size_t recipients = mail.to.size() + mail.cc.size();
    std::string head(kHeadOfMessage, '\0');
    for (int run = 0; run < 2; ++run) {
        AppendNumber(head, recipients, 4);
        AppendNumber(head, mail.attachments.size(), 4);
    }
    head.append(8, '\0');
    return head;
}

void AddSender(PropertyStorage& message, const MailAddress& from) {
    for (const auto& [name, type, address] :
         {std::tuple(0x0C1AU, 0x0C1EU, 0x0C1FU), std::tuple(0x0042U, 0x0064U, 0x0065U)}) {
        message.Text(name, Shown(from));
        message.Text(type, u"SMTP");
        message.Text(address, from.address);
    }
}

void AddText(PropertyStorage& message, const Mail& mail) {
    constexpr std::int64_t kRead = 1;
    constexpr std::int64_t kHasAttachments = 0x10;
    message.Integer(0x340D, 0x00040000); // PR_STORE_SUPPORT_MASK: texts are Unicode
    message.Integer(0x0E07, mail.attachments.empty() ? kRead : kRead | kHasAttachments);
    message.Text(0x001A, u"IPM.Note");
    message.Text(0x0037, mail.subject);
    message.Text(0x0070, mail.subject);
    message.Text(0x0E04, ShownList(mail.to));
    message.Text(0x0E03, ShownList(mail.cc));
    message.Text(0x007D, mail.headers);
    message.Text(0x1000, mail.text);
    if (!mail.html.empty()) {
        message.Integer(0x3FDE, kUtf8);
        message.Binary(0x1013, ToUtf8(mail.html));
    }
    if (mail.sent) {
        message.Time(0x0039, *mail.sent);
        message.Time(0x0E06, *mail.sent);
    }
}

void AddRecipients(PropertyStorage& message, const Mail& mail) {
    std::uint32_t number = 0;
    for (const auto& [list, kind] : {std::pair(&mail.to, 1), std::pair(&mail.cc, 2)}) {
        for (const MailAddress& each : *list) {
            message.Add(u"__recip_version1.0_#" + HexText(number), Recipient(each, kind, number));
            ++number;
        }
    }
}

} // namespace

MessageStorage ToMessageStorage(const Mail& mail) {
    PropertyStorage message(HeadOf(mail));
    AddText(message, mail);
    if (mail.from) {
        AddSender(message, *mail.from);
    }
    AddRecipients(message, mail);
    std::uint32_t number = 0;
    for (const MailAttachment& each : mail.attachments) {
        message.Add(u"__attach_version1.0_#" + HexText(number), Attachment(each, number));
        ++number;
    }
    // The table of named properties has to be there, empty as it is.
    MessageStorage names;
    for (const auto* stream : {u"00020102", u"00030102", u"00040102"}) {
        names.streams.emplace_back(u"__substg1.0_" + std::u16string(stream), "");
    }
    message.Add(u"__nameid_version1.0", std::move(names));
    return message.Finish();
}

} // namespace talvix::host
