#include "workbench/host/summary.h"

#include "automation/coercion.h"
#include "automation/text.h"

#include <algorithm>
#include <cmath>

namespace talvix::host {

namespace {

std::u16string Field(const Document& document, const std::u16string& key, const Culture& culture) {
    const auto found = document.find(key);
    return found == document.end() ? std::u16string() : ToText(found->second, culture);
}

/// The number in a size text such as "1.465 KB".
double Kilobytes(const Document& document, const Culture& culture) {
    const std::u16string text = Field(document, u"ItemSize", culture);
    return culture.ReadNumber(Left(text, text.find(u' '))).value_or(0);
}

} // namespace

std::u16string Summary(const Project& project, double seconds, const Culture& culture) {
    double kilobytes = 0;
    std::map<std::u16string, std::int32_t> kinds;
    for (const Document& document : project.documents) {
        kilobytes += Kilobytes(document, culture);
        ++kinds[Field(document, u"ObjectDescription", culture)];
    }
    std::u16string text = u"Projektordner: " + project.folder + u"\r\n";
    text +=
        u"Dokumente: " + DecimalText(static_cast<long long>(project.documents.size())) + u"\r\n";
    text += u"Größe: " + (kilobytes > 0 ? culture.GroupedText(kilobytes) : u"0") + u" KB\r\n";
    text += u"Dauer: " +
            culture.NumberText(static_cast<double>(std::llround(seconds * 100)) / 100) + u" s\r\n";
    std::vector<std::pair<std::int32_t, std::u16string>> sorted;
    sorted.reserve(kinds.size());
    for (const auto& [kind, count] : kinds) {
        sorted.emplace_back(-count, kind);
    }
    std::sort(sorted.begin(), sorted.end());
    for (const auto& [count, kind] : sorted) {
        text += u"  " + DecimalText(-count) + u" x " + kind + u"\r\n";
    }
    return text;
}

} // namespace talvix::host
