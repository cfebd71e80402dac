#include "workbench/host/mail_header.h"

#include "workbench/host/mail_coding.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace talvix::host {

namespace {

/// Cuts the next line off, without its end.
std::string_view NextLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

/// Cuts at a separator that stands in no quoted text.
std::string_view NextOutsideQuotes(std::string_view& rest, char separator) {
    bool quoted = false;
    std::size_t at = 0;
    for (; at < rest.size() && (quoted || rest[at] != separator); ++at) {
        if (rest[at] == '\\' && quoted) {
            ++at;
        } else if (rest[at] == '"') {
            quoted = !quoted;
        }
    }
    at = std::min(at, rest.size());
    const std::string_view piece = rest.substr(0, at);
    rest.remove_prefix(std::min(rest.size(), at + 1));
    return TrimAscii(piece);
}

std::string Unquoted(std::string_view text) {
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') {
        return std::string(text);
    }
    std::string plain;
    for (std::size_t at = 1; at + 1 < text.size(); ++at) {
        at += text[at] == '\\' && at + 2 < text.size() ? 1 : 0;
        plain += text[at];
    }
    return plain;
}

/// A parameter as it is written: "filename*1*" is piece 1 of "filename", percent-coded.
struct ParameterPiece {
    std::string name;
    std::string text;
    int number = 0;
    bool isCoded = false;
};

ParameterPiece ReadPiece(std::string_view written) {
    const std::size_t equals = written.find('=');
    std::string_view name = TrimAscii(written.substr(0, equals));
    ParameterPiece piece;
    if (equals != std::string_view::npos) {
        piece.text = Unquoted(TrimAscii(written.substr(equals + 1)));
    }
    if (name.ends_with('*')) {
        piece.isCoded = true;
        name.remove_suffix(1);
    }
    const std::size_t star = name.find('*');
    if (star != std::string_view::npos) {
        std::from_chars(name.data() + star + 1, name.data() + name.size(), piece.number);
    }
    piece.name = name.substr(0, star);
    return piece;
}

/// All pieces of one parameter, in the order of their numbers: charset'language'text when coded.
std::u16string Join(const std::vector<ParameterPiece>& pieces) {
    std::string bytes;
    std::string charset;
    bool isCoded = false;
    for (const ParameterPiece& piece : pieces) {
        std::string_view text = piece.text;
        if (piece.isCoded && !isCoded) {
            isCoded = true;
            const std::size_t first = text.find('\'');
            const std::size_t second =
                first == std::string_view::npos ? first : text.find('\'', first + 1);
            if (second != std::string_view::npos) {
                charset = text.substr(0, first);
                text.remove_prefix(second + 1);
            }
        }
        bytes += piece.isCoded ? DecodePercent(text) : std::string(text);
    }
    return isCoded ? DecodeCharset(bytes, charset) : DecodeHeader(bytes);
}

MailAddress ReadAddress(std::string_view text) {
    const std::size_t open = text.rfind('<');
    if (open == std::string_view::npos) {
        return {u"", DecodeHeader(text)};
    }
    const std::size_t close = std::min(text.find('>', open), text.size());
    return {DecodeHeader(Unquoted(TrimAscii(text.substr(0, open)))),
            DecodeHeader(text.substr(open + 1, close - open - 1))};
}

int NumberIn(std::string_view text) {
    int number = -1;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// Minutes east of Greenwich of "+0100"; other forms count as Greenwich.
int ZoneMinutes(std::string_view zone) {
    const bool isSigned = zone.size() == 5 && (zone[0] == '+' || zone[0] == '-');
    const int number = isSigned ? NumberIn(zone.substr(1)) : 0;
    const int minutes = number / 100 * 60 + number % 100;
    return isSigned && zone[0] == '-' ? -minutes : minutes;
}

/// Days from 1 January 1970 to a date of the Gregorian calendar.
std::int64_t DaysFromCivil(std::int64_t year, int month, int day) {
    year -= month <= 2 ? 1 : 0;
    const std::int64_t era = year / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

int MonthNumber(std::string_view name) {
    constexpr std::array<std::string_view, 12> kMonths{"jan", "feb", "mar", "apr", "may", "jun",
                                                       "jul", "aug", "sep", "oct", "nov", "dec"};
    const auto found = std::find_if(kMonths.begin(), kMonths.end(), [&](std::string_view month) {
        return SameAscii(month, name.substr(0, 3));
    });
    return found == kMonths.end() ? 0 : static_cast<int>(found - kMonths.begin()) + 1;
}

} // namespace

std::u16string HeaderValue::Parameter(std::string_view name) const {
    for (const auto& [known, text] : parameters) {
        if (SameAscii(known, name)) {
            return text;
        }
    }
    return {};
}

MailHeader::MailHeader(std::string_view& message) : text_(message) {
    const std::string_view whole = message;
    while (!message.empty()) {
        const std::string_view before = message;
        const std::string_view line = NextLine(message);
        if (line.empty()) {
            text_ = whole.substr(0, whole.size() - before.size());
            return;
        }
        const bool isFolded = line.front() == ' ' || line.front() == '\t';
        const std::size_t colon = line.find(':');
        if (isFolded && !fields_.empty()) {
            fields_.back().second += line;
        } else if (colon != std::string_view::npos && colon > 0) {
            fields_.emplace_back(TrimAscii(line.substr(0, colon)),
                                 TrimAscii(line.substr(colon + 1)));
        }
    }
}

std::string_view MailHeader::Field(std::string_view name) const {
    for (const auto& [known, text] : fields_) {
        if (SameAscii(known, name)) {
            return text;
        }
    }
    return {};
}

HeaderValue MailHeader::Structured(std::string_view name) const {
    std::string_view rest = Field(name);
    HeaderValue header;
    header.value = NextOutsideQuotes(rest, ';');
    std::vector<ParameterPiece> pieces;
    while (!rest.empty()) {
        pieces.push_back(ReadPiece(NextOutsideQuotes(rest, ';')));
    }
    std::stable_sort(pieces.begin(), pieces.end(), [](const auto& one, const auto& other) {
        return one.name != other.name ? one.name < other.name : one.number < other.number;
    });
    for (auto each = pieces.begin(); each != pieces.end();) {
        const auto end = std::find_if(each, pieces.end(), [&](const ParameterPiece& piece) {
            return piece.name != each->name;
        });
        header.parameters.emplace_back(each->name, Join({each, end}));
        each = end;
    }
    return header;
}

std::vector<MailAddress> MailHeader::Addresses(std::string_view name) const {
    std::string_view rest = Field(name);
    std::vector<MailAddress> addresses;
    while (!rest.empty()) {
        const std::string_view one = NextOutsideQuotes(rest, ',');
        if (!one.empty()) {
            addresses.push_back(ReadAddress(one));
        }
    }
    return addresses;
}

std::optional<std::int64_t> ReadMailDate(std::string_view text) {
    const std::size_t comma = text.find(',');
    std::string_view rest =
        TrimAscii(comma == std::string_view::npos ? text : text.substr(comma + 1));
    std::array<std::string_view, 5> parts{}; // day, month, year, time, zone
    for (std::string_view& part : parts) {
        rest = TrimAscii(rest);
        part = rest.substr(0, rest.find_first_of(" \t"));
        rest.remove_prefix(part.size());
    }
    const int day = NumberIn(parts[0]);
    const int month = MonthNumber(parts[1]);
    const int year = NumberIn(parts[2]);
    std::string_view time = parts[3];
    const int hour = NumberIn(NextOutsideQuotes(time, ':'));
    const int minute = NumberIn(NextOutsideQuotes(time, ':'));
    const int second = time.empty() ? 0 : NumberIn(time);
    if (day < 1 || day > 31 || month == 0 || year < 1900 || year > 9999 || hour < 0 || hour > 23 ||
        minute < 0 || minute > 59 || second < 0 || second > 60) {
        return std::nullopt;
    }
    return ((DaysFromCivil(year, month, day) * 24 + hour) * 60 + minute - ZoneMinutes(parts[4])) *
               60 +
           second;
}

} // namespace talvix::host
