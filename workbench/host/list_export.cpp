#include "workbench/host/list_export.h"

#include "automation/coercion.h"
#include "automation/text.h"

namespace talvix::host {

namespace {

struct ExportColumn {
    const char16_t* key;
    const char16_t* caption;
    bool isOnPage; ///< on the printed page, too
};

constexpr ExportColumn kColumns[] = {
    {u"ID", u"Nr.", true},
    {u"Subject", u"Name/Betreff", true},
    {u"ItemSize", u"Größe", true},
    {u"ObjectDescription", u"Typ", true},
    {u"Creator", u"Erstellt von", false},
    {u"CreationDate", u"Erstellt am", true},
    {u"LastModificationBy", u"Geändert von", false},
    {u"ModificationDate", u"Geändert am", true},
    {u"Status", u"Status", true},
    {u"LongDescription", u"Notizen", true},
    {u"PhysicalStore1", u"Speicherort", false},
    {u"PhysicalStore2", u"Ordner", true},
};

std::u16string FieldOf(const Document& document, const char16_t* key, const Culture& culture) {
    const auto found = document.find(key);
    return found == document.end() ? std::u16string() : ToText(found->second, culture);
}

std::u16string CsvField(std::u16string text) {
    if (!text.empty() &&
        std::u16string_view(u"=+-@\t\r").find(text.front()) != std::u16string_view::npos) {
        text.insert(0, u"'");
    }
    if (text.find_first_of(u";\"\r\n") == std::u16string::npos) {
        return text;
    }
    return u"\"" + Replace(text, u"\"", u"\"\"") + u"\"";
}

std::u16string Escaped(std::u16string_view text) {
    std::u16string escaped = Replace(text, u"&", u"&amp;");
    for (const auto& [what, with] : {std::pair(u"<", u"&lt;"), std::pair(u">", u"&gt;"),
                                     std::pair(u"\"", u"&quot;"), std::pair(u"\n", u"<br>")}) {
        escaped = Replace(escaped, what, with);
    }
    return escaped;
}

constexpr const char16_t* kStyle =
    u"<style>body{font:10pt Arial,sans-serif;margin:1.5cm}h1{font-size:14pt}"
    u"table{border-collapse:collapse;width:100%}th,td{border:1px solid #999;padding:2px 5px;"
    u"text-align:left;vertical-align:top}th{background:#eee}thead{display:table-header-group}"
    u"</style>";

} // namespace

std::u16string ListAsCsv(const Project& project, const Culture& culture) {
    std::u16string text;
    const auto addLine = [&](const auto& field) {
        std::u16string line;
        for (const ExportColumn& column : kColumns) {
            line += (line.empty() && &column == kColumns ? u"" : u";") + CsvField(field(column));
        }
        text += line + u"\r\n";
    };
    addLine([](const ExportColumn& column) { return std::u16string(column.caption); });
    for (const Document& document : project.documents) {
        addLine([&](const ExportColumn& column) { return FieldOf(document, column.key, culture); });
    }
    return text;
}

std::u16string ListAsHtml(const Project& project, const Culture& culture) {
    const std::u16string title = Escaped(project.number + (project.number.empty() ? u"" : u" ") +
                                         project.name + u" – Dokumente");
    std::u16string page = u"<!DOCTYPE html>\r\n<html lang=\"de\"><head><meta charset=\"utf-8\">"
                          u"<title>" +
                          title + u"</title>" + kStyle + u"</head><body>\r\n<h1>" + title +
                          u"</h1>\r\n<table><thead><tr>";
    for (const ExportColumn& column : kColumns) {
        page += column.isOnPage ? u"<th>" + std::u16string(column.caption) + u"</th>" : u"";
    }
    page += u"</tr></thead><tbody>\r\n";
    for (const Document& document : project.documents) {
        page += u"<tr>";
        for (const ExportColumn& column : kColumns) {
            if (column.isOnPage) {
                page += u"<td>" + Escaped(FieldOf(document, column.key, culture)) + u"</td>";
            }
        }
        page += u"</tr>\r\n";
    }
    return page + u"</tbody></table>\r\n</body></html>\r\n";
}

} // namespace talvix::host
