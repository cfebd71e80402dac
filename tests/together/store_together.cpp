// store_together [ROUNDS [PROCESSES [DOCUMENTS]]]: as many programs as are asked for store
// documents under the same names into one folder through the registered component, all at once.
// Every document has to arrive, whole and under a name of its own. A user that fails leaves a note
// of how far he came.
//
// store_together kill [ROUNDS]: one program stores large documents and is killed at random moments
// while a copy is under way.
// Under its final name a document is whole, or it is not there.
#include "automation/text.h"
#include "folder/project_copy.h"
#include "platform/win32/files.h"
#include "tests/com/component_rig.h"
#include "tests/com/saving_item.h"
#include "tests/proof/proof.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

namespace talvix {

namespace {

constexpr std::size_t kLargeDocument = 8'000'000;

void WaitFor(const std::u16string& signal) {
    while (!Win32Files().Query(signal)) {
        Sleep(20);
    }
}

void Note(const std::u16string& folder, const std::string& user, const std::string& text) {
    WriteRealFile(folder + u"\\..\\user " + FromUtf8(user) + u".txt", text);
}

std::u16string OwnProgram() {
    std::u16string program(512, u'\0');
    program.resize(GetModuleFileNameW(nullptr, WideBuffer(program), 512));
    return u"\"" + program + u"\"";
}

/// One user of many: a temporary folder of his own, mails with the same attachments as everybody's.
void Store(const std::u16string& folder, const std::string& user, int documents, bool large) {
    Note(folder, user, "does not get his objects");
    ComponentRig rig;
    SetEnvironmentVariableW(L"TMP", Wide(rig.folder.Path()));
    rig.property->With(u"Value", folder);
    Note(folder, user, "does not attach");
    rig.Attach();
    std::vector<RealAttachment> attachments;
    for (int number = 1; number <= documents; ++number) {
        attachments.push_back({u"Dokument " + DecimalText(number) + u".txt",
                               large ? std::string(kLargeDocument, 'x')
                                     : "Benutzer " + user + " Dokument " + std::to_string(number)});
    }
    Note(folder, user, "does not see the start");
    WaitFor(folder + u"\\..\\start");
    Note(folder, user, "does not come back from storing");
    rig.main.Call(u"AddDMSItem", 0, u"", u"", Date{}, u"", Date{}, u"", u"", u"", u"", u"",
                  MakeSavingItem("", attachments), 2, false, u"");
    Note(folder, user, std::to_string(rig.Rows()) + " rows, then does not end");
    if (rig.Rows() != documents) {
        throw Failure(0, DecimalText(rig.Rows()) + u" rows");
    }
}

int StoreAll(const std::u16string& folder, const std::string& user, int documents, bool large) {
    try {
        Store(folder, user, documents, large);
        return 0;
    } catch (const Failure& failure) {
        Note(folder, user, ToUtf8(failure.Text()));
        return 1;
    }
}

/// Starts a program; tries again where a busy system refuses for the moment.
HANDLE StartProgram(const std::u16string& line) {
    for (int attempt = 0; attempt < 5; ++attempt) {
        std::u16string writable = line;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (CreateProcessW(nullptr, WideBuffer(writable), nullptr, nullptr, FALSE, 0, nullptr,
                           nullptr, &startup, &process) != FALSE) {
            CloseHandle(process.hThread);
            return process.hProcess;
        }
        std::printf("a program could not be started yet: error %lu\n", GetLastError());
        Sleep(200);
    }
    return nullptr;
}

std::vector<HANDLE> StartUsers(const std::u16string& folder, int users, int documents) {
    std::vector<HANDLE> processes;
    for (int user = 1; user <= users; ++user) {
        processes.push_back(StartProgram(OwnProgram() + u" user \"" + folder + u"\" " +
                                         DecimalText(user) + u" " + DecimalText(documents)));
    }
    return processes;
}

/// Waits for all users and says of every one that failed how far he came.
int FailedUsers(const std::u16string& folder, const std::vector<HANDLE>& processes) {
    int failed = 0;
    for (std::size_t user = 1; user <= processes.size(); ++user) {
        HANDLE process = processes[user - 1];
        DWORD code = 1;
        if (process != nullptr) {
            WaitForSingleObject(process, INFINITE);
            GetExitCodeProcess(process, &code);
            CloseHandle(process);
        }
        if (code != 0) {
            ++failed;
            const std::u16string note =
                folder + u"\\..\\user " + DecimalText(static_cast<std::int64_t>(user)) + u".txt";
            std::printf("user %zu ended with 0x%lx: %s\n", user, code,
                        process == nullptr ? "not started" : ReadRealFile(note).c_str());
        }
    }
    return failed;
}

bool StoreTogether(int users, int documents) {
    const TemporaryFolder place;
    const std::u16string folder = place.MakeFolder(u"Projekt");
    const std::vector<HANDLE> processes = StartUsers(folder, users, documents);
    Sleep(2000);
    place.Make(u"start", 1);
    const int failed = FailedUsers(folder, processes);
    std::set<std::string> contents;
    const std::vector<ListedFile> files = Win32Files().List(folder).files;
    for (const ListedFile& file : files) {
        contents.insert(ReadRealFile(folder + u"\\" + file.name));
    }
    const auto wanted = static_cast<std::size_t>(users * documents);
    const bool holds = failed == 0 && files.size() == wanted && contents.size() == wanted;
    std::printf("[%s] together: %d users, %zu of %zu documents arrived, %zu different, %d users "
                "failed\n",
                holds ? "       OK " : "  FAILED  ", users, files.size(), wanted, contents.size(),
                failed);
    std::fflush(stdout);
    return holds;
}

/// The servers are registered for its length.
class Registered {
public:
    Registered() { Call("DllRegisterServer"); }
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;
    ~Registered() { Call("DllUnregisterServer"); }

private:
    static void Call(const char* name) {
        for (const auto* file : {u"TalvixDMS.dll", u"TalvixGrid.ocx"}) {
            CallExport(file, name);
        }
    }
};

int StoreInRounds(int rounds, int users, int documents) {
    const Registered registered;
    int failed = 0;
    for (int round = 0; round < rounds; ++round) {
        failed += StoreTogether(users, documents) ? 0 : 1;
    }
    StateProof("many users", static_cast<std::size_t>(rounds),
               "rounds of " + std::to_string(users) + " programs with " +
                   std::to_string(documents) + " documents of the same names");
    return failed == 0 ? 0 : 1;
}

/// How many files of the folder are there, and how many of them are not whole.
struct Remains {
    std::size_t documents = 0;
    std::size_t halves = 0;
    std::size_t unfinished = 0; ///< temporary copies that nobody could take away any more
};

bool IsWhole(const FileFacts& facts) {
    return facts.length == static_cast<std::int64_t>(kLargeDocument);
}

Remains RemainsIn(const std::u16string& folder) {
    Remains remains;
    for (const ListedFile& file : Win32Files().List(folder).files) {
        if (IsUnfinishedCopy(file.name)) {
            ++remains.unfinished;
            continue;
        }
        ++remains.documents;
        if (!file.facts || !IsWhole(*file.facts)) {
            ++remains.halves;
        }
    }
    return remains;
}

bool HasUnfinished(const std::u16string& folder) {
    const std::vector<ListedFile> files = Win32Files().List(folder).files;
    return std::any_of(files.begin(), files.end(),
                       [](const ListedFile& each) { return each.facts && !IsWhole(*each.facts); });
}

/// Kills one program while it stores; true when only whole documents are left of it.
bool KillWhileStoring(ProofRandom& random, Remains& all) {
    const TemporaryFolder place;
    const std::u16string folder = place.MakeFolder(u"Projekt");
    place.Make(u"start", 1);
    HANDLE process = StartProgram(OwnProgram() + u" large \"" + folder + u"\" 1 12");
    // It is killed while documents arrive: not before the first one.
    for (int wait = 0; wait < 500 && Win32Files().List(folder).files.empty(); ++wait) {
        Sleep(10);
    }
    Sleep(static_cast<DWORD>(random.Below(120)));
    // Most of its time goes elsewhere: the moment waits for a copy that is under way.
    for (int wait = 0; wait < 500 && !HasUnfinished(folder); ++wait) {
        Sleep(1);
    }
    Sleep(static_cast<DWORD>(random.Below(4)));
    TerminateProcess(process, 1);
    WaitForSingleObject(process, INFINITE);
    CloseHandle(process);
    const Remains remains = RemainsIn(folder);
    all.documents += remains.documents;
    all.halves += remains.halves;
    all.unfinished += remains.unfinished;
    return remains.halves == 0;
}

int KillInRounds(std::size_t rounds) {
    const Registered registered;
    ProofRandom random(ProofSeed());
    Remains all;
    bool holds = true;
    for (std::size_t round = 0; round < rounds; ++round) {
        holds = KillWhileStoring(random, all) && holds;
    }
    holds = holds && all.documents > 0 && all.unfinished > 0;
    const std::string figures = std::to_string(all.documents) + " whole documents, " +
                                std::to_string(all.halves) + " halves under a final name, " +
                                std::to_string(all.unfinished) + " unfinished temporary copies";
    std::printf("[%s] killed while storing: %zu times, %s\n", holds ? "       OK " : "  FAILED  ",
                rounds, figures.c_str());
    StateProof("kill while copying", rounds, figures);
    return holds ? 0 : 1;
}

} // namespace

} // namespace talvix

int wmain(int count, wchar_t** arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (count == 5) {
        const std::u16string user = talvix::TextOf(arguments[3]);
        const bool large = talvix::TextOf(arguments[1]) == u"large";
        return talvix::StoreAll(talvix::TextOf(arguments[2]), talvix::ToUtf8(user),
                                _wtoi(arguments[4]), large);
    }
    const auto rounds = [&](int place, std::size_t usual, std::size_t longForm) {
        return count > place ? static_cast<std::size_t>(_wtoi(arguments[place]))
                             : talvix::ProofCount(usual, longForm);
    };
    if (count > 1 && talvix::TextOf(arguments[1]) == u"kill") {
        return talvix::KillInRounds(rounds(2, 60, 1000));
    }
    return talvix::StoreInRounds(static_cast<int>(rounds(1, 3, 100)),
                                 count > 2 ? _wtoi(arguments[2]) : 72,
                                 count > 3 ? _wtoi(arguments[3]) : 10);
}
