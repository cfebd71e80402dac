#include "workbench/program/project_file.h"

#include "automation/dates.h"
#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"
#include "workbench/host/field_text.h"

#include <optional>

namespace talvix::workbench {

namespace {

constexpr const char16_t* kRoot = u"TalvixProject";
constexpr std::int32_t kVersion = 1;

Late NewDocument() {
    CLSID id{};
    ComPtr<IDispatch> document;
    for (const auto* name :
         {L"MSXML2.DOMDocument.6.0", L"MSXML2.DOMDocument.3.0", L"MSXML2.DOMDocument"}) {
        if (SUCCEEDED(CLSIDFromProgID(name, &id)) &&
            SUCCEEDED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                       document.OutAny()))) {
            Late late(WrapDispatch(document.Get()));
            late.Set(u"async", false);
            late.Set(u"validateOnParse", false);
            late.Set(u"resolveExternals", false);
            late.Set(u"preserveWhiteSpace", true);
            return late;
        }
    }
    throw Failure(failure_number::kUnexpected,
                  u"Der XML-Dienst des Systems (MSXML) ist nicht vorhanden.");
}

std::u16string Markup(std::u16string_view text) {
    return Replace(Replace(Replace(Replace(text, u"&", u"&amp;"), u"<", u"&lt;"), u">", u"&gt;"),
                   u"\"", u"&quot;");
}

std::u16string Attribute(std::u16string_view name, std::u16string_view text) {
    return u" " + std::u16string(name) + u"=\"" + Markup(host::EscapeText(text)) + u"\"";
}

std::u16string DocumentXml(const host::Document& document) {
    std::u16string xml = u"    <Document>\r\n";
    for (const auto& [key, value] : document) {
        if (const auto field = host::WriteFieldText(value)) {
            xml += u"      <Field" + Attribute(u"name", key) + Attribute(u"type", field->kind) +
                   u">" + Markup(field->text) + u"</Field>\r\n";
        }
    }
    return xml + u"    </Document>\r\n";
}

/// Reads the parts of one file and knows how to complain about it.
class ProjectReader {
public:
    explicit ProjectReader(std::u16string_view path) : path_(path), document_(NewDocument()) {}

    host::Project Read() {
        Load();
        const Late root = document_[u"documentElement"];
        if (!root || TextIn(root, u"nodeName") != kRoot) {
            Refuse(u"Es ist keine Projektdatei (Wurzelelement \"" +
                   (root ? TextIn(root, u"nodeName") : u"") + u"\").");
        }
        const std::int32_t version = NumberOf(root, u"version", u"/TalvixProject");
        if (version > kVersion) {
            Refuse(u"Sie wurde mit einem neueren Programm gespeichert (Format " +
                   DecimalText(version) + u", bekannt ist " + DecimalText(kVersion) + u").");
        }
        if (version < 1) {
            Refuse(u"/TalvixProject/@version: Dieses Dateiformat gibt es nicht.");
        }
        ReadHead();
        ReadSettings();
        ReadActions();
        ReadDocuments();
        return std::move(project_);
    }

private:
    [[noreturn]] void Refuse(const std::u16string& reason) const {
        throw Failure(failure_number::kInvalidArgument,
                      u"Die Datei \"" + path_ + u"\" kann nicht gelesen werden.\r\n" + reason);
    }

    void Load() {
        if (GetFileAttributesW(Wide(path_)) == INVALID_FILE_ATTRIBUTES) {
            Refuse(SystemText(GetLastError()));
        }
        if (document_.Call(u"load", path_) == Value(true)) {
            return;
        }
        const Late error = document_[u"parseError"];
        const Value line = error.Call(u"line");
        const Value place = error.Call(u"linepos");
        const auto* lineNumber = line.If<std::int32_t>();
        const auto* column = place.If<std::int32_t>();
        const std::u16string reason(Trim(TextIn(error, u"reason")));
        const bool hasPlace = lineNumber != nullptr && *lineNumber > 0 && column != nullptr;
        Refuse((hasPlace ? u"Zeile " + DecimalText(*lineNumber) + u", Spalte " +
                               DecimalText(*column) + u": "
                         : u"") +
               reason);
    }

    static std::u16string TextIn(const Late& node, std::u16string_view member) {
        const Value value = node.Call(member);
        const auto* text = value.If<std::u16string>();
        return text == nullptr ? std::u16string() : *text;
    }

    std::u16string AttributeOf(const Late& node, std::u16string_view name,
                               const std::u16string& place) const {
        const Value value = node.Call(u"getAttribute", name);
        const auto* text = value.If<std::u16string>();
        const auto plain = text == nullptr ? std::nullopt : host::UnescapeText(*text);
        if (!plain) {
            Refuse(place + u"/@" + std::u16string(name) +
                   u": Die Angabe fehlt oder ist unverständlich.");
        }
        return *plain;
    }

    std::int32_t NumberOf(const Late& node, std::u16string_view name,
                          const std::u16string& place) const {
        const auto value = host::ReadFieldText({u"long", AttributeOf(node, name, place)});
        const auto* number = value ? value->If<std::int32_t>() : nullptr;
        if (number == nullptr) {
            Refuse(place + u"/@" + std::u16string(name) + u": Eine ganze Zahl wird erwartet.");
        }
        return *number;
    }

    /// Calls `use` with every element of a path and its place.
    template <typename Use>
    void ForEach(std::u16string_view path, Use&& use) const {
        const Late nodes = document_(u"selectNodes", path);
        std::int32_t number = 0;
        for (Late node = nodes[u"nextNode"]; node; node = nodes[u"nextNode"]) {
            use(node, std::u16string(path) + u"[" + DecimalText(++number) + u"]");
        }
    }

    void ReadHead() {
        bool found = false;
        ForEach(u"/TalvixProject/Project", [&](const Late& node, const std::u16string& place) {
            project_.number = AttributeOf(node, u"number", place);
            project_.name = AttributeOf(node, u"name", place);
            project_.company = AttributeOf(node, u"company", place);
            project_.folder = AttributeOf(node, u"folder", place);
            project_.nextId = NumberOf(node, u"nextId", place);
            found = true;
        });
        if (!found) {
            Refuse(u"/TalvixProject/Project: Das Element fehlt.");
        }
    }

    void ReadSettings() {
        ForEach(u"/TalvixProject/Settings/Setting",
                [&](const Late& node, const std::u16string& place) {
                    project_.settings[AttributeOf(node, u"path", place)] =
                        AttributeOf(node, u"value", place);
                });
    }

    void ReadActions() {
        ForEach(u"/TalvixProject/Actions/Action",
                [&](const Late& node, const std::u16string& place) {
                    const auto date = ReadIsoText(AttributeOf(node, u"startdate", place));
                    if (!date) {
                        Refuse(place + u"/@startdate: Ein Datum wird erwartet.");
                    }
                    project_.actions.push_back({NumberOf(node, u"id", place), *date,
                                                AttributeOf(node, u"description", place)});
                });
    }

    void ReadDocuments() {
        ForEach(u"/TalvixProject/Documents/Document", [&](const Late& node,
                                                          const std::u16string& place) {
            host::Document document;
            const Late fields = node(u"selectNodes", u"Field");
            for (Late field = fields[u"nextNode"]; field; field = fields[u"nextNode"]) {
                const std::u16string key = AttributeOf(field, u"name", place + u"/Field");
                const std::u16string own = place + u"/Field[@name='" + key + u"']";
                auto value =
                    host::ReadFieldText({AttributeOf(field, u"type", own), TextIn(field, u"text")});
                if (!value) {
                    Refuse(own + u": Der Inhalt passt nicht zu seiner Art.");
                }
                document[key] = std::move(*value);
            }
            project_.documents.push_back(std::move(document));
        });
    }

    std::u16string path_;
    Late document_;
    host::Project project_;
};

} // namespace

std::u16string ProjectXml(const host::Project& project) {
    std::u16string xml =
        u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<TalvixProject version=\"1\">\r\n  "
        u"<Project" +
        Attribute(u"number", project.number) + Attribute(u"name", project.name) +
        Attribute(u"company", project.company) + Attribute(u"folder", project.folder) +
        Attribute(u"nextId", DecimalText(project.nextId)) + u"/>\r\n  <Settings>\r\n";
    for (const auto& [path, value] : project.settings) {
        xml += u"    <Setting" + Attribute(u"path", path) + Attribute(u"value", value) + u"/>\r\n";
    }
    xml += u"  </Settings>\r\n  <Actions>\r\n";
    for (const host::Action& action : project.actions) {
        xml += u"    <Action" + Attribute(u"id", DecimalText(action.id)) +
               Attribute(u"startdate", IsoText(action.startDate)) +
               Attribute(u"description", action.description) + u"/>\r\n";
    }
    xml += u"  </Actions>\r\n  <Documents>\r\n";
    for (const host::Document& document : project.documents) {
        xml += DocumentXml(document);
    }
    return xml + u"  </Documents>\r\n</TalvixProject>\r\n";
}

host::Project ReadProject(std::u16string_view path) {
    return ProjectReader(path).Read();
}

} // namespace talvix::workbench
