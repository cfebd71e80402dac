// Reading a folder in: beside the bare walk and filling the same rows, beside a script, a second
// time with everything listed, and again and again with all rows removed between.
// FOLDER holds flach-10000, flach-100000, tief-10000 and tief-100000 with as many files each of one
// kind, and gemischt-100000 with ten kinds.
#include "automation/text.h"
#include "bench/rigs.h"
#include "platform/win32/owned.h"
#include "platform/win32/shell.h"
#include "platform/win32/wide.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <psapi.h>
#include <set>
#include <unordered_map>

namespace talvix::bench {

namespace {

using Documents = std::vector<host::Document>;

struct Shape {
    const char* name;
    const char* id;
    const char16_t* folder;
    double goal;
};
constexpr Shape kShapes[] = {{"nested", "import-nested", u"tief-", 1.4},
                             {"flat", "import-flat", u"flach-", 1.6}};

double Import(const std::u16string& folder) {
    return ServerRig(folder).Import();
}

/// The list that an import leaves behind.
Documents Imported(const std::u16string& folder) {
    const ServerRig rig(folder);
    rig.Import();
    return rig.project->documents;
}

double TimedWalk(const std::u16string& folder) {
    const double start = Now();
    Walk(folder);
    return Since(start);
}

double Fill(const Documents& documents) {
    const HostRig rig(u"");
    for (const auto& [key, value] : documents.front()) {
        rig.grid[u"Columns"].Call(u"Add", key);
    }
    const double start = Now();
    host::LoadRows(rig.grid, documents);
    return Since(start);
}

/// What the shell needs at its first question in this process.
double ShellStart(const std::u16string& file) {
    Win32Shell shell;
    const double start = Now();
    shell.Classes().IconIndex(file);
    shell.TypeName(file);
    return Since(start);
}

void RequireAllListed(const Documents& documents, const std::vector<std::u16string>& files) {
    std::set<std::u16string> listed;
    for (const host::Document& document : documents) {
        listed.insert(std::get<std::u16string>(document.at(u"PhysicalStore1").Content()));
    }
    Require(documents.size() == files.size() &&
                listed == std::set<std::u16string>(files.begin(), files.end()),
            "import");
}

double SecondImport(const std::u16string& folder, const Documents& documents) {
    const ServerRig rig(folder, documents);
    const double time = Timed([&] { return rig.main.Call(u"AddFilesFromProjectFolderEvent"); });
    Require(rig.Rows() == static_cast<std::int32_t>(documents.size()), "second import");
    return time;
}

double WalkAndIndex(const std::u16string& folder, const Documents& documents) {
    const double start = Now();
    Walk(folder);
    std::unordered_map<std::u16string, std::size_t> index;
    for (std::size_t row = 0; row < documents.size(); ++row) {
        std::u16string key =
            std::get<std::u16string>(documents[row].at(u"PhysicalStore1").Content());
        CharLowerBuffW(WideBuffer(key), static_cast<DWORD>(key.size()));
        index.emplace(std::move(key), row);
    }
    const double time = Since(start);
    Require(index.size() == documents.size(), "index");
    return time;
}

void CompareShape(const Shape& shape, const std::u16string& folder) {
    const std::u16string small = folder + u"\\" + shape.folder + u"10000";
    const std::u16string large = folder + u"\\" + shape.folder + u"100000";
    const std::string name(shape.name);
    const std::vector<std::u16string> files = FilesOf(large);
    const double shellStart = ShellStart(files.front());
    const Documents documents = Imported(large);
    RequireAllListed(documents, files);
    Compare(
        {shape.id, "import of 100,000 files, " + name + " / bare walk, fill and one shell start",
         shape.goal},
        [&] { return Import(large); },
        [&] { return TimedWalk(large) + Fill(documents) + shellStart; });
    Compare(
        {"second-" + name,
         "import of 100,000 files, " + name + ", everything listed / bare walk and an index", 1.2},
        [&] { return SecondImport(large, documents); },
        [&] { return WalkAndIndex(large, documents); });
    Compare(
        {"growth-" + name,
         "growth of the import from 10,000 to 100,000 files, " + name + " / growth of the walk",
         1.1},
        [&] { return Import(large) / Import(small); },
        [&] { return TimedWalk(large) / TimedWalk(small); });
}

struct Held {
    std::size_t handles = 0;
    std::size_t bytes = 0;
};

Held HeldNow() {
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    return {handles + GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS) +
                GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS),
            ResidentBytes()};
}

/// What is held after each of three cycles of reading 10,000 files in and removing all of them.
void ReportCycles(const std::u16string& folder) {
    ComponentRig rig(folder);
    Held first;
    Held last;
    for (int cycle = 0; cycle < 4; ++cycle) { // the first one warms up
        rig.main.AddFilesFromProjectFolderEvent();
        const Value count = rig.grid[u"Rows"].Call(u"Count");
        Require(count == Value(10000), "cycle");
        rig.grid[u"Selection"].Call(u"Add", 1, count);
        rig.grid.Set(u"CurrentRow", 1);
        rig.main.DeleteDMSItem();
        Require(rig.grid[u"Rows"].Call(u"Count") == Value(0), "cycle");
        rig.host->History() = host::ListHistory(); // the earlier lists are the host's
        last = HeldNow();
        first = cycle == 1 ? last : first;
    }
    Report({"cycles-handles", "handles more after three cycles of import and removal of 10,000", 0},
           static_cast<double>(last.handles) - static_cast<double>(first.handles), "handles");
    Report({"cycles-memory", "memory after the third of these cycles / after the first", 1.03},
           static_cast<double>(last.bytes) / static_cast<double>(first.bytes), "times");
}

double RunScript(const std::u16string& script, const std::u16string& folder, std::size_t rows) {
    std::u16string command = u"cscript.exe //nologo \"" + script + u"\" \"" + folder + u"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const double start = Now();
    const bool isStarted = CreateProcessW(nullptr, WideBuffer(command), nullptr, nullptr, FALSE, 0,
                                          nullptr, nullptr, &startup, &process) != FALSE;
    Require(isStarted, "starting the script");
    WaitForSingleObject(process.hProcess, INFINITE);
    const double time = Since(start);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    Require(code == rows, "the script's import");
    return time;
}

} // namespace

int ImportBench(const std::u16string& folder) {
    for (const Shape& shape : kShapes) {
        CompareShape(shape, folder);
    }
    const std::u16string mixed = folder + u"\\gemischt-100000";
    const std::u16string plain = folder + u"\\flach-100000";
    Compare(
        {"import-kinds", "import of 100,000 files of ten kinds, flat / of one kind", 0},
        [&] { return Import(mixed); }, [&] { return Import(plain); });
    return 0;
}

int CyclesBench(const std::u16string& folder) {
    ReportCycles(folder + u"\\flach-10000");
    return 0;
}

int ScriptBench(const std::u16string& folder, const std::u16string& script) {
    for (const Shape& shape : kShapes) {
        const std::u16string large = folder + u"\\" + shape.folder + u"100000";
        Compare(
            {"script-" + std::string(shape.name),
             "import of 100,000 files, " + std::string(shape.name) +
                 " / a script with FileSystemObject and Dictionary",
             0.4},
            [&] { return Import(large); }, [&] { return RunScript(script, large, 100000); });
    }
    return 0;
}

} // namespace talvix::bench
