#include "common/general.h"

#include "automation/failure.h"
#include "automation/text.h"

#include <cmath>

namespace talvix {

namespace {

constexpr std::int32_t kOverflow = static_cast<std::int32_t>(0x8002000A);
constexpr std::int64_t kPointsPerInch = 72;

std::u16string NameOfWindows95Line(std::uint32_t minor) {
    switch (minor) {
    case 0:
        return u"Win95";
    case 10:
        return u"Win98";
    case 90:
        return u"WinME";
    default:
        return u"Unknown";
    }
}

/// No answer for other minor versions, on purpose.
std::u16string NameOfVersion5(std::uint32_t minor) {
    switch (minor) {
    case 0:
        return u"Windows 2000";
    case 1:
        return u"Windows XP";
    case 2:
        return u"Windows 2003";
    default:
        return u"";
    }
}

std::u16string NameOfNtLine(const SystemVersion& version) {
    switch (version.major) {
    case 3:
        return u"NT 3.51";
    case 4:
        return u"NT 4.0";
    case 5:
        return NameOfVersion5(version.minor);
    default:
        return u"Unknown";
    }
}

} // namespace

bool FileExistsOnDisk(Files& files, std::u16string_view path) {
    const auto facts = files.Query(path);
    return facts && !facts->isFolder;
}

std::int32_t GetSmallIconIndex(Shell& shell, std::u16string_view path) {
    return shell.Classes().IconIndex(path);
}

std::u16string GetFileName(std::u16string_view path) {
    if (Trim(path).empty()) {
        return {};
    }
    const std::size_t last = path.rfind(u'\\');
    return std::u16string(last == std::u16string_view::npos ? path : path.substr(last + 1));
}

std::u16string GetFolderPath(std::u16string_view path) {
    const std::size_t last = path.find_last_of(u":\\");
    if (last == std::u16string_view::npos) {
        return {};
    }
    return std::u16string(path.substr(0, path[last] == u':' ? last + 1 : last));
}

std::u16string BuildPath(std::u16string_view folder, std::u16string_view name) {
    if (folder.empty() || name.empty()) {
        return std::u16string(folder) + std::u16string(name);
    }
    while (folder.ends_with(u'\\')) {
        folder.remove_suffix(1);
    }
    while (name.starts_with(u'\\')) {
        name.remove_prefix(1);
    }
    return std::u16string(folder) + u"\\" + std::u16string(name);
}

std::u16string GetExtensionName(std::u16string_view path) {
    const std::size_t last = path.find_last_of(u".\\");
    return std::u16string(last == std::u16string_view::npos || path[last] != u'.'
                              ? std::u16string_view()
                              : path.substr(last + 1));
}

std::u16string GetFileTypeName(Shell& shell, std::u16string_view path) {
    return shell.TypeName(path);
}

float PixelsToPoints(SystemInfo& system, std::int32_t pixels) {
    const std::int64_t scaled = pixels * kPointsPerInch;
    if (scaled < INT32_MIN || scaled > INT32_MAX) {
        throw Failure(kOverflow, u"The number of pixels is too large");
    }
    return static_cast<float>(
        std::fabs(static_cast<double>(scaled) / static_cast<double>(system.PixelsPerInch())));
}

std::u16string GetOSName(SystemInfo& system) {
    const auto version = system.Version();
    if (!version) {
        return {};
    }
    switch (version->platform) {
    case 0:
        return u"Win 3.1";
    case 1:
        return NameOfWindows95Line(version->minor);
    case 2:
        return NameOfNtLine(*version);
    default:
        return u"Unknown";
    }
}

} // namespace talvix
