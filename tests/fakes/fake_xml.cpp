#include "tests/fakes/fake_xml.h"

#include "automation/text.h"
#include "tests/fakes/expando.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace talvix {

namespace {

struct Element {
    std::u16string name;
    std::map<std::u16string, std::u16string> attributes;
    std::vector<std::shared_ptr<Element>> children;
    std::u16string text; ///< with that of the elements within, in the order of the file
};
using Elements = std::vector<std::shared_ptr<Element>>;

constexpr std::size_t kDeepest = 100;
constexpr std::u16string_view kComment = u"<!--";

bool IsNameUnit(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_' ||
           unit >= 0xC0;
}

bool IsLayout(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

/// The characters that XML 1.0 carries.
bool IsCarried(std::u16string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
        if (isHigh && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000) {
            ++at;
        } else if ((unit < u' ' && !IsLayout(unit)) || (unit >= 0xD800 && unit < 0xE000) ||
                   unit >= 0xFFFE) {
            return false;
        }
    }
    return true;
}

class XmlReader {
public:
    explicit XmlReader(std::u16string_view text) : rest_(text) {}

    /// The root, or null.
    std::shared_ptr<Element> Read() {
        if (!IsCarried(rest_)) {
            return nullptr;
        }
        if (rest_.starts_with(u"<?xml ") && !SkipTo(u"?>")) {
            return nullptr;
        }
        if (!SkipLayout()) {
            return nullptr;
        }
        auto root = ReadElement(0);
        return root != nullptr && SkipLayout() && rest_.empty() ? root : nullptr;
    }

private:
    bool Take(std::u16string_view piece) {
        if (!rest_.starts_with(piece)) {
            return false;
        }
        rest_.remove_prefix(piece.size());
        return true;
    }
    bool SkipTo(std::u16string_view end) {
        const std::size_t at = rest_.find(end);
        rest_.remove_prefix(at == std::u16string_view::npos ? rest_.size() : at + end.size());
        return at != std::u16string_view::npos;
    }
    bool TakeBlanks() {
        const std::size_t size = rest_.size();
        while (!rest_.empty() && IsLayout(rest_.front())) {
            rest_.remove_prefix(1);
        }
        return rest_.size() != size;
    }
    bool SkipComment() {
        rest_.remove_prefix(kComment.size());
        const std::size_t dashes = rest_.find(u"--");
        const bool ends = rest_.substr(std::min(dashes, rest_.size()), 3) == u"-->";
        rest_.remove_prefix(ends ? dashes + 3 : 0);
        return ends;
    }
    /// Blanks and comments; false for a comment without an end.
    bool SkipLayout() {
        TakeBlanks();
        while (rest_.starts_with(kComment)) {
            if (!SkipComment()) {
                return false;
            }
            TakeBlanks();
        }
        return true;
    }
    std::u16string ReadName() {
        std::size_t length = 0;
        while (length < rest_.size() &&
               (IsNameUnit(rest_[length]) ||
                (length > 0 && (rest_[length] == u'-' || rest_[length] == u'.' ||
                                (rest_[length] >= u'0' && rest_[length] <= u'9'))))) {
            ++length;
        }
        const std::u16string name(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return name;
    }
    /// The character that a reference behind "&" stands for.
    std::optional<std::u16string> ReadReference() {
        static const std::map<std::u16string, std::u16string> kNames = {
            {u"amp", u"&"}, {u"lt", u"<"}, {u"gt", u">"}, {u"quot", u"\""}, {u"apos", u"'"}};
        const std::u16string name(rest_.substr(0, rest_.find(u';')));
        const auto known = kNames.find(name);
        if (known == kNames.end() || name.size() == rest_.size()) {
            return std::nullopt;
        }
        rest_.remove_prefix(name.size() + 1);
        return known->second;
    }
    /// Characters up to one of `ends`; ends of lines become one character, in attributes a blank.
    std::optional<std::u16string> ReadText(std::u16string_view ends, char16_t endOfLine) {
        std::u16string text;
        while (!rest_.empty() && ends.find(rest_.front()) == std::u16string_view::npos) {
            const char16_t unit = rest_.front();
            if (unit == u'<' || (endOfLine == u'\n' && rest_.starts_with(u"]]>"))) {
                return std::nullopt;
            }
            rest_.remove_prefix(1);
            if (unit == u'&') {
                const auto character = ReadReference();
                if (!character) {
                    return std::nullopt;
                }
                text += *character;
            } else if (unit == u'\r' || unit == u'\n') {
                text += endOfLine;
                Take(unit == u'\r' ? u"\n" : u"");
            } else {
                text += unit == u'\t' && endOfLine == u' ' ? u' ' : unit;
            }
        }
        return text;
    }
    bool ReadAttributes(Element& element) {
        while (TakeBlanks() && !rest_.empty() && rest_.front() != u'/' && rest_.front() != u'>') {
            const std::u16string name = ReadName();
            TakeBlanks();
            if (name.empty() || !Take(u"=")) {
                return false;
            }
            TakeBlanks();
            const std::u16string_view quote = rest_.substr(0, 1);
            if ((quote != u"\"" && quote != u"'") || !Take(quote)) {
                return false;
            }
            const auto value = ReadText(quote, u' ');
            if (!value || !Take(quote) || !element.attributes.emplace(name, *value).second) {
                return false;
            }
        }
        return true;
    }
    bool ReadContent(Element& element, std::size_t depth) {
        for (;;) {
            const auto text = ReadText(u"<", u'\n');
            if (!text || rest_.empty()) {
                return false;
            }
            element.text += *text;
            if (Take(u"</")) {
                const bool isOwn = ReadName() == element.name;
                TakeBlanks();
                return isOwn && Take(u">");
            }
            if (rest_.starts_with(kComment)) {
                if (!SkipComment()) {
                    return false;
                }
            } else if (auto child = ReadElement(depth + 1)) {
                element.text += child->text;
                element.children.push_back(std::move(child));
            } else {
                return false;
            }
        }
    }
    std::shared_ptr<Element> ReadElement(std::size_t depth) {
        auto element = std::make_shared<Element>();
        if (depth > kDeepest || !Take(u"<")) {
            return nullptr;
        }
        element->name = ReadName();
        if (element->name.empty() || !ReadAttributes(*element)) {
            return nullptr;
        }
        const bool isWhole = Take(u"/>") || (Take(u">") && ReadContent(*element, depth));
        return isWhole ? element : nullptr;
    }

    std::u16string_view rest_;
};

Object NodeOf(const std::shared_ptr<Element>& element);

Object ListOf(Elements elements) {
    auto list = std::make_shared<Expando>(u"NodeList");
    auto next = std::make_shared<std::size_t>(0);
    list->On(u"nextNode", [elements = std::move(elements), next](std::span<const Value>) -> Value {
        return *next < elements.size() ? Value(NodeOf(elements[(*next)++])) : Nothing();
    });
    return list;
}

Elements Named(const Elements& parents, std::u16string_view name) {
    Elements found;
    for (const auto& parent : parents) {
        std::copy_if(parent->children.begin(), parent->children.end(), std::back_inserter(found),
                     [&](const auto& child) { return child->name == name; });
    }
    return found;
}

Object NodeOf(const std::shared_ptr<Element>& element) {
    auto node = std::make_shared<Expando>(u"Element");
    node->With(u"nodeName", element->name).With(u"text", element->text);
    node->On(u"getAttribute", [element](std::span<const Value> values) -> Value {
        const auto found = element->attributes.find(*values[0].If<std::u16string>());
        return found == element->attributes.end() ? Value(Null()) : Value(found->second);
    });
    node->On(u"selectNodes", [element](std::span<const Value> values) -> Value {
        return ListOf(Named({element}, *values[0].If<std::u16string>()));
    });
    return node;
}

/// The elements that a path from the root names, such as "/a/b".
Elements Selected(const std::shared_ptr<Element>& root, std::u16string_view path) {
    const auto above = std::make_shared<Element>();
    above->children.push_back(root);
    Elements found = {above};
    while (!path.empty()) {
        path.remove_prefix(1); // the slash
        const std::u16string_view name = path.substr(0, path.find(u'/'));
        found = Named(found, name);
        path.remove_prefix(name.size());
    }
    return found;
}

} // namespace

Value FakeXmlDocument(std::u16string_view text) {
    const auto root = XmlReader(text).Read();
    if (root == nullptr) {
        return Nothing();
    }
    auto document = std::make_shared<Expando>(u"DOMDocument");
    document->With(u"documentElement", NodeOf(root));
    document->On(u"selectNodes", [root](std::span<const Value> values) -> Value {
        return ListOf(Selected(root, *values[0].If<std::u16string>()));
    });
    return Value(Object(document));
}

} // namespace talvix
