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
/// Runs two jobs in turn, A-B-A-B, after a warm-up, and prints the median and the range of the
/// paired ratios A/B.
void Compare(const char* what, const std::function<double()>& a, const std::function<double()>& b,
             int pairs);
/// An object of a class; the manifest of the program or the registration leads to it. Ends the
/// program when there is none.
ComPtr<IDispatch> Create(std::u16string_view programId);
/// Bytes of this process that lie in memory.
std::size_t ResidentBytes();

int GridBench(const std::string& what);
int ImportBench(const std::u16string& folder);
/// The folder holds flach-10000, flach-100000, tief-10000 and tief-100000 with as many files each.
int LargeImportBench(const std::u16string& folder);
/// Sorting, grouping, painting and finding in windows; needs a display.
int ViewBench();
int FolderBench(const std::u16string& folder);

} // namespace talvix::bench
