// record_opened WHAT: writes what it was started for, and in which folder, into the file that the
// environment variable TALVIX_RECORD names.
#include "automation/text.h"
#include "platform/win32/wide.h"

#include <windows.h>

#include <cstdio>
#include <string>

int wmain(int count, wchar_t** arguments) {
    using namespace talvix;
    std::u16string folder(1024, u'\0');
    folder.resize(GetCurrentDirectoryW(1024, WideBuffer(folder)));
    std::u16string file(1024, u'\0');
    file.resize(GetEnvironmentVariableW(L"TALVIX_RECORD", WideBuffer(file), 1024));
    FILE* record = _wfopen(Wide(file), L"wb");
    if (record == nullptr) {
        return 1;
    }
    const std::u16string what = count > 1 ? TextOf(arguments[1]) : std::u16string();
    std::fprintf(record, "%s\n%s\n", ToUtf8(what).c_str(), ToUtf8(folder).c_str());
    std::fclose(record);
    return 0;
}
