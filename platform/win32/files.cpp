#include "platform/win32/files.h"

#include "automation/failure.h"
#include "platform/literal_path.h"
#include "platform/win32/owned.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"

#include <algorithm>

namespace talvix {

namespace {

/// Folders need room for an 8.3 name below them, so the classic limit bites 12 earlier.
constexpr std::size_t kClassicLimit = 247;

std::int64_t LengthOf(DWORD high, DWORD low) {
    return static_cast<std::int64_t>((static_cast<std::uint64_t>(high) << 32U) | low);
}

void Take(const WIN32_FIND_DATAW& data, FolderListing& listing) {
    const std::u16string name = TextOf(data.cFileName);
    const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool isLink = (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (!isFolder) {
        const FileFacts facts{false, LengthOf(data.nFileSizeHigh, data.nFileSizeLow)};
        listing.files.push_back({name, isLink ? std::nullopt : std::optional(facts)});
    } else if (name != u"." && name != u"..") {
        listing.folders.push_back(name);
    }
}

/// Without backslashes and slashes at the end, but the one of a drive.
std::u16string WithoutClosing(std::u16string path) {
    const std::size_t last = path.find_last_not_of(u"\\/");
    if (last != std::u16string::npos) {
        const bool isDrive = path[last] == u':' && last + 1 < path.size();
        path.resize(last + (isDrive ? 2 : 1));
    }
    return path;
}

Failure Failed(DWORD error, std::u16string_view path) {
    return Failure(static_cast<std::int32_t>(HRESULT_FROM_WIN32(error)),
                   std::u16string(path) + u": " + SystemText(error));
}

/// As the system resolves it at one go.
std::u16string ResolvedOnce(const std::u16string& path) {
    if (path.empty()) {
        return {};
    }
    std::u16string full(GetFullPathNameW(Wide(path), 0, nullptr, nullptr), u'\0');
    const auto room = static_cast<DWORD>(full.size());
    const DWORD units = GetFullPathNameW(Wide(path), room, WideBuffer(full), nullptr);
    if (units == 0 || units >= room) {
        throw Failed(GetLastError(), path);
    }
    full.resize(units);
    // Some systems leave a doubled one behind a share's name.
    const auto end = std::unique(full.begin() + 1, full.end(), [](char16_t left, char16_t right) {
        return left == u'\\' && right == u'\\';
    });
    full.erase(end, full.end());
    return full;
}

} // namespace

std::u16string ExtendedPath(std::u16string_view path) {
    if (path.size() <= kClassicLimit || path.starts_with(kLiteralMark)) {
        return std::u16string(path);
    }
    if (path.starts_with(u"\\\\")) {
        return u"\\\\?\\UNC" + std::u16string(path.substr(1));
    }
    return path[1] == u':' ? u"\\\\?\\" + std::u16string(path) : std::u16string(path);
}

std::optional<FileFacts> Win32Files::Query(std::u16string_view path) {
    if (path.empty() || path.find(u'\0') != std::u16string_view::npos || HoldsWildcards(path)) {
        return std::nullopt;
    }
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(Wide(ExtendedPath(path)), GetFileExInfoStandard, &data) == FALSE) {
        return std::nullopt;
    }
    const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return FileFacts{isFolder, isFolder ? 0 : LengthOf(data.nFileSizeHigh, data.nFileSizeLow)};
}

std::u16string Win32Files::FullPath(std::u16string_view path) {
    std::u16string full(path);
    // What is taken off an end can bare another one: "a...\...".
    for (std::u16string given; given != full;) {
        given = WithoutClosing(std::move(full));
        full = WithoutClosing(ResolvedOnce(given));
    }
    return full;
}

FolderListing Win32Files::List(std::u16string_view folder) {
    std::u16string pattern(folder);
    if (pattern.empty() || pattern.back() != u'\\') {
        pattern += u'\\';
    }
    pattern += u'*';
    FolderListing listing;
    WIN32_FIND_DATAW data{};
    const OwnedFind find(FindFirstFileW(Wide(ExtendedPath(pattern)), &data));
    if (!find) {
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND) {
            return listing; // the root of an empty drive has not even "."
        }
        throw Failed(error, folder);
    }
    do {
        Take(data, listing);
    } while (FindNextFileW(find.Get(), &data) != FALSE);
    listing.isWhole = GetLastError() == ERROR_NO_MORE_FILES;
    return listing;
}

void Win32Files::CreateFolder(std::u16string_view path) {
    if (CreateDirectoryW(Wide(ExtendedPath(path)), nullptr) == FALSE) {
        throw Failed(GetLastError(), path);
    }
}

Renamed Win32Files::Rename(std::u16string_view from, std::u16string_view to) {
    // Without a flag that says so nothing is replaced, and no copy is made on another volume.
    if (MoveFileExW(Wide(ExtendedPath(from)), Wide(ExtendedPath(to)), 0) != FALSE) {
        return Renamed::Done;
    }
    const DWORD error = GetLastError();
    if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS || Query(to)) {
        return Renamed::Taken;
    }
    throw Failed(error, to);
}

void Win32Files::Remove(std::u16string_view path) {
    const std::u16string file = ExtendedPath(path);
    if (DeleteFileW(Wide(file)) != FALSE) {
        return;
    }
    const DWORD error = GetLastError();
    SetFileAttributesW(Wide(file), FILE_ATTRIBUTE_NORMAL); // a copy of a read-only file is one too
    if (error != ERROR_ACCESS_DENIED || DeleteFileW(Wide(file)) == FALSE) {
        throw Failed(error, path);
    }
}

std::u16string Win32Files::TemporaryFolder() {
    std::u16string path(MAX_PATH + 1, u'\0');
    path.resize(GetTempPathW(static_cast<DWORD>(path.size()), WideBuffer(path)));
    while (path.ends_with(u'\\')) {
        path.pop_back();
    }
    return path;
}

std::u16string Win32Files::CurrentFolder() {
    std::u16string path(GetCurrentDirectoryW(0, nullptr), u'\0');
    path.resize(GetCurrentDirectoryW(static_cast<DWORD>(path.size()), WideBuffer(path)));
    return path;
}

} // namespace talvix
