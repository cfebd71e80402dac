#include "bench/rigs.h"

#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/files.h"

namespace talvix::bench {

namespace {

Platform WithMessages(const Platform& own, Messages& messages) {
    return {own.files,   own.shell,   own.registry, own.system,  own.clock,
            own.locale,  own.timers,  own.pictures, own.network, messages,
            own.dialogs, own.objects, own.menus};
}

void Collect(const std::u16string& folder, std::vector<std::u16string>* paths) {
    const FolderListing listing = Win32Files().List(folder);
    if (paths != nullptr) {
        for (const ListedFile& file : listing.files) {
            paths->push_back(folder + u"\\" + file.name);
        }
    }
    for (const std::u16string& name : listing.folders) {
        Collect(folder + u"\\" + name, paths);
    }
}

} // namespace

HostRig::HostRig(const std::u16string& folder, std::vector<host::Document> documents)
    : grid(WrapDispatch(Create(u"TalvixGrid.Grid").Get())),
      actions(WrapDispatch(Create(u"TalvixGrid.Grid").Get())) {
    project->folder = folder;
    project->documents = std::move(documents);
    host::HostServices services;
    services.listWritten = [] {};
    services.showMessage = [](std::u16string_view, std::u16string_view, std::int32_t) {};
    services.projectXml = [] { return std::u16string(); };
    services.userName = u"Erika Muster";
    host = std::make_unique<host::Host>(project, services, grid, actions);
}

ServerRig::ServerRig(const std::u16string& folder, std::vector<host::Document> documents)
    : HostRig(folder, std::move(documents)), main(WrapDispatch(Create(u"TalvixDMS.Main").Get())) {
    main.CallWith(u"ReferenceLibraries", host->Libraries());
    main.Call(u"InitSGDMS");
    if (!project->documents.empty()) {
        host::LoadRows(grid, project->documents);
    }
}

std::int32_t ServerRig::Rows() const {
    const Value count = grid[u"Rows"].Call(u"Count");
    return std::get<std::int32_t>(count.Content());
}

double ServerRig::Import() const {
    const double whole = Timed([&] { return main.Call(u"AddFilesFromProjectFolderEvent"); });
    return whole - Timed([&] { // the host's own work
               return Late(host->Libraries()[1]).Call(u"WriteGridDataToItemBody");
           });
}

ComponentRig::ComponentRig(const std::u16string& folder)
    : HostRig(folder), ports(WithMessages(platform.ports, messages)) {
    const std::vector<Value> six = host->Libraries();
    main.ReferenceLibraries(six[0], six[1], six[2], six[3], six[4], six[5]);
    main.InitSGDMS();
}

void Walk(const std::u16string& folder) {
    Collect(folder, nullptr);
}

std::vector<std::u16string> FilesOf(const std::u16string& folder) {
    std::vector<std::u16string> paths;
    Collect(folder, &paths);
    return paths;
}

} // namespace talvix::bench
