#include "workbench/host/mail_coding.h"

#include "automation/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace talvix::host {

namespace {

constexpr std::string_view kBase64 =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// What Windows-1252 has between 0x80 and 0x9F; 0 where nothing is.
constexpr std::array<char16_t, 32> kWindows1252{
    u'€', 0,    u'‚', u'ƒ', u'„', u'…', u'†', u'‡', u'ˆ', u'‰', u'Š', u'‹', u'Œ', 0, u'Ž', 0,
    0,    u'‘', u'’', u'“', u'”', u'•', u'–', u'—', u'˜', u'™', u'š', u'›', u'œ', 0, u'ž', u'Ÿ'};

char Lower(char each) {
    return each >= 'A' && each <= 'Z' ? static_cast<char>(each + 32) : each;
}

int HexDigit(char each) {
    if (each >= '0' && each <= '9') {
        return each - '0';
    }
    const char small = Lower(each);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

/// Two hexadecimal digits at a place, or -1.
int HexByte(std::string_view text, std::size_t at) {
    if (at + 1 >= text.size()) {
        return -1;
    }
    const int high = HexDigit(text[at]);
    const int low = HexDigit(text[at + 1]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

char16_t FromWindows1252(unsigned char byte) {
    const bool isSpecial = byte >= 0x80 && byte <= 0x9F;
    const char16_t special = isSpecial ? kWindows1252[byte - 0x80U] : char16_t{0};
    return special == 0 ? static_cast<char16_t>(byte) : special;
}

/// The rest of an encoded word behind "=?": charset "?" coding "?" text "?=".
struct EncodedWord {
    std::u16string text;
    std::size_t length = 0; ///< with its marks; 0 when it is none
};

EncodedWord ReadEncodedWord(std::string_view text) {
    const std::size_t charsetEnd = text.find('?', 2);
    if (!text.starts_with("=?") || charsetEnd == std::string_view::npos ||
        charsetEnd + 2 >= text.size() || text[charsetEnd + 2] != '?') {
        return {};
    }
    const std::size_t end = text.find("?=", charsetEnd + 3);
    const std::string_view word = text.substr(0, end);
    if (end == std::string_view::npos || word.find_first_of(" \t\r\n") != std::string_view::npos) {
        return {};
    }
    const std::string_view charset = text.substr(2, charsetEnd - 2);
    const std::string_view content = word.substr(charsetEnd + 3);
    const char coding = Lower(text[charsetEnd + 1]);
    if (coding != 'b' && coding != 'q') {
        return {};
    }
    const std::string bytes =
        coding == 'b' ? DecodeBase64(content) : DecodeQuotedPrintable(content, true);
    // A language may stand behind the charset ("utf-8*de").
    return {DecodeCharset(bytes, charset.substr(0, charset.find('*'))), end + 2};
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// What stands between encoded words: UTF-8, or the old 8-bit form.
std::u16string DecodePlain(std::string_view text) {
    return DecodeCharset(text, "utf-8");
}

} // namespace

std::string DecodeBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 3 / 4);
    std::uint32_t bits = 0;
    int count = 0;
    for (const char each : text) {
        if (each == '=') {
            break;
        }
        const std::size_t value = kBase64.find(each);
        if (value == std::string_view::npos) {
            continue;
        }
        bits = (bits << 6U) | static_cast<std::uint32_t>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>((bits >> static_cast<unsigned>(count)) & 0xFFU);
        }
    }
    return bytes;
}

std::string DecodeQuotedPrintable(std::string_view text, bool inHeader) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int byte = text[at] == '=' ? HexByte(text, at + 1) : -1;
        if (byte >= 0) {
            bytes += static_cast<char>(byte);
            at += 2;
        } else if (text[at] == '=' && text.substr(at + 1).starts_with("\r\n")) {
            at += 2; // a soft line break
        } else if (text[at] == '=' && text.substr(at + 1).starts_with('\n')) {
            at += 1;
        } else {
            bytes += inHeader && text[at] == '_' ? ' ' : text[at];
        }
    }
    return bytes;
}

std::string DecodePercent(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int byte = text[at] == '%' ? HexByte(text, at + 1) : -1;
        bytes += byte >= 0 ? static_cast<char>(byte) : text[at];
        at += byte >= 0 ? 2 : 0;
    }
    return bytes;
}

std::u16string DecodeCharset(std::string_view bytes, std::string_view charset) {
    const bool isUtf8 =
        charset.empty() || SameAscii(charset, "utf-8") || SameAscii(charset, "us-ascii");
    if (isUtf8) {
        std::u16string text = FromUtf8(bytes);
        if (text.find(u'\uFFFD') == std::u16string::npos) {
            return text;
        }
    }
    const bool isLatin9 = SameAscii(charset, "iso-8859-15");
    std::u16string text;
    text.reserve(bytes.size());
    for (const char each : bytes) {
        const char16_t unit = FromWindows1252(static_cast<unsigned char>(each));
        text += isLatin9 && unit == u'\u00A4' ? u'€' : unit;
    }
    return text;
}

std::u16string DecodeHeader(std::string_view text) {
    std::u16string decoded;
    std::size_t plainStart = 0;
    bool afterWord = false;
    for (std::size_t at = text.find("=?"); at != std::string_view::npos; at = text.find("=?", at)) {
        const EncodedWord word = ReadEncodedWord(text.substr(at));
        if (word.length == 0) {
            at += 2;
            continue;
        }
        const std::string_view between = text.substr(plainStart, at - plainStart);
        if (!afterWord || !IsBlank(between)) { // blanks between encoded words do not count
            decoded += DecodePlain(between);
        }
        decoded += word.text;
        at += word.length;
        plainStart = at;
        afterWord = true;
    }
    return decoded + DecodePlain(text.substr(plainStart));
}

bool SameAscii(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(),
                      [](char one, char other) { return Lower(one) == Lower(other); });
}

std::string_view TrimAscii(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

} // namespace talvix::host
