#pragma once

#include "automation/culture.h"
#include "workbench/host/import_report.h"
#include "workbench/program/open_project.h"
#include "workbench/program/project_place.h"

#include <memory>
#include <string>

namespace talvix::workbench {

/// A project that is worked on without a window: opened, read in, exported, saved. Whatever cannot
/// be done raises Failure with a German text and leaves everything as it was.
class ProjectSession {
public:
    /// `showMessage` gets what the component would tell a user; it shows its own dialogs all the
    /// same where a command needs them.
    explicit ProjectSession(OpenProject::Show showMessage);

    void New();
    void Open(std::u16string_view path, bool readOnly);
    /// Failure for a project without a file and for one that is only read.
    void Save();
    /// A file that is there already is replaced, and kept as an earlier version.
    void SaveAs(std::u16string_view path);
    void Close();
    bool IsOpen() const { return project_ != nullptr; }

    /// Reads the project's folder in. Failure when the project has none, or it is not there.
    host::ImportReport Import();
    /// Writes the list into a file: XML, CSV or HTML by its extension. An earlier file is replaced.
    void Export(std::u16string_view path);

    /// The open project; Failure when there is none.
    OpenProject& Opened() const;
    host::Project& Project() const { return Opened().Project(); }
    const ProjectPlace& Place() const { return place_; }

private:
    void Take(host::Project project, ProjectPlace place);
    void SaveTo(const ProjectPlace& place);

    OpenProject::Show showMessage_;
    std::unique_ptr<OpenProject> project_;
    ProjectPlace place_;
};

} // namespace talvix::workbench
