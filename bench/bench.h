#pragma once

#include "platform/win32/com/com_ptr.h"

#include <windows.h>
#include <oaidl.h>

#include <functional>
#include <string>
#include <string_view>

namespace talvix::bench {

/// Seconds of a steady clock.
double Now();
/// Seconds from `start` until now.
double Since(double start);
/// Makes `Since` print its two times as well, where a profiler asks for them.
void TellTimes(bool tells);
/// The row that a profiler watches, from the environment variable TALVIX_PROFILE; null for none.
const char* ProfiledRow();

/// A row of the table.
struct Question {
    std::string id;   ///< what the row's reason, if it needs one, is found by
    std::string what; ///< "what is measured / what it is measured against"
    double goal = 0;  ///< the most that the figure may be; 0 for none
};

/// Runs two jobs in turn, A-B-A-B, after a warm-up of both, and tells the median and the range of
/// the paired ratios A/B. A job answers its seconds. A series that spreads by more than a quarter
/// of its median is run once more, and the steadier one counts. While a row is profiled,
/// only its A is run, several times.
void Compare(const Question& question, const std::function<double()>& a,
             const std::function<double()>& b, int pairs = 5);
/// Tells a figure that is no series.
void Report(const Question& question, double figure, const std::string& unit);
/// Two results that are to be the same before a time counts: ends the program when they are not.
void Require(bool isEqual, const std::string& what);

/// Seconds until the work's result is there; letting go of it is not counted.
template <typename Work>
double Timed(Work&& work) {
    const double start = Now();
    [[maybe_unused]] const auto result = work();
    return Since(start);
}

/// An object of a registered class. Ends the program when there is none.
ComPtr<IDispatch> Create(std::u16string_view programId);
/// Bytes of this process that lie in memory.
std::size_t ResidentBytes();

/// Filling 100,000 x 15 cells and removing a tenth of them.
int FillBench();
/// Bytes per row of one of "grid", "vector", "list": a process of its own for each.
int MemoryBench(const std::string& kind);
/// Sorting, grouping, painting and finding in windows; needs a display.
int ViewBench();
/// Only the painting of `ViewBench`.
int PaintBench();
/// Reading a folder in, twice, and removing what came; see make_import_folders in tools/bench for
/// what FOLDER holds.
int ImportBench(const std::u16string& folder);
/// What is held after cycles of reading 10,000 files in and removing them.
int CyclesBench(const std::u16string& folder);
/// The same by a script; SCRIPT is bench/import.vbs.
int ScriptBench(const std::u16string& folder, const std::u16string& script);
/// Opening a list of 10,000 documents.
int InitBench(const std::u16string& folder);
/// Copies into the project folder and conversions of paths. FOLDER is empty.
int FolderBench(const std::u16string& folder);
/// Members called by name.
int CallBench();
/// First creations, each in a process of its own, beside a minimal server's.
int CreationBench();
/// What one of those processes does: prints nothing, answers its microseconds as exit code.
int CreateOnce(const std::string& what);

} // namespace talvix::bench
