#include "bench/bench.h"

#include "automation/text.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <ole2.h>

#include <algorithm>
#include <cstdio>
#include <psapi.h>
#include <vector>

namespace talvix::bench {

double Now() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void Compare(const char* what, const std::function<double()>& a, const std::function<double()>& b,
             int pairs) {
    a();
    b();
    std::vector<double> ratios;
    double sumA = 0;
    double sumB = 0;
    for (int pair = 0; pair < pairs; ++pair) {
        const double timeA = a();
        const double timeB = b();
        sumA += timeA;
        sumB += timeB;
        ratios.push_back(timeA / timeB);
    }
    std::sort(ratios.begin(), ratios.end());
    std::printf("%-60s %8.3f  (%.3f to %.3f; %.1f ms against %.1f ms)\n", what,
                ratios[ratios.size() / 2], ratios.front(), ratios.back(), sumA * 1000 / pairs,
                sumB * 1000 / pairs);
    std::fflush(stdout);
}

ComPtr<IDispatch> Create(std::u16string_view programId) {
    CLSID id{};
    const std::u16string name(programId);
    ComPtr<IDispatch> object;
    if (FAILED(CLSIDFromProgID(Wide(name), &id)) ||
        FAILED(
            CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutAny()))) {
        std::printf("%s cannot be created\n", ToUtf8(name).c_str());
        std::exit(2);
    }
    return object;
}

std::size_t ResidentBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.WorkingSetSize;
}

} // namespace talvix::bench

int main(int count, char** arguments) {
    OleInitialize(nullptr);
    const std::string what = count > 1 ? arguments[1] : "";
    const std::u16string folder = count > 2 ? talvix::FromUtf8(arguments[2]) : u"";
    int result = 2;
    if (what == "import" && !folder.empty()) {
        result = talvix::bench::ImportBench(folder);
    } else if (what == "import-large" && !folder.empty()) {
        result = talvix::bench::LargeImportBench(folder);
    } else if (what == "folder" && !folder.empty()) {
        result = talvix::bench::FolderBench(folder);
    } else if (what == "view") {
        result = talvix::bench::ViewBench();
    } else {
        result = talvix::bench::GridBench(what);
    }
    OleUninitialize();
    return result;
}
