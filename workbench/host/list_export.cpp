#include "workbench/host/list_export.h"

#include "automation/coercion.h"
#include "automation/text.h"

namespace talvix::host {

namespace {

struct ExportColumn {
    const char16_t* key;
    const char16_t* caption;
    int share; ///< of the printed page's width; 0 when it is not printed
};

constexpr ExportColumn kColumns[] = {
    {u"ID", u"Nr.", 5},
    {u"Subject", u"Name/Betreff", 22},
    {u"ItemSize", u"Größe", 8},
    {u"ObjectDescription", u"Typ", 14},
    {u"Creator", u"Erstellt von", 0},
    {u"CreationDate", u"Erstellt am", 12},
    {u"LastModificationBy", u"Geändert von", 0},
    {u"ModificationDate", u"Geändert am", 12},
    {u"Status", u"Status", 10},
    {u"LongDescription", u"Notizen", 18},
    {u"PhysicalStore1", u"Speicherort", 0},
    {u"PhysicalStore2", u"Ordner", 14},
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

std::vector<PrintColumn> PrintColumns() {
    std::vector<PrintColumn> columns;
    for (const ExportColumn& column : kColumns) {
        if (column.share > 0) {
            columns.push_back({column.caption, column.share});
        }
    }
    return columns;
}

std::vector<std::u16string> PrintedRow(const Document& document, const Culture& culture) {
    std::vector<std::u16string> texts;
    for (const ExportColumn& column : kColumns) {
        if (column.share > 0) {
            texts.push_back(FieldOf(document, column.key, culture));
        }
    }
    return texts;
}

std::u16string ListAsHtml(const Project& project, const Culture& culture) {
    const std::u16string title = Escaped(project.number + (project.number.empty() ? u"" : u" ") +
                                         project.name + u" – Dokumente");
    std::u16string page = u"<!DOCTYPE html>\r\n<html lang=\"de\"><head><meta charset=\"utf-8\">"
                          u"<title>" +
                          title + u"</title>" + kStyle + u"</head><body>\r\n<h1>" + title +
                          u"</h1>\r\n<table><thead><tr>";
    for (const ExportColumn& column : kColumns) {
        page += column.share > 0 ? u"<th>" + std::u16string(column.caption) + u"</th>" : u"";
    }
    page += u"</tr></thead><tbody>\r\n";
    for (const Document& document : project.documents) {
        page += u"<tr>";
        for (const ExportColumn& column : kColumns) {
            if (column.share > 0) {
                page += u"<td>" + Escaped(FieldOf(document, column.key, culture)) + u"</td>";
            }
        }
        page += u"</tr>\r\n";
    }
    return page + u"</tbody></table>\r\n</body></html>\r\n";
}

} // namespace talvix::host
