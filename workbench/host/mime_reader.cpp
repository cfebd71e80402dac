#include "workbench/host/mime_reader.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "workbench/host/mail_coding.h"
#include "workbench/host/mail_header.h"

namespace talvix::host {

namespace {

constexpr int kDeepest = 30; ///< parts within parts; what lies deeper is passed over

std::string Decoded(std::string_view body, std::string_view coding) {
    if (SameAscii(coding, "base64")) {
        return DecodeBase64(body);
    }
    return SameAscii(coding, "quoted-printable") ? DecodeQuotedPrintable(body) : std::string(body);
}

/// The parts between the lines "--boundary"; an end that is missing ends with the text.
std::vector<std::string_view> Parts(std::string_view body, const std::string& boundary) {
    std::vector<std::string_view> parts;
    const std::string mark = "--" + boundary;
    std::size_t start = std::string_view::npos;
    for (std::size_t at = 0; at < body.size();) {
        const std::size_t end = std::min(body.find('\n', at), body.size() - 1) + 1;
        const std::string_view line = TrimAscii(body.substr(at, end - at));
        if (line == mark || line == mark + "--") {
            if (start != std::string_view::npos) {
                parts.push_back(body.substr(start, at - start));
            }
            start = line == mark ? end : std::string_view::npos;
        }
        at = end;
    }
    if (start != std::string_view::npos && start < body.size()) {
        parts.push_back(body.substr(start));
    }
    return parts;
}

/// The line break before a boundary belongs to the boundary.
std::string_view WithoutLastBreak(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    return text;
}

class MimeReader {
public:
    Mail Read(std::string_view message) {
        const MailHeader header(message);
        if (header.IsEmpty()) {
            throw Failure(failure_number::kInvalidArgument,
                          u"Die Datei ist keine E-Mail: Sie beginnt nicht mit Kopfzeilen.");
        }
        mail_.subject = DecodeHeader(header.Field("Subject"));
        const std::vector<MailAddress> from = header.Addresses("From");
        if (!from.empty()) {
            mail_.from = from.front();
        }
        mail_.to = header.Addresses("To");
        mail_.cc = header.Addresses("Cc");
        mail_.sent = ReadMailDate(header.Field("Date"));
        mail_.headers = FromUtf8(header.Text());
        Take(header, message, 0);
        return std::move(mail_);
    }

private:
    void Take(const MailHeader& header, std::string_view body, int depth) {
        const HeaderValue type = header.Structured("Content-Type");
        const std::string boundary = ToUtf8(type.Parameter("boundary"));
        if (type.value.size() > 10 && SameAscii(type.value.substr(0, 10), "multipart/") &&
            !boundary.empty()) {
            TakeParts(body, boundary, depth);
            return;
        }
        const HeaderValue disposition = header.Structured("Content-Disposition");
        std::u16string name = disposition.Parameter("filename");
        name = name.empty() ? type.Parameter("name") : name;
        const bool isText = type.value.empty() || SameAscii(type.value, "text/plain");
        const bool isHtml = SameAscii(type.value, "text/html");
        const bool isBody =
            (isText || isHtml) && name.empty() && !SameAscii(disposition.value, "attachment");
        const std::string content = Decoded(body, header.Field("Content-Transfer-Encoding"));
        if (isBody) {
            std::u16string& text = isHtml ? mail_.html : mail_.text;
            text += DecodeCharset(content, ToUtf8(type.Parameter("charset")));
        } else {
            TakeAttachment(type, name, content);
        }
    }

    void TakeParts(std::string_view body, const std::string& boundary, int depth) {
        if (depth >= kDeepest) {
            return;
        }
        for (std::string_view part : Parts(body, boundary)) {
            const MailHeader header(part);
            Take(header, WithoutLastBreak(part), depth + 1);
        }
    }

    void TakeAttachment(const HeaderValue& type, std::u16string name, std::string content) {
        if (name.empty() && SameAscii(type.value, "message/rfc822")) {
            std::string_view inner = content;
            name = DecodeHeader(MailHeader(inner).Field("Subject")) + u".eml";
        }
        if (name.empty()) {
            name = u"Anlage " + DecimalText(static_cast<long long>(mail_.attachments.size()) + 1);
        }
        mail_.attachments.push_back({std::move(name), FromUtf8(type.value), std::move(content)});
    }

    Mail mail_;
};

} // namespace

Mail ReadMime(std::string_view message) {
    return MimeReader().Read(message);
}

} // namespace talvix::host
