#include "workbench/program/open_project.h"

#include "automation/coercion.h"
#include "automation/failure.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"
#include "workbench/host/project_text.h"

namespace talvix::workbench {

namespace {

std::u16string UserName() {
    std::u16string name(257, u'\0');
    auto length = static_cast<DWORD>(name.size());
    name.resize(GetUserNameW(WideBuffer(name), &length) != FALSE && length > 0 ? length - 1 : 0);
    return name;
}

} // namespace

ComPtr<IDispatch> CreateObject(std::u16string_view programId) {
    CLSID id{};
    ComPtr<IDispatch> object;
    const std::u16string name(programId);
    HRESULT result = CLSIDFromProgID(Wide(name), &id);
    if (SUCCEEDED(result)) {
        result =
            CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutAny());
    }
    if (FAILED(result)) {
        throw Failure(result, u"Das Objekt \"" + name + u"\" kann nicht erzeugt werden.\r\n" +
                                  SystemText(static_cast<DWORD>(result)));
    }
    return object;
}

OpenProject::OpenProject(host::Project project, Show showMessage, std::function<void()> listWritten,
                         Export exportList)
    : project_(std::make_shared<host::Project>(std::move(project))),
      grid_(CreateObject(u"TalvixGrid.Grid")),
      actions_(CreateObject(u"TalvixGrid.Grid")),
      gridLate_(WrapDispatch(grid_.Get())),
      actionsLate_(WrapDispatch(actions_.Get())),
      main_(WrapDispatch(CreateObject(u"TalvixDMS.Main").Get())) {
    host::HostServices services;
    services.showMessage = std::move(showMessage);
    services.listWritten = std::move(listWritten);
    services.exportList = std::move(exportList);
    services.projectXml = [this] { return host::ProjectXml(*project_); };
    services.userName = UserName();
    host_ = std::make_unique<host::Host>(project_, std::move(services), gridLate_, actionsLate_);
    ShowActions();
}

void OpenProject::ShowActions() const {
    host::LoadActions(actionsLate_, project_->actions);
}

OpenProject::~OpenProject() {
    try {
        main_.Call(u"DereferenceLibraries");
    } catch (const Failure&) { // the project is closing all the same
    }
}

void OpenProject::Attach() {
    const std::vector<Value> libraries = host_->Libraries();
    main_.CallWith(u"ReferenceLibraries", libraries);
    main_.Call(u"InitSGDMS");
    host::LoadRows(gridLate_, project_->documents);
    main_.Call(u"Init");
}

bool OpenProject::GoTo(std::optional<host::ListHistory::List> list) {
    if (!list) {
        return false;
    }
    project_->documents = std::move(*list);
    project_->isChanged = true;
    gridLate_[u"Rows"].Call(u"Clear");
    host::LoadRows(gridLate_, project_->documents);
    main_.Call(u"Init");
    return true;
}

bool OpenProject::Undo() {
    return History().CanUndo() && GoTo(host_->History().Undo(project_->documents));
}

bool OpenProject::Redo() {
    return History().CanRedo() && GoTo(host_->History().Redo(project_->documents));
}

void OpenProject::ChangeFields(const std::map<std::int32_t, host::Document>& changes) {
    for (const auto& [id, fields] : changes) {
        const auto number = NumericContent(gridLate_.Call(u"Find", u"ID", id));
        if (!number || *number < 1) {
            continue;
        }
        const Late row = gridLate_(u"Rows", static_cast<std::int32_t>(*number));
        for (const auto& [key, value] : fields) {
            row.SetAt(u"Value", key, value);
        }
    }
    main_.Call(u"Init");
    Late(host_->Libraries()[1]).Call(u"WriteGridDataToItemBody");
}

void OpenProject::Call(std::u16string_view member) {
    struct Counted {
        explicit Counted(int& calls) : calls_(calls) { ++calls_; }
        Counted(const Counted&) = delete;
        Counted& operator=(const Counted&) = delete;
        ~Counted() { --calls_; }

    private:
        int& calls_;
    };
    const Counted counted(calls_);
    main_.Call(member);
}

} // namespace talvix::workbench
