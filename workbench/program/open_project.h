#pragma once

#include "automation/late.h"
#include "platform/win32/com/com_ptr.h"
#include "workbench/host/host.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace talvix::workbench {

/// An object of a registered class, or of one that the program's manifest names. Failure with a
/// German text when it cannot be created.
ComPtr<IDispatch> CreateObject(std::u16string_view programId);

/// One open project: its data, the host's objects, the grids and the component that works on them.
class OpenProject {
public:
    using Show = std::function<void(std::u16string_view, std::u16string_view, std::int32_t)>;
    using Export = std::function<void(std::u16string_view name, std::u16string_view xml)>;
    OpenProject(host::Project project, Show showMessage, std::function<void()> listWritten,
                Export exportList);
    ~OpenProject();
    OpenProject(const OpenProject&) = delete;
    OpenProject& operator=(const OpenProject&) = delete;

    /// Attaches the component: libraries, grid set-up, the stored rows, Init. To be called once,
    /// after the grid has its window if it is to have one.
    void Attach();
    /// Forwards a button of the page or calls another member of the component without arguments.
    void Call(std::u16string_view member);
    /// True inside such a call: the component works and lets messages through.
    bool IsBusy() const { return calls_ > 0; }
    /// Puts the list back to what it was before its last change, or forward again; false when there
    /// is nothing to go to. Files on the disk stay as they are.
    bool Undo();
    bool Redo();
    const host::ListHistory& History() const { return host_->History(); }
    /// Puts other contents into rows, by the rows' "ID", shows them and writes the list back once.
    void ChangeFields(const std::map<std::int32_t, host::Document>& changes);
    /// Shows the project's actions anew.
    void ShowActions() const;
    host::Project& Project() { return *project_; }
    IDispatch* Grid() const { return grid_.Get(); }
    IDispatch* ActionsGrid() const { return actions_.Get(); }
    const Late& ActionsLate() const { return actionsLate_; }
    const Late& GridLate() const { return gridLate_; }
    /// The component.
    const Late& MainLate() const { return main_; }

private:
    bool GoTo(std::optional<host::ListHistory::List> list);

    std::shared_ptr<host::Project> project_;
    ComPtr<IDispatch> grid_;
    ComPtr<IDispatch> actions_;
    Late gridLate_;
    Late actionsLate_;
    Late main_;
    std::unique_ptr<host::Host> host_;
    int calls_ = 0;
};

} // namespace talvix::workbench
