#include "workbench/program/trace_tail.h"

#include "automation/text.h"
#include "platform/win32/files.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <windows.h>

#include <algorithm>

namespace talvix::workbench {

namespace {

constexpr std::int64_t kMostBytes = 1'000'000;

std::int64_t LengthOf(const std::u16string& path) {
    const auto facts = Win32Files().Query(path);
    return facts ? facts->length : 0;
}

} // namespace

TraceTail::TraceTail()
    : path_(Win32Files().TemporaryFolder() + u"\\TalvixDMS.log"), start_(LengthOf(path_)) {}

std::vector<std::u16string> TraceTail::Lines() const {
    const std::int64_t length = std::min(LengthOf(path_) - start_, kMostBytes);
    const OwnedFile file(CreateFileW(Wide(path_), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER start{};
    start.QuadPart = start_;
    if (length <= 0 || !file || SetFilePointerEx(file.Get(), start, nullptr, FILE_BEGIN) == FALSE) {
        return {};
    }
    std::string bytes(static_cast<std::size_t>(length), '\0');
    DWORD read = 0;
    ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    const std::u16string text = FromUtf8(std::string_view(bytes).substr(0, read));
    std::vector<std::u16string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(u"\r\n", at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

} // namespace talvix::workbench
