#include "tests/com/com_host.h"
#include "tests/grid/grid_rig.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace talvix {

namespace grid {

/// The contract's cases run against the registered control as well.
Late GridUnderTest() {
    return CreateByName(u"TalvixGrid.Grid");
}

} // namespace grid

} // namespace talvix

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    for (const auto* file : {u"TalvixDMS.dll", u"TalvixGrid.ocx"}) {
        if (FAILED(talvix::CallExport(file, "DllRegisterServer"))) {
            std::printf("The servers cannot be registered\n");
            return 2;
        }
    }
    const int result = RUN_ALL_TESTS();
    for (const auto* file : {u"TalvixDMS.dll", u"TalvixGrid.ocx"}) {
        talvix::CallExport(file, "DllUnregisterServer");
    }
    CoUninitialize();
    return result;
}
