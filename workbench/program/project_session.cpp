#include "workbench/program/project_session.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/files.h"
#include "platform/win32/locale.h"
#include "workbench/host/project_text.h"
#include "workbench/program/file_checks.h"
#include "workbench/program/project_file.h"
#include "workbench/program/save_export.h"
#include "workbench/program/trace_tail.h"

namespace talvix::workbench {

ProjectSession::ProjectSession(OpenProject::Show showMessage)
    : showMessage_(std::move(showMessage)) {}

OpenProject& ProjectSession::Opened() const {
    if (project_ == nullptr) {
        throw Failure(failure_number::kUnexpected, u"Es ist kein Projekt geöffnet.");
    }
    return *project_;
}

void ProjectSession::Take(host::Project project, ProjectPlace place) {
    auto opened = std::make_unique<OpenProject>(
        std::move(project), showMessage_, [] {}, OpenProject::Export());
    opened->Attach();
    project_ = std::move(opened);
    place_ = std::move(place);
}

void ProjectSession::New() {
    Take(host::Project(), {});
}

void ProjectSession::Open(std::u16string_view path, bool readOnly) {
    host::Project project = ReadProject(path); // what is no project is not claimed
    ProjectPlace place = ProjectPlace::ForReading(path);
    const bool isOwn = place_.MayWrite() && Win32Locale().SameText(place.Path(), place_.Path());
    if (isOwn && !readOnly) {
        place = std::move(place_);
    } else if (!readOnly) {
        place = ProjectPlace::Claim(path);
        project = ReadProject(path); // as it stands now that nobody else can write it
    }
    Take(std::move(project), std::move(place));
}

void ProjectSession::SaveTo(const ProjectPlace& place) {
    host::Project& project = Project();
    project.documents = host::ReadRows(Opened().GridLate());
    place.Save(project);
    project.isChanged = false;
}

void ProjectSession::Save() {
    Opened();
    if (place_.Path().empty()) {
        throw Failure(failure_number::kUnexpected, u"Das Projekt hat noch keine Datei.");
    }
    SaveTo(place_);
}

void ProjectSession::SaveAs(std::u16string_view path) {
    Opened();
    const std::u16string wanted = ProjectPlace::ForReading(path).Path();
    if (place_.MayWrite() && Win32Locale().SameText(wanted, place_.Path())) {
        SaveTo(place_);
        return;
    }
    ProjectPlace other = ProjectPlace::Claim(wanted);
    SaveTo(other);
    place_ = std::move(other);
}

void ProjectSession::Close() {
    project_.reset();
    place_ = {};
}

host::ImportReport ProjectSession::Import() {
    host::Project& project = Project();
    const std::u16string folder(Trim(project.folder));
    const auto facts = Win32Files().Query(folder);
    if (!facts || !facts->isFolder) {
        throw Failure(failure_number::kUnexpected,
                      folder.empty()
                          ? std::u16string(u"Das Projekt hat keinen Projektordner.")
                          : u"Der Projektordner \"" + folder + u"\" ist nicht zu erreichen.");
    }
    const Win32Locale locale;
    const auto before = host::PlacesOf(project.documents, locale);
    const TraceTail trace;
    Opened().Call(u"AddFilesFromProjectFolderEvent");
    return host::ReportImport(before, project.documents, *FilesBelow(folder), trace.Lines(),
                              locale);
}

void ProjectSession::Export(std::u16string_view path) {
    host::Project& project = Project();
    project.documents = host::ReadRows(Opened().GridLate());
    WriteExport(path, project, host::ProjectXml(project), Win32Locale());
}

} // namespace talvix::workbench
