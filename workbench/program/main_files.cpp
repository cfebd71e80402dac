// The project that is open and the file that it is kept in.
#include "automation/dates.h"
#include "automation/text.h"
#include "platform/win32/wide.h"
#include "workbench/program/control_host.h"
#include "workbench/program/frame.h"
#include "workbench/program/grid_watch.h"
#include "workbench/program/list_dialog.h"
#include "workbench/program/main_menu.h"
#include "workbench/program/main_window.h"
#include "workbench/program/project_file.h"
#include "workbench/program/project_prompt.h"
#include "workbench/program/remembered_layout.h"
#include "workbench/program/save_export.h"
#include "workbench/program/user_memory.h"

#include <windows.h>

namespace talvix::workbench {

void MainWindow::Open(host::Project project, ProjectPlace place) {
    const auto show = [this](std::u16string_view text, std::u16string_view title,
                             std::int32_t style) {
        MessageBoxW(window_, Wide(std::u16string(text)), Wide(std::u16string(title)),
                    static_cast<UINT>(style));
    };
    const auto save = [this](std::u16string_view name, std::u16string_view xml) {
        Attempt([&] { SaveExport(window_, project_->Project(), name, xml, locale_); });
    };
    auto opened = std::make_unique<OpenProject>(
        std::move(project), show, [this] { ShowState(); }, save);
    CloseProject();
    AttachControl(opened->Grid(), documents_->RenewGridHost());
    AttachControl(opened->ActionsGrid(), support_->RenewGridHost());
    support_->Forget();
    project_ = std::move(opened);
    place_ = std::move(place);
    Layout();
    project_->Attach();
    project_->GridLate().Set(u"FileColumn", u"PhysicalStore1");
    const auto watch = std::make_shared<GridWatch>(window_, kGridChanged);
    watches_ = {project_->GridLate().AsObject()->Subscribe(watch, {}),
                project_->ActionsLate().AsObject()->Subscribe(watch, {})};
    if (hasUser_) {
        layout_ = RestoreLayout(project_->GridLate());
        if (!place_.Path().empty()) {
            RememberFile(place_.Path());
        }
    }
    ShowRecentFiles(window_, RecentFiles());
    ShowState();
}

void MainWindow::CloseProject() {
    documents_->CloseFilter();
    if (project_ != nullptr && hasUser_) {
        Attempt([&] { RememberLayout(project_->GridLate(), layout_); });
    }
    watches_ = {};
    project_.reset();
    report_ = {};
}

void MainWindow::NewProject(std::u16string_view folder) {
    host::Project project;
    project.name = u"Neues Projekt";
    project.folder = folder;
    Open(std::move(project), {});
}

/// The file's place, claimed where that is possible. A project that somebody else works on is
/// offered to be read; a place without a path when the user does not want that.
ProjectPlace MainWindow::PlaceFor(const std::u16string& path) {
    ProjectPlace wanted = ProjectPlace::ForReading(path);
    if (place_.MayWrite() && locale_.SameText(wanted.Path(), place_.Path())) {
        return std::move(place_); // this window has it already
    }
    try {
        return ProjectPlace::Claim(path);
    } catch (const Failure& failure) {
        const std::u16string question =
            failure.Text() + u"\r\n\r\nSoll es nur zum Lesen geöffnet werden?";
        if (MessageBoxW(window_, Wide(question), Wide(kProgram), MB_YESNO | MB_ICONWARNING) !=
            IDYES) {
            return {};
        }
    }
    return wanted;
}

void MainWindow::OpenFile(const std::u16string& path) {
    ProjectPlace place;
    try {
        host::Project project = ReadProject(path);
        place = PlaceFor(path);
        if (place.MayWrite()) {
            project = ReadProject(path); // as it stands now that nobody else can write it
        }
        if (!place.Path().empty()) {
            Open(std::move(project), std::move(place));
        }
    } catch (const Failure&) {
        if (place.MayWrite() && project_ != nullptr && place_.Path().empty()) {
            place_ = std::move(place);
        }
        ForgetFile(path);
        ShowRecentFiles(window_, RecentFiles());
        throw;
    }
}

void MainWindow::AskAndOpen() {
    const std::u16string path = AskForProjectFile(window_, false);
    if (!path.empty()) {
        OpenFile(path);
    }
}

bool MainWindow::Save(bool askForName) {
    const bool needsName = askForName || !place_.MayWrite();
    const std::u16string path = needsName ? AskForProjectFile(window_, true) : place_.Path();
    if (path.empty()) {
        return false;
    }
    const bool isOther = !place_.MayWrite() ||
                         !locale_.SameText(ProjectPlace::ForReading(path).Path(), place_.Path());
    ProjectPlace other = isOther ? ProjectPlace::Claim(path) : ProjectPlace();
    project_->Project().documents = host::ReadRows(project_->GridLate());
    (isOther ? other : place_).Save(project_->Project());
    if (isOther) {
        place_ = std::move(other);
    }
    project_->Project().isChanged = false;
    if (hasUser_) {
        RememberFile(place_.Path());
        ShowRecentFiles(window_, RecentFiles());
    }
    ShowState();
    return true;
}

void MainWindow::RestoreVersion() {
    const std::vector<ProjectVersion> versions = VersionsOf(place_.Path());
    ListDialog dialog;
    dialog.title = u"Frühere Fassung wiederherstellen";
    dialog.hint =
        versions.empty()
            ? u"Von diesem Projekt gibt es noch keine frühere Fassung."
            : u"Die gewählte Fassung wird geöffnet. Die Projektdatei ändert sich erst, wenn "
              u"Sie speichern; auch dann bleibt ihre jetzige Fassung erhalten.";
    dialog.columns = {{u"Gespeichert am", 160}, {u"Datei", 380}};
    for (const ProjectVersion& version : versions) {
        const auto when = ReadIsoText(version.savedAt);
        dialog.rows.push_back({when ? locale_.DateText(*when) : version.savedAt, version.path});
    }
    dialog.buttons = {u"&Wiederherstellen", u"Schließen"};
    dialog.needsSelection = true;
    if (versions.empty()) {
        dialog.buttons = {u"Schließen"};
        dialog.needsSelection = false;
    }
    const ListAnswer answer = ShowListDialog(window_, dialog);
    if (answer.button != 0 || !answer.row || versions.empty() || !MayClose()) {
        return;
    }
    host::Project project = ReadProject(versions[*answer.row].path);
    project.isChanged = true;
    Open(std::move(project), std::move(place_));
}

bool MainWindow::MayClose() {
    if (project_ == nullptr || !project_->Project().isChanged) {
        return true;
    }
    const int answer = MessageBoxW(
        window_, L"Das Projekt wurde geändert. Sollen die Änderungen gespeichert werden?",
        Wide(kProgram), MB_YESNOCANCEL | MB_ICONQUESTION);
    bool mayClose = answer == IDNO;
    if (answer == IDYES) {
        Attempt([&] { mayClose = Save(false); });
    }
    return mayClose;
}

} // namespace talvix::workbench
