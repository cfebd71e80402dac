// answers: answers questions about the rules, one line each, for a comparison with another
// implementation of them. A question is a rule's name and its fields, an answer its fields; a field
// is "=" and four hexadecimal digits for each UTF-16 unit. A refusal is the line "!".
#include "automation/failure.h"
#include "automation/text.h"
#include "common/general.h"
#include "core/grid_setup.h"
#include "core/row_presentation.h"
#include "folder/file_name.h"
#include "folder/naming_rule.h"
#include "folder/project_copy.h"
#include "folder/unc_conversion.h"
#include "grid/model/delimited_text.h"
#include "operations/action_combo.h"
#include "tests/fakes/fake_xml.h"
#include "tests/fakes/main_rig.h"
#include "ui/file_dialog.h"
#include "workbench/host/mime_reader.h"
#include "workbench/host/project_text.h"

#include <iostream>
#include <map>
#include <sstream>

namespace talvix {

namespace {

using Fields = std::vector<std::u16string>;

std::u16string ReadField(const std::string& coded) {
    std::u16string text;
    for (std::size_t at = 1; at + 4 <= coded.size(); at += 4) {
        text += static_cast<char16_t>(std::stoul(coded.substr(at, 4), nullptr, 16));
    }
    return text;
}

std::string WriteField(std::u16string_view text) {
    std::string coded = "=";
    char digits[5];
    for (const char16_t unit : text) {
        std::snprintf(digits, sizeof digits, "%04x", static_cast<unsigned>(unit));
        coded += digits;
    }
    return coded;
}

std::u16string Flag(bool flag) {
    return flag ? u"1" : u"0";
}

/// rule, number, name, company: the filled rule, what is missing
Fields Rule(const Fields& asked) {
    const FilledRule filled = FillNamingRule(
        asked[0], [&](ProjectText text) { return asked[1 + static_cast<std::size_t>(text)]; });
    return {filled.text, filled.missing};
}

/// text, replacement: the cleaned text
Fields Clean(const Fields& asked) {
    return {CleanFileNameText(asked[0], asked[1])};
}

/// name: whether a file may be called so
Fields Plain(const Fields& asked) {
    return {Flag(IsPlainFileName(asked[0]))};
}

/// two texts: file name, folder and extension of the first, both joined
Fields Paths(const Fields& asked) {
    return {GetFileName(asked[0]), GetFolderPath(asked[0]), GetExtensionName(asked[0]),
            BuildPath(asked[0], asked[1])};
}

/// name, then the names that are in the folder: the name that a copy gets, or nothing
Fields Place(const Fields& asked) {
    static MainRig rig;
    rig.fakes.files.Clear();
    rig.fakes.journal.Clear();
    rig.fakes.files.MakeFolder(u"P:\\Proj");
    rig.fakes.files.MakeFile(u"C:\\Quelle.doc", 5);
    for (std::size_t at = 1; at < asked.size(); ++at) {
        rig.fakes.files.MakeFile(u"P:\\Proj\\" + asked[at], 1);
    }
    const auto placed = PlaceCopy(rig.main->Attached(), u"C:\\Quelle.doc", u"P:\\Proj", asked[0]);
    return placed ? Fields{placed->path, Flag(placed->isNumbered)} : Fields{};
}

/// path, computer ("" for none), remote name of "X:" ("" for none), then names and data of shares
Fields Unc(const Fields& asked) {
    static FakePlatform fakes;
    fakes.journal.Clear();
    FakeNetwork network(fakes.journal);
    network.computer = asked[1].empty() ? std::nullopt : std::optional(asked[1]);
    if (!asked[2].empty()) {
        network.drives[u"X:"] = asked[2];
    }
    for (std::size_t at = 3; at + 1 < asked.size(); at += 2) {
        network.AddShare(asked[at], asked[at + 1]);
    }
    return {ConvertToUNC(network, fakes.locale, fakes.trace, asked[0])};
}

/// an entry of the action list: its number
Fields Action(const Fields& asked) {
    return {ActionNumberIn(asked[0])};
}

/// five texts, five suffixes, a further filter: the dialog's filter
Fields Filter(const Fields& asked) {
    static FakePlatform fakes;
    FileDialog dialog(fakes.ports);
    for (std::size_t pair = 1; pair <= 5; ++pair) {
        dialog.SetFilter(pair, asked[pair - 1], asked[pair + 4]);
    }
    dialog.Filter = asked[10];
    return {dialog.FilterText()};
}

/// length of a file: what its row shows
Fields Size(const Fields& asked) {
    static MainRig rig;
    static bool isAttached = false;
    if (!isAttached) {
        rig.Attach();
        rig.AddRow(0, u"P:\\Proj\\a.doc");
        isAttached = true;
    }
    rig.fakes.journal.Clear();
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc",
                             static_cast<std::int64_t>(PlainNumber(asked[0]).value_or(0)));
    rig.main->Init();
    return {*rig.Cell(1, u"ItemSize").If<std::u16string>()};
}

/// version text, platform, major, minor: whether the image list is assigned again
Fields Version(const Fields& asked) {
    static MainRig rig;
    static bool isAttached = false;
    if (!isAttached) {
        rig.Attach();
        isAttached = true;
    }
    rig.fakes.journal.Clear();
    const auto number = [&](std::size_t at) {
        return static_cast<std::uint32_t>(LeadingNumber(asked[at]));
    };
    rig.fakes.system.version = SystemVersion{number(1), number(2), number(3)};
    Late(Value(rig.item))[u"Application"].Set(u"Version", asked[0]);
    CheckVersion(rig.main->Attached());
    return {Flag(rig.fakes.journal.Count(u"image list") == 1)};
}

/// text, separator: for each line the number of fields, then the fields
Fields Grid(const Fields& asked) {
    Fields answer;
    for (const auto& line : grid::ReadDelimited(asked[0], asked[1])) {
        answer.push_back(DecimalText(static_cast<long long>(line.size())));
        for (const grid::Field& field : line) {
            answer.push_back(field.text);
        }
    }
    return answer;
}

/// a mail, a byte in each unit: subject, sender, receivers, bodies, names and bytes of attachments
Fields Mime(const Fields& asked) {
    std::string bytes;
    for (const char16_t unit : asked[0]) {
        bytes += static_cast<char>(unit);
    }
    const host::Mail mail = host::ReadMime(bytes);
    Fields answer = {mail.subject, mail.from ? mail.from->name : u"",
                     mail.from ? mail.from->address : u""};
    answer.push_back(DecimalText(static_cast<long long>(mail.to.size())));
    for (const host::MailAddress& each : mail.to) {
        answer.insert(answer.end(), {each.name, each.address});
    }
    answer.insert(answer.end(), {mail.text, mail.html, DecimalText(mail.sent.value_or(-1))});
    for (const host::MailAttachment& each : mail.attachments) {
        std::u16string content;
        for (const char byte : each.content) {
            content += static_cast<unsigned char>(byte);
        }
        answer.insert(answer.end(), {each.fileName, content});
    }
    return answer;
}

/// number, name, company, folder, then keys and texts of one document: the project file
Fields Project(const Fields& asked) {
    host::Project project;
    project.number = asked[0];
    project.name = asked[1];
    project.company = asked[2];
    project.folder = asked[3];
    host::Document& document = project.documents.emplace_back();
    for (std::size_t at = 4; at + 1 < asked.size(); at += 2) {
        document[asked[at]] = asked[at + 1];
    }
    return {host::ProjectXml(project)};
}

/// a project file: number, name, company, folder, then keys and texts of its documents
Fields File(const Fields& asked) {
    const host::Project project = host::ProjectIn(Late(FakeXmlDocument(asked[0])), u"P:\\a.talvix");
    Fields answer = {project.number, project.name, project.company, project.folder};
    for (const host::Document& document : project.documents) {
        for (const auto& [key, value] : document) {
            answer.insert(answer.end(), {key, *value.If<std::u16string>()});
        }
    }
    return answer;
}

const std::map<std::string, Fields (*)(const Fields&)> kRules = {
    {"rule", Rule},       {"clean", Clean},     {"plain", Plain},   {"paths", Paths},
    {"place", Place},     {"unc", Unc},         {"action", Action}, {"filter", Filter},
    {"size", Size},       {"version", Version}, {"grid", Grid},     {"mime", Mime},
    {"project", Project}, {"file", File}};

std::string Answer(const std::string& question) {
    std::istringstream words(question);
    std::string word;
    words >> word;
    const auto rule = kRules.find(word);
    Fields asked;
    while (words >> word) {
        asked.push_back(ReadField(word));
    }
    std::string line;
    try {
        for (const std::u16string& field : rule->second(asked)) {
            line += WriteField(field) + " ";
        }
    } catch (const Failure&) {
        line = "!";
    }
    return line;
}

} // namespace

} // namespace talvix

int main() {
    std::ios::sync_with_stdio(false);
    std::string question;
    while (std::getline(std::cin, question)) {
        std::cout << talvix::Answer(question) << '\n';
    }
    return 0;
}
