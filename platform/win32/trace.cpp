#include "platform/win32/trace.h"

#include "automation/text.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

namespace talvix {

Win32Trace::Win32Trace(Registry& registry) {
    const auto on = registry.Read(kCurrentUser, u"Software\\Talvix\\DMS", u"Trace");
    if (!on || on->type != kRegistryNumber || on->number == 0) {
        return;
    }
    std::u16string folder(MAX_PATH + 1, u'\0');
    folder.resize(GetTempPathW(static_cast<DWORD>(folder.size()), WideBuffer(folder)));
    file_ = folder + u"TalvixDMS.log";
}

void Win32Trace::Note(std::u16string_view procedure, std::u16string_view text) {
    if (file_.empty()) {
        return;
    }
    const std::u16string line = std::u16string(procedure) + u": " + std::u16string(text) + u"\r\n";
    OutputDebugStringW(Wide(line));
    const OwnedFile file(CreateFileW(Wide(file_), FILE_APPEND_DATA,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file) {
        const std::string bytes = ToUtf8(line);
        DWORD written = 0;
        WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }
}

} // namespace talvix
