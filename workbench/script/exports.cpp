#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/com/server_exports.h"
#include "workbench/script/project_object.h"

#include <talvix_project_guids.h>

namespace talvix {

const ServerClass& Server() {
    static const ServerClass server{
        CLSID_Project,
        {GuidText(CLSID_Project),
         GuidText(LIBID_TalvixProject),
         u"TalvixWorkbench.Project",
         u"Talvix Workbench, Projekt",
         false,
         0,
         sizeof(void*) == 8,
         {}},
        [] { return UnknownOf(std::make_shared<workbench::ProjectObject>()); },
        kInterfacesOfTalvixProject};
    return server;
}

} // namespace talvix
