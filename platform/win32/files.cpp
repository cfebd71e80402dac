#include "platform/win32/files.h"

#include "automation/failure.h"
#include "platform/win32/owned.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"

namespace talvix {

namespace {

/// Folders need room for an 8.3 name below them, so the classic limit bites 12 earlier.
constexpr std::size_t kClassicLimit = 247;
constexpr std::u16string_view kNeverInNames{u"*?\0", 3};

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

Failure Failed(DWORD error, std::u16string_view path) {
    return Failure(static_cast<std::int32_t>(HRESULT_FROM_WIN32(error)),
                   std::u16string(path) + u": " + SystemText(error));
}

} // namespace

std::u16string ExtendedPath(std::u16string_view path) {
    if (path.size() <= kClassicLimit || path.starts_with(u"\\\\?\\")) {
        return std::u16string(path);
    }
    if (path.starts_with(u"\\\\")) {
        return u"\\\\?\\UNC" + std::u16string(path.substr(1));
    }
    return path[1] == u':' ? u"\\\\?\\" + std::u16string(path) : std::u16string(path);
}

std::optional<FileFacts> Win32Files::Query(std::u16string_view path) {
    if (path.empty() || path.find_first_of(kNeverInNames) != std::u16string_view::npos) {
        return std::nullopt;
    }
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(Wide(ExtendedPath(path)), GetFileExInfoStandard, &data) == FALSE) {
        return std::nullopt;
    }
    const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return FileFacts{isFolder, isFolder ? 0 : LengthOf(data.nFileSizeHigh, data.nFileSizeLow)};
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
