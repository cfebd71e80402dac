#include "workbench/program/message_file.h"

#include "automation/failure.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/owned.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"
#include "workbench/host/message_storage.h"
#include "workbench/host/mime_reader.h"

#include <windows.h>
#include <objbase.h>

namespace talvix::workbench {

namespace {

constexpr DWORD kNewElement = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr std::int64_t kLongest = std::int64_t{512} * 1024 * 1024;

Failure CannotWrite(std::u16string_view path, DWORD error) {
    return Failure(static_cast<std::int32_t>(HRESULT_FROM_WIN32(error)),
                   u"Die Datei \"" + std::u16string(path) +
                       u"\" kann nicht geschrieben werden.\r\n" + SystemText(error));
}

void Check(HRESULT result) {
    if (FAILED(result)) {
        throw Failure(result, SystemText(static_cast<DWORD>(result)));
    }
}

void WriteStorage(IStorage* storage, const host::MessageStorage& content) {
    for (const auto& [name, bytes] : content.streams) {
        ComPtr<IStream> stream;
        Check(storage->CreateStream(Wide(name), kNewElement, 0, 0, stream.Out()));
        Check(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
    }
    for (const host::MessageStorage& each : content.storages) {
        ComPtr<IStorage> inner;
        Check(storage->CreateStorage(Wide(each.name), kNewElement, 0, 0, inner.Out()));
        WriteStorage(inner.Get(), each);
    }
}

} // namespace

void WriteMessageFile(const host::Mail& mail, std::u16string_view path) {
    ComPtr<IStorage> storage;
    const HRESULT made =
        StgCreateDocfile(Wide(std::u16string(path)), kNewElement, 0, storage.Out());
    if (FAILED(made)) {
        throw CannotWrite(path, static_cast<DWORD>(made));
    }
    WriteStorage(storage.Get(), host::ToMessageStorage(mail));
    Check(storage->Commit(STGC_DEFAULT));
}

host::Mail ReadMailFile(std::u16string_view path) {
    const std::u16string name(path);
    const OwnedFile file(
        CreateFileW(Wide(name), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER length{};
    if (!file || GetFileSizeEx(file.Get(), &length) == FALSE) {
        const DWORD error = GetLastError();
        throw Failure(failure_number::kUnexpected, u"Die Datei \"" + name +
                                                       u"\" kann nicht gelesen werden.\r\n" +
                                                       SystemText(error));
    }
    if (length.QuadPart > kLongest) {
        throw Failure(failure_number::kUnexpected,
                      u"Die Datei \"" + name + u"\" ist zu groß für eine E-Mail (über 512 MB).");
    }
    std::string content(static_cast<std::size_t>(length.QuadPart), '\0');
    DWORD read = 0;
    ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    content.resize(read);
    try {
        return host::ReadMime(content);
    } catch (const Failure& failure) {
        throw Failure(failure.Number(), u"\"" + name + u"\": " + failure.Text());
    }
}

void WriteWholeFile(std::u16string_view path, std::string_view content) {
    const OwnedFile file(CreateFileW(Wide(std::u16string(path)), GENERIC_WRITE, 0, nullptr,
                                     CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (!file || WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &written,
                           nullptr) == FALSE) {
        throw CannotWrite(path, GetLastError());
    }
}

} // namespace talvix::workbench
