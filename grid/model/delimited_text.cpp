#include "grid/model/delimited_text.h"

#include "automation/failure.h"
#include "automation/text.h"

namespace talvix::grid {

namespace {

class Reader {
public:
    Reader(std::u16string_view text, std::u16string_view separator)
        : text_(text), separator_(separator) {}

    std::vector<std::vector<Field>> Read() {
        std::vector<std::vector<Field>> lines;
        while (at_ < text_.size()) {
            lines.emplace_back();
            do {
                lines.back().push_back(AtQuote() ? ReadQuoted() : ReadPlain());
            } while (Skip(separator_));
            EndLine();
        }
        return lines;
    }

private:
    bool AtQuote() const { return at_ < text_.size() && text_[at_] == u'"'; }
    bool AtLineEnd() const {
        return at_ >= text_.size() || text_[at_] == u'\r' || text_[at_] == u'\n';
    }
    bool AtSeparator() const {
        return !separator_.empty() && text_.substr(at_, separator_.size()) == separator_;
    }
    bool Skip(std::u16string_view part) {
        const bool found = !part.empty() && text_.substr(at_, part.size()) == part;
        at_ += found ? part.size() : 0;
        return found;
    }

    Field ReadPlain() {
        const std::size_t from = at_;
        while (!AtLineEnd() && !AtSeparator()) {
            ++at_;
        }
        return {std::u16string(text_.substr(from, at_ - from)), false};
    }

    Field ReadQuoted() {
        Field field{u"", true};
        const long long opened = line_;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] != u'"') {
                line_ += text_[at_] == u'\n' ? 1 : 0;
                field.text += text_[at_];
            } else if (text_.substr(at_, 2) == u"\"\"") {
                field.text += text_[at_++];
            } else {
                ++at_;
                CheckFieldEnd();
                return field;
            }
        }
        throw Failure(failure_number::kInvalidArgument,
                      u"Line " + DecimalText(opened) + u": a quoted field is not closed");
    }

    void CheckFieldEnd() const {
        if (!AtLineEnd() && !AtSeparator()) {
            throw Failure(failure_number::kInvalidArgument,
                          u"Line " + DecimalText(line_) + u": text follows a closing quote");
        }
    }

    void EndLine() {
        ++line_;
        if (!Skip(u"\r\n")) {
            at_ += at_ < text_.size() ? 1 : 0;
        }
    }

    std::u16string_view text_;
    std::u16string_view separator_;
    std::size_t at_ = 0;
    long long line_ = 1;
};

} // namespace

std::vector<std::vector<Field>> ReadDelimited(std::u16string_view text,
                                              std::u16string_view separator) {
    if (separator.find_first_of(u"\"\r\n") != std::u16string_view::npos) {
        throw Failure(failure_number::kInvalidArgument,
                      u"A separator holds neither quotes nor line ends");
    }
    return Reader(text, separator).Read();
}

void AppendField(std::u16string& out, const Field& field, std::u16string_view separator) {
    const std::u16string& text = field.text;
    const bool needsQuotes = field.quoted ||
                             text.find_first_of(u"\"\r\n") != std::u16string::npos ||
                             (!separator.empty() && text.find(separator) != std::u16string::npos);
    if (!needsQuotes) {
        out += text;
        return;
    }
    out.append(u"\"").append(Replace(text, u"\"", u"\"\"")).append(u"\"");
}

} // namespace talvix::grid
