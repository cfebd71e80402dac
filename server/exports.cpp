#include "platform/win32/com/server_exports.h"
#include "server/composition.h"

#include <talvix_dms_guids.h>

namespace talvix {

const ServerClass& Server() {
    static const ServerClass server{CLSID_Main,
                                    {GuidText(CLSID_Main),
                                     GuidText(LIBID_TalvixDMS),
                                     u"TalvixDMS.Main",
                                     u"TalvixDMS Dokumentenverwaltung",
                                     false,
                                     0,
                                     sizeof(void*) == 8,
                                     {}},
                                    MakeMain,
                                    kInterfacesOfTalvixDMS};
    return server;
}

} // namespace talvix
