#include "workbench/host/list_text.h"

#include "automation/coercion.h"
#include "automation/text.h"
#include "workbench/host/field_text.h"

#include <algorithm>

namespace talvix::host {

namespace {

constexpr const char16_t* kTextColumns[] = {u"ID", u"Subject", u"ItemSize", u"PhysicalStore1"};

std::u16string OneLine(std::u16string text) {
    std::replace_if(
        text.begin(), text.end(), [](char16_t unit) { return unit < u' '; }, u' ');
    return text;
}

std::u16string Hex4(char16_t unit) {
    constexpr std::u16string_view digits = u"0123456789abcdef";
    std::u16string text;
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += digits[(static_cast<unsigned>(unit) >> static_cast<unsigned>(shift)) & 0xFU];
    }
    return text;
}

std::u16string Quoted(std::u16string_view text) {
    std::u16string quoted = u"\"";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        const bool startsPair = unit >= 0xD800 && unit < 0xDC00 && at + 1 < text.size() &&
                                text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
        if (startsPair) {
            quoted += unit;
            quoted += text[++at];
        } else if (unit == u'"' || unit == u'\\') {
            quoted += u'\\';
            quoted += unit;
        } else if (unit < u' ' || (unit >= 0xD800 && unit < 0xE000)) {
            quoted += u"\\u" + Hex4(unit);
        } else {
            quoted += unit;
        }
    }
    return quoted + u"\"";
}

std::u16string JsonOf(const FieldText& field) {
    if ((field.kind == u"long" || field.kind == u"double") && PlainNumber(field.text)) {
        return field.text;
    }
    if (field.kind == u"bool") {
        return field.text == u"1" ? u"true" : u"false";
    }
    return Quoted(field.kind == u"date" ? Replace(field.text, u" ", u"T") : field.text);
}

std::u16string JsonOf(const Document& document) {
    std::u16string json;
    for (const auto& [key, value] : document) {
        const auto* text = value.If<std::u16string>();
        const auto field = text != nullptr ? FieldText{u"text", *text} : WriteFieldText(value);
        if (field) {
            json += (json.empty() ? u"" : u", ") + Quoted(key) + u": " + JsonOf(*field);
        }
    }
    return u"{" + json + u"}";
}

} // namespace

std::u16string ListAsText(const Project& project, const Culture& culture) {
    std::u16string text;
    for (const Document& document : project.documents) {
        std::u16string line;
        const char16_t* between = u"";
        for (const char16_t* key : kTextColumns) {
            const auto found = document.find(key);
            line += between;
            line += found == document.end() ? std::u16string()
                                            : OneLine(ToText(found->second, culture));
            between = u"\t";
        }
        text += line + u"\n";
    }
    return text;
}

std::u16string ListAsJson(const Project& project) {
    std::u16string json = u"{\"number\": " + Quoted(project.number) + u", \"name\": " +
                          Quoted(project.name) + u", \"company\": " + Quoted(project.company) +
                          u", \"folder\": " + Quoted(project.folder) + u",\n \"documents\": [";
    const char16_t* between = u"\n  ";
    for (const Document& document : project.documents) {
        json += between + JsonOf(document);
        between = u",\n  ";
    }
    return json + u"\n ]}\n";
}

} // namespace talvix::host
