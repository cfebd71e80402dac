#include "workbench/program/text_file.h"

#include "automation/failure.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <windows.h>

namespace talvix::workbench {

void WriteTextFile(std::u16string_view path, std::u16string_view text) {
    const std::u16string target(path);
    const OwnedFile file(CreateFileW(Wide(target), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    const std::u16string marked = u"\uFEFF" + std::u16string(text);
    const auto bytes = static_cast<DWORD>(marked.size() * sizeof(char16_t));
    DWORD written = 0;
    if (!file || WriteFile(file.Get(), marked.data(), bytes, &written, nullptr) == FALSE) {
        throw Failure(failure_number::kUnexpected,
                      u"Die Datei \"" + target + u"\" kann nicht geschrieben werden.");
    }
}

} // namespace talvix::workbench
