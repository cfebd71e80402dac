#include "bench/bench.h"

#include "automation/text.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <ole2.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <psapi.h>
#include <vector>

namespace talvix::bench {

namespace {

constexpr double kSteady = 0.25;
constexpr double kWatched = 3;  ///< seconds that a profiler gets to see at least,
constexpr int kMostTurns = 100; ///< unless these are over before
bool tellsTimes = false;

struct Series {
    double Median() const { return ratios[ratios.size() / 2]; }
    double Spread() const { return (ratios.back() - ratios.front()) / Median(); }
    std::vector<double> ratios;
    double secondsA = 0;
    double secondsB = 0;
};

Series Run(const std::function<double()>& a, const std::function<double()>& b, int pairs) {
    Series series;
    for (int pair = 0; pair < pairs; ++pair) {
        const double timeA = a();
        const double timeB = b();
        series.secondsA += timeA / pairs;
        series.secondsB += timeB / pairs;
        series.ratios.push_back(timeA / timeB);
    }
    std::sort(series.ratios.begin(), series.ratios.end());
    return series;
}

/// Lets a profiler watch a job for a while.
void Repeat(const std::function<double()>& job) {
    TellTimes(true);
    double watched = 0;
    for (int turn = 0; turn < kMostTurns && watched < kWatched; ++turn) {
        watched += job();
    }
    TellTimes(false);
}

} // namespace

double Now() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double Since(double start) {
    const double end = Now();
    if (tellsTimes) {
        std::printf("[ SPAN     ] %.7f %.7f\n", start, end);
    }
    return end - start;
}

void TellTimes(bool tells) {
    tellsTimes = tells;
}

const char* ProfiledRow() {
    return std::getenv("TALVIX_PROFILE");
}

void Compare(const Question& question, const std::function<double()>& a,
             const std::function<double()>& b, int pairs) {
    if (const char* profiled = ProfiledRow()) {
        if (question.id == profiled) {
            Repeat(a);
        }
        return;
    }
    a();
    b();
    Series series = Run(a, b, pairs);
    const bool isRerun = series.Spread() > kSteady;
    if (isRerun) {
        Series again = Run(a, b, pairs);
        if (again.Spread() < series.Spread()) {
            series = std::move(again);
        }
    }
    std::printf("[ BENCH    ] %s | %s | %g | %.4g | %.4g | %.4g | %.4g | %.4g | %d%s\n",
                question.id.c_str(), question.what.c_str(), question.goal, series.Median(),
                series.ratios.front(), series.ratios.back(), series.secondsA * 1000,
                series.secondsB * 1000, pairs, isRerun ? ", rerun" : "");
    std::fflush(stdout);
}

void Report(const Question& question, double figure, const std::string& unit) {
    std::printf("[ BENCH    ] %s | %s | %g | %.4g | %s\n", question.id.c_str(),
                question.what.c_str(), question.goal, figure, unit.c_str());
    std::fflush(stdout);
}

void Require(bool isEqual, const std::string& what) {
    if (!isEqual) {
        std::printf("%s: the results differ, so that no time counts\n", what.c_str());
        std::exit(3);
    }
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
