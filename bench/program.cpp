// talvix_bench PART [ARGUMENT…]: measures one part and prints a line for each row of the table.
// tools/bench runs all parts.
#include "automation/text.h"
#include "bench/bench.h"

#include <windows.h>
#include <ole2.h>

#include <cstdio>

namespace {

int Run(const std::string& part, const std::string& first, const std::string& second) {
    using namespace talvix::bench;
    if (part == "fill") {
        return FillBench();
    }
    if (part == "memory") {
        return MemoryBench(first);
    }
    if (part == "view") {
        return ViewBench();
    }
    if (part == "paint") {
        return PaintBench();
    }
    if (part == "import") {
        return ImportBench(talvix::FromUtf8(first));
    }
    if (part == "cycles") {
        return CyclesBench(talvix::FromUtf8(first));
    }
    if (part == "script") {
        return ScriptBench(talvix::FromUtf8(first), talvix::FromUtf8(second));
    }
    if (part == "init") {
        return InitBench(talvix::FromUtf8(first));
    }
    if (part == "folder") {
        return FolderBench(talvix::FromUtf8(first));
    }
    if (part == "call") {
        return CallBench();
    }
    if (part == "creation") {
        return CreationBench();
    }
    if (part == "once") {
        return CreateOnce(first);
    }
    std::printf("talvix_bench fill | memory KIND | view | paint | import FOLDER | cycles FOLDER | "
                "script FOLDER SCRIPT | init FOLDER | folder FOLDER | call | creation\n");
    return 2;
}

} // namespace

int main(int count, char** arguments) {
    OleInitialize(nullptr);
    const auto argument = [&](int at) { return std::string(count > at ? arguments[at] : ""); };
    const int result = Run(argument(1), argument(2), argument(3));
    OleUninitialize();
    return result;
}
