#include "workbench/program/open_project.h"

#include "automation/failure.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"
#include "workbench/program/project_file.h"

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
    services.projectXml = [this] { return ProjectXml(*project_); };
    services.userName = UserName();
    host_ = std::make_unique<host::Host>(project_, std::move(services), gridLate_, actionsLate_);
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

void OpenProject::Call(std::u16string_view member) const {
    main_.Call(member);
}

} // namespace talvix::workbench
