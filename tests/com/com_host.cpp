#include "tests/com/com_host.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

namespace talvix {

namespace {

void Collect(HKEY root, const std::u16string& path, std::vector<std::u16string>& lines) {
    OwnedKey key;
    if (RegOpenKeyExW(root, Wide(path), 0, KEY_READ, key.Out()) != ERROR_SUCCESS) {
        return;
    }
    lines.push_back(path);
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];
        wchar_t data[1024]{};
        DWORD length = 256;
        DWORD bytes = sizeof data - 2;
        if (RegEnumValueW(key.Get(), index, name, &length, nullptr, nullptr,
                          reinterpret_cast<BYTE*>(data), &bytes) != ERROR_SUCCESS) {
            break;
        }
        lines.push_back(path + u" : " + TextOf(name) + u" = " + TextOf(data));
    }
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];
        DWORD length = 256;
        if (RegEnumKeyExW(key.Get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            break;
        }
        Collect(root, path + u"\\" + TextOf(name), lines);
    }
}

void RemoveTree(const std::u16string& folder) {
    WIN32_FIND_DATAW data{};
    {
        const OwnedFind find(FindFirstFileW(Wide(folder + u"\\*"), &data));
        for (bool more = static_cast<bool>(find); more;
             more = FindNextFileW(find.Get(), &data) != FALSE) {
            const std::u16string name = TextOf(data.cFileName);
            const std::u16string path = folder + u"\\" + name;
            if (name == u"." || name == u"..") {
                continue;
            }
            if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
                RemoveTree(path);
            } else {
                DeleteFileW(Wide(path));
            }
        }
    }
    RemoveDirectoryW(Wide(folder));
}

} // namespace

std::u16string ProductFolder() {
    std::u16string path(512, u'\0');
    path.resize(GetModuleFileNameW(nullptr, WideBuffer(path), 512));
    return path.substr(0, path.rfind(u'\\') + 1);
}

HRESULT CreateByName(std::u16string_view programId, ComPtr<IDispatch>& object) {
    CLSID id{};
    const std::u16string name(programId);
    const HRESULT found = CLSIDFromProgID(Wide(name), &id);
    return FAILED(found) ? found
                         : CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                            object.OutAny());
}

Late CreateByName(std::u16string_view programId) {
    ComPtr<IDispatch> object;
    const HRESULT result = CreateByName(programId, object);
    if (FAILED(result)) {
        throw Failure(result, u"Cannot be created: " + std::u16string(programId));
    }
    return Late(WrapDispatch(object.Get()));
}

HRESULT CallExport(std::u16string_view file, const char* name) {
    const std::u16string path = ProductFolder() + std::u16string(file);
    HMODULE module = LoadLibraryW(Wide(path));
    if (module == nullptr) {
        return HRESULT_FROM_WIN32(GetLastError());
    }
    using Export = HRESULT(WINAPI*)();
    const auto call =
        reinterpret_cast<Export>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    const HRESULT result = call == nullptr ? E_NOINTERFACE : call();
    FreeLibrary(module);
    return result;
}

std::vector<std::u16string> RegistrySnapshot(HKEY root, const std::vector<std::u16string>& keys) {
    std::vector<std::u16string> lines;
    for (const std::u16string& key : keys) {
        Collect(root, u"Software\\Classes\\" + key, lines);
    }
    return lines;
}

TemporaryFolder::TemporaryFolder() {
    std::u16string folder(MAX_PATH, u'\0');
    folder.resize(GetTempPathW(MAX_PATH, WideBuffer(folder)));
    static int count = 0;
    do { // a program that was killed, of the same number, has left its folders
        path_ = folder + u"talvix-test-" + DecimalText(GetCurrentProcessId()) + u"-" +
                DecimalText(++count);
    } while (CreateDirectoryW(Wide(path_), nullptr) == FALSE &&
             GetLastError() == ERROR_ALREADY_EXISTS);
}

TemporaryFolder::~TemporaryFolder() {
    RemoveTree(path_);
}

std::u16string TemporaryFolder::Make(std::u16string_view name, std::size_t bytes) const {
    const std::u16string path = path_ + u"\\" + std::u16string(name);
    const OwnedFile file(
        CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    const std::string content(bytes, 'x');
    DWORD written = 0;
    WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    return path;
}

std::u16string TemporaryFolder::MakeFolder(std::u16string_view name) const {
    const std::u16string path = path_ + u"\\" + std::u16string(name);
    CreateDirectoryW(Wide(path), nullptr);
    return path;
}

} // namespace talvix
