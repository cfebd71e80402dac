#include "workbench/program/project_place.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"
#include "workbench/host/project_text.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace talvix::workbench {

namespace {

constexpr const char16_t* kVersionFolder = u".Fassungen";
constexpr const char16_t* kExtension = u".talvix";

std::u16string FolderOf(std::u16string_view path) {
    return std::u16string(path) + kVersionFolder;
}

/// A name's part before the extension.
std::u16string StemOf(std::u16string_view path) {
    const std::u16string_view name = path.substr(path.find_last_of(u"\\/") + 1);
    return std::u16string(name.substr(0, name.rfind(u'.')));
}

std::u16string StampOf(const SYSTEMTIME& time) {
    return DecimalText(time.wYear) + u"-" + PaddedText(time.wMonth, 2) + u"-" +
           PaddedText(time.wDay, 2) + u" " + PaddedText(time.wHour, 2) + u"-" +
           PaddedText(time.wMinute, 2) + u"-" + PaddedText(time.wSecond, 2);
}

SYSTEMTIME LocalTimeOf(const FILETIME& written) {
    FILETIME local{};
    SYSTEMTIME time{};
    FileTimeToLocalFileTime(&written, &local);
    FileTimeToSystemTime(&local, &time);
    return time;
}

/// The stamp in "STEM 2026-11-21 09-30-05.talvix" or "STEM 2026-11-21 09-30-05 (2).talvix"; "" for
/// every other name.
std::u16string StampIn(std::u16string_view name, std::u16string_view stem) {
    constexpr std::u16string_view shape = u" dddd-dd-dd dd-dd-dd";
    if (!name.starts_with(stem) || !name.ends_with(kExtension) ||
        name.size() < stem.size() + shape.size()) {
        return {};
    }
    const std::u16string_view stamp = name.substr(stem.size(), shape.size());
    const bool fits =
        std::equal(stamp.begin(), stamp.end(), shape.begin(), [](char16_t c, char16_t s) {
            return s == u'd' ? c >= u'0' && c <= u'9' : c == s;
        });
    return fits ? std::u16string(stamp.substr(1)) : std::u16string();
}

std::u16string Readable(std::u16string stamp) {
    std::replace(stamp.begin() + 11, stamp.end(), u'-', u':');
    return stamp;
}

[[noreturn]] void Refuse(const std::u16string& what, DWORD error) {
    throw Failure(static_cast<std::int32_t>(HRESULT_FROM_WIN32(error)),
                  what + u"\r\n" + SystemText(error));
}

bool WriteWhole(const std::u16string& path, const std::string& bytes) {
    const OwnedFile file(CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) != FALSE &&
           written == bytes.size() && FlushFileBuffers(file.Get()) != FALSE;
}

/// Copies what stands in the file to its versions; a version of that second that is the same file
/// is there already.
bool KeepVersion(const std::u16string& path) {
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (GetFileAttributesExW(Wide(path), GetFileExInfoStandard, &facts) == FALSE) {
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    }
    const std::u16string folder = FolderOf(path);
    CreateDirectoryW(Wide(folder), nullptr);
    const std::u16string name =
        folder + u"\\" + StemOf(path) + u" " + StampOf(LocalTimeOf(facts.ftLastWriteTime));
    const std::u16string temporary = name + u".~neu";
    if (CopyFileW(Wide(path), Wide(temporary), FALSE) == FALSE) {
        return false;
    }
    std::u16string target = name + kExtension;
    for (int number = 2; MoveFileExW(Wide(temporary), Wide(target), 0) == FALSE; ++number) {
        const DWORD error = GetLastError();
        if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) {
            DeleteFileW(Wide(temporary));
            SetLastError(error);
            return false;
        }
        target = name + u" (" + DecimalText(number) + u")" + kExtension;
    }
    return true;
}

/// Somebody who just reads the old file, such as a virus scanner, is waited for.
bool PutInPlace(const std::u16string& temporary, const std::u16string& path) {
    constexpr int kTries = 60;
    constexpr DWORD kPause = 50; // milliseconds
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(Wide(temporary), Wide(path),
                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE) {
            return true;
        }
        const DWORD error = GetLastError();
        if ((error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) ||
            attempt == kTries) {
            SetLastError(error);
            return false;
        }
        Sleep(kPause);
    }
}

void DropOldVersions(std::u16string_view path) {
    const std::vector<ProjectVersion> versions = VersionsOf(path);
    for (std::size_t at = ProjectPlace::kMostVersions; at < versions.size(); ++at) {
        DeleteFileW(Wide(versions[at].path));
    }
}

std::u16string OwnName() {
    std::array<wchar_t, 257> user{};
    std::array<wchar_t, 257> computer{};
    auto length = static_cast<DWORD>(user.size());
    GetUserNameW(user.data(), &length);
    length = static_cast<DWORD>(computer.size());
    GetComputerNameW(computer.data(), &length);
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return TextOf(user.data()) + u" (" + TextOf(computer.data()) + u"), seit " +
           Readable(StampOf(now));
}

/// Who has claimed a file; "" when that cannot be read.
std::u16string ClaimedBy(const std::u16string& claim) {
    const OwnedFile file(CreateFileW(Wide(claim), GENERIC_READ,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
    std::u16string text(600, u'\0');
    DWORD read = 0;
    if (!file ||
        ReadFile(file.Get(), text.data(), static_cast<DWORD>(text.size() * sizeof(char16_t)), &read,
                 nullptr) == FALSE) {
        return {};
    }
    text.resize(read / sizeof(char16_t));
    return text;
}

} // namespace

std::vector<ProjectVersion> VersionsOf(std::u16string_view projectPath) {
    const std::u16string folder = FolderOf(projectPath);
    const std::u16string stem = StemOf(projectPath);
    std::vector<ProjectVersion> versions;
    WIN32_FIND_DATAW found{};
    const OwnedFind search(FindFirstFileW(Wide(folder + u"\\*"), &found));
    for (BOOL more = search ? TRUE : FALSE; more != FALSE;
         more = FindNextFileW(search.Get(), &found)) {
        const std::u16string name = TextOf(found.cFileName);
        if (std::u16string stamp = StampIn(name, stem); !stamp.empty()) {
            versions.push_back({folder + u"\\" + name, Readable(std::move(stamp))});
        }
    }
    std::sort(versions.begin(), versions.end(), [](const auto& left, const auto& right) {
        return left.path.size() != right.path.size() && left.savedAt == right.savedAt
                   ? left.path.size() > right.path.size()
                   : left.path > right.path;
    });
    return versions;
}

ProjectPlace ProjectPlace::Claim(std::u16string_view path) {
    ProjectPlace place = ForReading(path);
    const std::u16string claim = place.path_ + u".~offen";
    place.claim_.Reset(CreateFileW(Wide(claim), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                   OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE,
                                   nullptr));
    if (!place.claim_) {
        const DWORD error = GetLastError();
        if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION) {
            const std::u16string who = ClaimedBy(claim);
            throw Failure(kClaimed, u"Das Projekt \"" + place.path_ + u"\" wird gerade bearbeitet" +
                                        (who.empty() ? std::u16string() : u" von " + who) + u".");
        }
        Refuse(u"Das Projekt \"" + place.path_ + u"\" kann nicht zum Bearbeiten geöffnet werden.",
               error);
    }
    const std::u16string own = OwnName();
    DWORD written = 0;
    WriteFile(place.claim_.Get(), own.data(), static_cast<DWORD>(own.size() * sizeof(char16_t)),
              &written, nullptr);
    SetEndOfFile(place.claim_.Get()); // a crash of the whole machine may have left a longer one
    return place;
}

ProjectPlace ProjectPlace::ForReading(std::u16string_view path) {
    std::u16string full(32768, u'\0');
    const DWORD length = GetFullPathNameW(
        Wide(std::u16string(path)), static_cast<DWORD>(full.size()), WideBuffer(full), nullptr);
    ProjectPlace place;
    place.path_ =
        length == 0 || length >= full.size() ? std::u16string(path) : full.substr(0, length);
    return place;
}

void ProjectPlace::Save(const host::Project& project) const {
    const std::u16string refusal = u"Die Datei \"" + path_ + u"\" kann nicht gespeichert werden.";
    if (!MayWrite()) {
        throw Failure(static_cast<std::int32_t>(E_ACCESSDENIED),
                      refusal + u"\r\nDas Projekt wurde nur zum Lesen geöffnet; speichern Sie es "
                                u"unter einem anderen Namen.");
    }
    const std::u16string temporary = path_ + u".~neu";
    if (!WriteWhole(temporary, ToUtf8(host::ProjectXml(project))) || !KeepVersion(path_) ||
        !PutInPlace(temporary, path_)) {
        const DWORD error = GetLastError();
        DeleteFileW(Wide(temporary));
        Refuse(refusal, error);
    }
    DropOldVersions(path_);
}

} // namespace talvix::workbench
