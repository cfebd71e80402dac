#include "grid/control/grid_control.h"
#include "platform/win32/com/server_exports.h"

#include <talvix_grid_guids.h>

namespace talvix {

const ServerClass& Server() {
    static const ServerClass server{CLSID_Grid,
                                    {GuidText(CLSID_Grid),
                                     GuidText(LIBID_TalvixGrid),
                                     u"TalvixGrid.Grid",
                                     u"Talvix Grid Control",
                                     true,
                                     grid::OleObjectPart::kMiscStatus,
                                     sizeof(void*) == 8,
                                     {}},
                                    grid::MakeGrid,
                                    kInterfacesOfTalvixGrid};
    return server;
}

} // namespace talvix
