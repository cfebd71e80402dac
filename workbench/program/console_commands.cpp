#include "workbench/program/console_commands.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/files.h"
#include "platform/win32/locale.h"
#include "workbench/host/document_files.h"
#include "workbench/host/list_text.h"
#include "workbench/program/file_checks.h"
#include "workbench/program/project_session.h"

#include <map>

namespace talvix::workbench {

namespace {

constexpr const char16_t* kUsage =
    u"TalvixWorkbench new PROJEKT [/number:TEXT] [/name:TEXT] [/company:TEXT] [/folder:ORDNER]\n"
    u"TalvixWorkbench import PROJEKT      liest den Projektordner ein und speichert\n"
    u"TalvixWorkbench export PROJEKT DATEI   schreibt die Liste als .xml, .csv oder .html\n"
    u"TalvixWorkbench list PROJEKT [/json]   zeigt die Liste\n"
    u"TalvixWorkbench check PROJEKT       nennt fehlende Dateien und doppelte Einträge\n"
    u"\n"
    u"Ergebnis: 0 erledigt, 1 misslungen, 2 nicht verstanden, 3 in Bearbeitung, 4 kein lesbares\n"
    u"Projekt, 5 etwas gefunden (check).\n";

/// A command with its arguments and switches taken apart.
struct Request {
    std::u16string command;
    std::vector<std::u16string> arguments;
    std::map<std::u16string, std::u16string> switches; ///< by name in small letters
    std::u16string error;
};

struct CommandShape {
    const char16_t* name;
    std::size_t arguments;
    std::vector<std::u16string> switches;
};

const std::vector<CommandShape>& Shapes() {
    static const std::vector<CommandShape> shapes = {
        {u"new", 1, {u"number", u"name", u"company", u"folder"}},
        {u"import", 1, {}},
        {u"export", 2, {}},
        {u"list", 1, {u"json"}},
        {u"check", 1, {}}};
    return shapes;
}

void TakeSwitch(Request& request, const std::u16string& argument, const CommandShape& shape) {
    const std::size_t colon = std::min(argument.find(u':'), argument.size());
    std::u16string name;
    for (const char16_t unit : argument.substr(1, colon - 1)) {
        name += FoldAscii(unit);
    }
    const bool isKnown =
        std::find(shape.switches.begin(), shape.switches.end(), name) != shape.switches.end();
    if (!isKnown || request.switches.contains(name)) {
        request.error = u"Die Angabe \"" + argument + u"\" ist hier nicht möglich.";
    }
    request.switches[name] = colon < argument.size() ? argument.substr(colon + 1) : u"";
}

Request Understand(const std::vector<std::u16string>& arguments) {
    Request request;
    request.command = arguments.front();
    for (const CommandShape& shape : Shapes()) {
        if (!SameName(shape.name, request.command)) {
            continue;
        }
        request.command = shape.name;
        for (auto each = arguments.begin() + 1; each != arguments.end(); ++each) {
            if (each->starts_with(u"/")) {
                TakeSwitch(request, *each, shape);
            } else {
                request.arguments.push_back(*each);
            }
        }
        if (request.error.empty() && request.arguments.size() != shape.arguments) {
            request.error = u"Der Befehl \"" + request.command + u"\" braucht " +
                            (shape.arguments == 1 ? u"genau eine Projektdatei."
                                                  : u"eine Projektdatei und eine Zieldatei.");
        }
        return request;
    }
    request.error = u"Den Befehl \"" + request.command + u"\" gibt es nicht.";
    return request;
}

/// The commands; each is given a request that has what it needs.
class Commands {
public:
    Commands(const Request& request, const ConsoleOutput& output)
        : request_(request),
          output_(output),
          session_([&output](std::u16string_view text, std::u16string_view, std::int32_t) {
              output.error(std::u16string(text) + u"\n");
          }) {}

    ExitCode Run() {
        if (request_.command == u"new") {
            return New();
        }
        const bool writes = request_.command == u"import";
        try {
            session_.Open(request_.arguments[0], !writes);
        } catch (const Failure& failure) {
            output_.error(failure.Text() + u"\n");
            return failure.Number() == ProjectPlace::kClaimed ? ExitCode::InUse
                                                              : ExitCode::NotAProject;
        }
        return writes                          ? Import()
               : request_.command == u"export" ? Export()
               : request_.command == u"list"   ? List()
                                               : Check();
    }

private:
    ExitCode New() {
        if (Win32Files().Query(request_.arguments[0])) {
            throw Failure(failure_number::kUnexpected,
                          u"Die Datei \"" + request_.arguments[0] + u"\" gibt es schon.");
        }
        session_.New();
        host::Project& project = session_.Project();
        const std::pair<const char16_t*, std::u16string*> fields[] = {
            {u"number", &project.number},
            {u"name", &project.name},
            {u"company", &project.company},
            {u"folder", &project.folder}};
        for (const auto& [name, field] : fields) {
            const auto given = request_.switches.find(name);
            *field = given == request_.switches.end() ? std::u16string() : given->second;
        }
        session_.SaveAs(request_.arguments[0]);
        return ExitCode::Done;
    }

    ExitCode Import() {
        const host::ImportReport report = session_.Import();
        session_.Save();
        for (const host::ImportLine& line : report.lines) {
            if (line.outcome == host::ImportOutcome::NotAdded) {
                output_.error(line.path + u": " + line.reason + u"\n");
            }
        }
        output_.text(host::ImportSummary(report) + u"\n");
        return report.notAdded == 0 ? ExitCode::Done : ExitCode::Failed;
    }

    ExitCode Export() {
        session_.Export(request_.arguments[1]);
        return ExitCode::Done;
    }

    ExitCode List() {
        const Win32Locale locale;
        output_.text(request_.switches.contains(u"json")
                         ? host::ListAsJson(session_.Project())
                         : host::ListAsText(session_.Project(), locale));
        return ExitCode::Done;
    }

    ExitCode Check() {
        bool found = false;
        for (const host::FileRow& row : MissingFiles(session_.Project().documents)) {
            output_.text(u"fehlt\t" + DecimalText(row.id) + u"\t" + row.path + u"\n");
            found = true;
        }
        long long number = 0;
        for (const auto& group : DuplicateFiles(session_.Project().documents)) {
            ++number;
            for (const host::FileRow& row : group) {
                output_.text(u"doppelt " + DecimalText(number) + u"\t" + DecimalText(row.id) +
                             u"\t" + row.path + u"\n");
            }
            found = true;
        }
        return found ? ExitCode::Found : ExitCode::Done;
    }

    const Request& request_;
    const ConsoleOutput& output_;
    ProjectSession session_;
};

} // namespace

ExitCode RunCommand(const std::vector<std::u16string>& arguments, const ConsoleOutput& output) {
    if (arguments.empty() || arguments.front() == u"/?" || SameName(arguments.front(), u"help")) {
        output.text(kUsage);
        return arguments.empty() ? ExitCode::NotUnderstood : ExitCode::Done;
    }
    const Request request = Understand(arguments);
    if (!request.error.empty()) {
        output.error(request.error + u"\n\n" + kUsage);
        return ExitCode::NotUnderstood;
    }
    try {
        return Commands(request, output).Run();
    } catch (const std::exception&) {
        output.error(CurrentFailure().Text() + u"\n");
        return ExitCode::Failed;
    }
}

} // namespace talvix::workbench
