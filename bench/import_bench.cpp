// Reading a folder in and opening a stored list: the time per file for growing numbers of files.
// FOLDER holds the folders 1000, 4000 and 16000 with as many files each.
#include "automation/text.h"
#include "bench/bench.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/files.h"
#include "platform/win32/shell.h"
#include "workbench/host/host.h"

#include <algorithm>
#include <cstdio>

namespace talvix::bench {

namespace {

struct Times {
    double import = 0;    ///< without the host's writing of the list
    double writeBack = 0; ///< the host's writing of the list
    double open = 0;
    std::size_t rows = 0;
    double walk = 0; ///< the bare walk through the folders
    double fill = 0; ///< the same rows filled into an empty grid
};

void Walk(const std::u16string& folder) {
    const FolderListing listing = Win32Files().List(folder);
    for (const std::u16string& name : listing.folders) {
        Walk(folder + u"\\" + name);
    }
}

Times Measure(const std::u16string& folder) {
    const Late grid(WrapDispatch(Create(u"TalvixGrid.Grid").Get()));
    const Late actions(WrapDispatch(Create(u"TalvixGrid.Grid").Get()));
    const Late main(WrapDispatch(Create(u"TalvixDMS.Main").Get()));
    const auto project = std::make_shared<host::Project>();
    project->folder = folder;
    host::HostServices services;
    services.listWritten = [] {};
    services.showMessage = [](std::u16string_view, std::u16string_view, std::int32_t) {};
    services.projectXml = [] { return std::u16string(); };
    services.userName = u"Erika Muster";
    host::Host host(project, services, grid, actions);
    const std::vector<Value> libraries = host.Libraries();
    main.CallWith(u"ReferenceLibraries", libraries);
    main.Call(u"InitSGDMS");
    Times times;
    double start = Now();
    main.Call(u"AddFilesFromProjectFolderEvent");
    times.import = Now() - start;
    start = Now();
    Late(libraries[1]).Call(u"WriteGridDataToItemBody");
    times.import -= Now() - start; // the host's own work
    times.writeBack = Now() - start;
    start = Now();
    main.Call(u"Init");
    times.open = Now() - start;
    times.rows = project->documents.size();
    main.Call(u"DereferenceLibraries");
    start = Now();
    Walk(folder);
    times.walk = Now() - start;
    const Late empty(WrapDispatch(Create(u"TalvixGrid.Grid").Get()));
    for (const auto& [key, value] : project->documents.front()) {
        empty[u"Columns"].Call(u"Add", key);
    }
    start = Now();
    host::LoadRows(empty, project->documents);
    times.fill = Now() - start;
    return times;
}

std::u16string FirstFile(const std::u16string& folder) {
    const FolderListing listing = Win32Files().List(folder);
    return listing.files.empty() ? FirstFile(folder + u"\\" + listing.folders.front())
                                 : folder + u"\\" + listing.files.front().name;
}

/// What the shell needs at its first question about a file of the folder.
double ShellStart(const std::u16string& file) {
    Win32Shell shell;
    const double start = Now();
    shell.SmallIconIndex(file);
    shell.TypeName(file);
    return Now() - start;
}

} // namespace

int ImportBench(const std::u16string& folder) {
    double importOfFirst = 0;
    double openOfFirst = 0;
    for (const int count : {1000, 4000, 16000}) {
        const std::u16string path = folder + u"\\" + DecimalText(count);
        Measure(path);
        const Times times = Measure(path);
        if (times.rows != static_cast<std::size_t>(count)) {
            std::printf("%zu rows instead of %d\n", times.rows, count);
            return 1;
        }
        const double import = times.import / count;
        const double open = times.open / count;
        importOfFirst = importOfFirst == 0 ? import : importOfFirst;
        openOfFirst = openOfFirst == 0 ? open : openOfFirst;
        std::printf(
            "%6d files: import %6.1f us per file (%.2fx), opening %6.1f us per row (%.2fx)\n",
            count, import * 1e6, import / importOfFirst, open * 1e6, open / openOfFirst);
    }
    return 0;
}

int LargeImportBench(const std::u16string& folder) {
    for (const auto* shape : {u"flach", u"tief"}) {
        double shell = 0;
        double walkOfFirst = 0;
        double importOfFirst = 0;
        for (const int count : {10000, 100000}) {
            const std::u16string path = folder + u"\\" + shape + u"-" + DecimalText(count);
            shell = std::max(shell, ShellStart(FirstFile(path)));
            Measure(path); // warm-up
            const Times times = Measure(path);
            const double base = times.walk + times.fill + shell;
            walkOfFirst = walkOfFirst == 0 ? times.walk : walkOfFirst;
            importOfFirst = importOfFirst == 0 ? times.import : importOfFirst;
            std::printf("%s %6zu files: import %.2f s, walk %.2f s, fill %.2f s, shell %.2f s "
                        "(write-back %.2f s): "
                        "%.2fx; growth %.1fx, of the walk %.1fx\n",
                        ToUtf8(shape).c_str(), times.rows, times.import, times.walk, times.fill,
                        shell, times.writeBack, times.import / base, times.import / importOfFirst,
                        times.walk / walkOfFirst);
            std::fflush(stdout);
        }
    }
    return 0;
}

} // namespace talvix::bench
