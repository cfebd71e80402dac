#include "grid/model/quick_filter.h"

#include "grid/model/shown_text.h"

#include <algorithm>

namespace talvix::grid {

namespace {

constexpr char16_t kFirstNonAscii = 128;

char16_t AsciiUpper(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

bool IsAscii(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char16_t unit) { return unit < kFirstNonAscii; });
}

bool Holds(std::u16string_view text, std::u16string_view upper) {
    return std::search(text.begin(), text.end(), upper.begin(), upper.end(),
                       [](char16_t left, char16_t right) { return AsciiUpper(left) == right; }) !=
           text.end();
}

} // namespace

void QuickFilter::SetText(std::u16string_view text) {
    const bool narrows = IsOn() && text.starts_with(text_);
    text_ = text;
    words_.clear();
    std::u16string_view rest = text;
    while (true) {
        rest.remove_prefix(std::min(rest.find_first_not_of(u' '), rest.size()));
        if (rest.empty()) {
            break;
        }
        const std::u16string_view word = rest.substr(0, rest.find(u' '));
        words_.push_back({culture_.UpperCase(word)});
        rest.remove_prefix(word.size());
    }
    if (!narrows) {
        ForgetAll();
        return;
    }
    for (Answer& answer : answers_) { // what did not hold less does not hold more
        answer = answer == Answer::Fails ? answer : Answer::Unknown;
    }
}

void QuickFilter::SetColumn(std::optional<std::size_t> column) {
    column_ = column;
    ForgetAll();
}

void QuickFilter::Forget(Slot slot) {
    if (slot < answers_.size()) {
        answers_[slot] = Answer::Unknown;
    }
}

bool QuickFilter::Passes(Slot slot) {
    if (!IsOn()) {
        return true;
    }
    if (slot >= answers_.size()) {
        answers_.resize(slot + 1 + answers_.size() / 2, Answer::Unknown);
    }
    if (answers_[slot] == Answer::Unknown) {
        answers_[slot] = Search(slot) ? Answer::Passes : Answer::Fails;
    }
    return answers_[slot] == Answer::Passes;
}

bool QuickFilter::Search(Slot slot) {
    for (Word& word : words_) {
        word.found = false;
    }
    if (column_) {
        return SearchCell(slot, *column_);
    }
    // Texts need no conversion: they come first.
    for (const bool texts : {true, false}) {
        for (std::size_t column = 0; column < columns_.Count(); ++column) {
            const auto& design = columns_.At(column);
            const bool searched = !design.hidden && design.dataType != DataType::Image &&
                                  (cells_.Text(slot, column) != nullptr) == texts;
            if (searched && SearchCell(slot, column)) {
                return true;
            }
        }
    }
    return false;
}

bool QuickFilter::SearchCell(Slot slot, std::size_t column) {
    std::u16string own;
    std::u16string_view text;
    if (const PooledText* pooled = cells_.Text(slot, column)) {
        text = pooled->View();
    } else {
        own = ShownText(cells_.Get(slot, column), columns_.At(column).dataType, culture_);
        text = own;
    }
    if (!IsAscii(text)) {
        own = culture_.UpperCase(text);
        text = own;
    }
    bool all = true;
    for (Word& word : words_) {
        word.found = word.found || Holds(text, word.upper);
        all = all && word.found;
    }
    return all;
}

} // namespace talvix::grid
