// store_together [PROCESSES [DOCUMENTS]]: as many programs as are asked for store documents under
// the same names into one folder through the registered component, all at once. Every document has
// to arrive, whole and under a name of its own.
#include "automation/text.h"
#include "platform/win32/files.h"
#include "tests/com/component_rig.h"
#include "tests/com/saving_item.h"

#include <cstdio>
#include <cstdlib>
#include <set>

namespace talvix {

namespace {

void WaitFor(const std::u16string& signal) {
    while (!Win32Files().Query(signal)) {
        Sleep(20);
    }
}

/// One user of many: a temporary folder of his own, mails with the same attachments as everybody's.
int StoreAll(const std::u16string& folder, const std::string& user, int documents) {
    ComponentRig rig;
    SetEnvironmentVariableW(L"TMP", Wide(rig.folder.Path()));
    rig.property->With(u"Value", folder);
    rig.Attach();
    std::vector<RealAttachment> attachments;
    for (int number = 1; number <= documents; ++number) {
        attachments.push_back({u"Dokument " + DecimalText(number) + u".txt",
                               "Benutzer " + user + " Dokument " + std::to_string(number)});
    }
    WaitFor(folder + u"\\..\\start");
    rig.main.Call(u"AddDMSItem", 0, u"", u"", Date{}, u"", Date{}, u"", u"", u"", u"", u"",
                  MakeSavingItem("", attachments), 2, false, u"");
    return rig.Rows() == documents ? 0 : 1;
}

std::vector<HANDLE> StartUsers(const std::u16string& folder, int users, int documents) {
    std::u16string program(512, u'\0');
    program.resize(GetModuleFileNameW(nullptr, WideBuffer(program), 512));
    std::vector<HANDLE> processes;
    for (int user = 1; user <= users; ++user) {
        std::u16string line = u"\"" + program + u"\" user \"" + folder + u"\" " +
                              DecimalText(user) + u" " + DecimalText(documents);
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (CreateProcessW(nullptr, WideBuffer(line), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                           &startup, &process) != FALSE) {
            CloseHandle(process.hThread);
            processes.push_back(process.hProcess);
        }
    }
    return processes;
}

int StoreTogether(int users, int documents) {
    const TemporaryFolder place;
    const std::u16string folder = place.MakeFolder(u"Projekt");
    for (const auto* file : {u"TalvixDMS.dll", u"TalvixGrid.ocx"}) {
        CallExport(file, "DllRegisterServer");
    }
    const std::vector<HANDLE> processes = StartUsers(folder, users, documents);
    Sleep(2000);
    place.Make(u"start", 1);
    int failed = users - static_cast<int>(processes.size());
    for (HANDLE process : processes) {
        WaitForSingleObject(process, INFINITE);
        DWORD code = 1;
        GetExitCodeProcess(process, &code);
        failed += code == 0 ? 0 : 1;
        CloseHandle(process);
    }
    std::set<std::string> contents;
    const std::vector<ListedFile> files = Win32Files().List(folder).files;
    for (const ListedFile& file : files) {
        contents.insert(ReadRealFile(folder + u"\\" + file.name));
    }
    for (const auto* file : {u"TalvixDMS.dll", u"TalvixGrid.ocx"}) {
        CallExport(file, "DllUnregisterServer");
    }
    const auto wanted = static_cast<std::size_t>(users * documents);
    const bool holds = failed == 0 && files.size() == wanted && contents.size() == wanted;
    std::printf("[%s] together: %d users, %zu of %zu documents arrived, %zu different, %d users "
                "failed\n",
                holds ? "       OK " : "  FAILED  ", users, files.size(), wanted, contents.size(),
                failed);
    return holds ? 0 : 1;
}

} // namespace

} // namespace talvix

int wmain(int count, wchar_t** arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (count == 5) {
        const std::u16string user = talvix::TextOf(arguments[3]);
        return talvix::StoreAll(talvix::TextOf(arguments[2]), talvix::ToUtf8(user),
                                _wtoi(arguments[4]));
    }
    return talvix::StoreTogether(count > 1 ? _wtoi(arguments[1]) : 72,
                                 count > 2 ? _wtoi(arguments[2]) : 10);
}
