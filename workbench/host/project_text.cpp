#include "workbench/host/project_text.h"

#include "automation/dates.h"
#include "automation/failure.h"
#include "automation/text.h"
#include "workbench/host/field_text.h"

#include <optional>

namespace talvix::host {

namespace {

constexpr const char16_t* kRoot = u"TalvixProject";
constexpr std::int32_t kVersion = 1;

std::u16string Markup(std::u16string_view text) {
    return Replace(Replace(Replace(Replace(text, u"&", u"&amp;"), u"<", u"&lt;"), u">", u"&gt;"),
                   u"\"", u"&quot;");
}

std::u16string Attribute(std::u16string_view name, std::u16string_view text) {
    return u" " + std::u16string(name) + u"=\"" + Markup(EscapeText(text)) + u"\"";
}

std::u16string DocumentXml(const Document& document) {
    std::u16string xml = u"    <Document>\r\n";
    for (const auto& [key, value] : document) {
        if (const auto field = WriteFieldText(value)) {
            xml += u"      <Field" + Attribute(u"name", key) + Attribute(u"type", field->kind) +
                   u">" + Markup(field->text) + u"</Field>\r\n";
        }
    }
    return xml + u"    </Document>\r\n";
}

/// Reads the parts of one file and knows how to complain about it.
class ProjectReader {
public:
    ProjectReader(const Late& document, std::u16string_view path)
        : document_(document), path_(path) {}

    Project Read() {
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
    [[noreturn]] void Refuse(const std::u16string& reason) const { RefuseProject(path_, reason); }

    std::u16string AttributeOf(const Late& node, std::u16string_view name,
                               const std::u16string& place) const {
        const Value value = node.Call(u"getAttribute", name);
        const auto* text = value.If<std::u16string>();
        const auto plain = text == nullptr ? std::nullopt : UnescapeText(*text);
        if (!plain) {
            Refuse(place + u"/@" + std::u16string(name) +
                   u": Die Angabe fehlt oder ist unverständlich.");
        }
        return *plain;
    }

    std::int32_t NumberOf(const Late& node, std::u16string_view name,
                          const std::u16string& place) const {
        const auto value = ReadFieldText({u"long", AttributeOf(node, name, place)});
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
        ForEach(
            u"/TalvixProject/Actions/Action", [&](const Late& node, const std::u16string& place) {
                const auto date = ReadIsoText(AttributeOf(node, u"startdate", place));
                if (!date) {
                    Refuse(place + u"/@startdate: Ein Datum wird erwartet.");
                }
                const auto id = NumberOf(node, u"id", place);
                project_.actions.push_back({id, *date, AttributeOf(node, u"description", place)});
            });
    }

    void ReadField(const Late& field, const std::u16string& place, Document& document) const {
        const std::u16string key = AttributeOf(field, u"name", place + u"/Field");
        const std::u16string own = place + u"/Field[@name='" + key + u"']";
        const std::u16string type = AttributeOf(field, u"type", own);
        auto value = ReadFieldText({type, TextIn(field, u"text")});
        if (!value) {
            Refuse(own + u": Der Inhalt passt nicht zu seiner Art.");
        }
        document[key] = std::move(*value);
    }

    void ReadDocuments() {
        ForEach(u"/TalvixProject/Documents/Document",
                [&](const Late& node, const std::u16string& place) {
                    Document document;
                    const Late fields = node(u"selectNodes", u"Field");
                    for (Late field = fields[u"nextNode"]; field; field = fields[u"nextNode"]) {
                        ReadField(field, place, document);
                    }
                    project_.documents.push_back(std::move(document));
                });
    }

    const Late& document_;
    std::u16string_view path_;
    Project project_;
};

} // namespace

std::u16string TextIn(const Late& node, std::u16string_view member) {
    const Value value = node.Call(member);
    const auto* text = value.If<std::u16string>();
    return text == nullptr ? std::u16string() : *text;
}

void RefuseProject(std::u16string_view path, const std::u16string& reason) {
    throw Failure(failure_number::kInvalidArgument, u"Die Datei \"" + std::u16string(path) +
                                                        u"\" kann nicht gelesen werden.\r\n" +
                                                        reason);
}

std::u16string ProjectXml(const Project& project) {
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
    for (const Action& action : project.actions) {
        xml += u"    <Action" + Attribute(u"id", DecimalText(action.id)) +
               Attribute(u"startdate", IsoText(action.startDate)) +
               Attribute(u"description", action.description) + u"/>\r\n";
    }
    xml += u"  </Actions>\r\n  <Documents>\r\n";
    for (const Document& document : project.documents) {
        xml += DocumentXml(document);
    }
    return xml + u"  </Documents>\r\n</TalvixProject>\r\n";
}

Project ProjectIn(const Late& document, std::u16string_view path) {
    return ProjectReader(document, path).Read();
}

} // namespace talvix::host
