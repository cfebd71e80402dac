// The project folder's work against what the system alone needs for it.
#include "automation/text.h"
#include "bench/bench.h"
#include "core/main.h"
#include "folder/copy_to_project_folder.h"
#include "folder/unc_conversion.h"
#include "grid/model/grid_objects.h"
#include "platform/win32/owned.h"
#include "platform/win32/trace.h"
#include "platform/win32/wide.h"
#include "platform/win32/win32_platform.h"
#include "workbench/host/host.h"

#include <cstdio>

namespace talvix::bench {

namespace {

constexpr int kCopies = 30;
constexpr int kConversions = 1000;
constexpr int kShares = 100;
constexpr const wchar_t* kSharesKey = L"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Shares";

/// A component attached to a host of ours, in this process.
struct FolderRig {
    explicit FolderRig(const std::u16string& folder) {
        project->folder = folder;
        host::HostServices services;
        services.listWritten = [] {};
        const Late documents(Value(std::make_shared<grid::GridObject>(model)));
        const Late actions(Value(std::make_shared<grid::GridObject>(
            std::make_shared<grid::GridModel>(platform.locale))));
        host = std::make_unique<host::Host>(project, services, documents, actions);
        const std::vector<Value> six = host->Libraries();
        main.ReferenceLibraries(six[0], six[1], six[2], six[3], six[4], six[5]);
        main.InitSGDMS();
        main.Init();
    }
    Win32Platform platform;
    Win32Trace trace{platform.registry};
    std::shared_ptr<grid::GridModel> model = std::make_shared<grid::GridModel>(platform.locale);
    std::shared_ptr<host::Project> project = std::make_shared<host::Project>();
    std::unique_ptr<host::Host> host;
    Forms forms{platform.ports, trace};
    Main main{platform.ports, trace, forms};
};

void WriteFile(const std::u16string& path) {
    const OwnedFile file(
        CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    ::WriteFile(file.Get(), "0123456789", 10, &written, nullptr);
}

void Empty(Files& files, const std::u16string& folder) {
    for (const ListedFile& file : files.List(folder).files) {
        files.Remove(folder + u"\\" + file.name);
    }
}

/// Copies under free names against the shell's bare copy; `taken` names are in use before.
void CompareCopies(FolderRig& rig, const std::u16string& source, const std::u16string& folder,
                   int taken) {
    Files& files = rig.platform.files;
    const auto prepare = [&] {
        Empty(files, folder);
        for (int number = 0; number < taken; ++number) {
            WriteFile(folder + u"\\Bericht" +
                      (number == 0 ? u"" : u" (" + DecimalText(number) + u")") + u".txt");
        }
    };
    const auto own = [&] {
        double spent = 0;
        for (int copy = 0; copy < kCopies; ++copy) {
            prepare();
            const double start = Now();
            CopyToProjectFolder(rig.main.Attached(),
                                {source, u"", u"", u"", u"Bericht.txt", Date{1}, Date{1}, u""});
            spent += Now() - start;
        }
        return spent;
    };
    const auto bare = [&] {
        double spent = 0;
        for (int copy = 0; copy < kCopies; ++copy) {
            prepare();
            const double start = Now();
            rig.platform.shell.Copy(source, folder + u"\\Bericht (100).txt");
            spent += Now() - start;
        }
        return spent;
    };
    const std::string what =
        "copy into the folder, " + std::to_string(taken) + " names taken / shell copy alone";
    Compare(what.c_str(), own, bare, 5);
}

void WriteShares(bool write) {
    OwnedKey key;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kSharesKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    key.Out(), nullptr);
    for (int number = 0; number < kShares; ++number) {
        const std::u16string name = u"Bench" + DecimalText(number);
        const std::u16string data = u"MaxUses=1" + std::u16string(1, u'\0') + u"Path=Q:\\Freigabe" +
                                    DecimalText(number) + std::u16string(2, u'\0');
        if (write) {
            RegSetValueExW(key.Get(), Wide(name), 0, REG_MULTI_SZ,
                           reinterpret_cast<const BYTE*>(data.data()),
                           static_cast<DWORD>(data.size() * sizeof(char16_t)));
        } else {
            RegDeleteValueW(key.Get(), Wide(name));
        }
    }
}

/// What one conversion has to ask when nothing is kept: the table from its first to its last value,
/// once for exact and once for beginning matches.
double EnumerateBare() {
    const double start = Now();
    for (int run = 0; run < kConversions / 10; ++run) {
        for (int pass = 0; pass < 2; ++pass) {
            OwnedKey key;
            RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSharesKey, 0, KEY_READ, key.Out());
            LSTATUS status = ERROR_SUCCESS;
            for (DWORD index = 0; status == ERROR_SUCCESS; ++index) {
                wchar_t name[1024];
                wchar_t data[500];
                DWORD units = 1024;
                DWORD bytes = sizeof data;
                status = RegEnumValueW(key.Get(), index, name, &units, nullptr, nullptr,
                                       reinterpret_cast<BYTE*>(data), &bytes);
            }
        }
    }
    return (Now() - start) * 10;
}

void CompareConversions(FolderRig& rig) {
    WriteShares(true);
    for (const auto* path : {u"\\\\srv\\daten\\Projekt\\a.doc", u"C:\\Projekt\\a.doc"}) {
        const auto convert = [&] {
            const double start = Now();
            for (int run = 0; run < kConversions; ++run) {
                ConvertToUNC(rig.platform.network, rig.platform.locale, rig.trace, path);
            }
            return Now() - start;
        };
        const std::string what =
            "1,000 conversions of " + ToUtf8(path).substr(0, 6) + "... / bare enumeration";
        Compare(what.c_str(), convert, EnumerateBare, 3);
    }
    WriteShares(false);
}

} // namespace

int FolderBench(const std::u16string& place) {
    const std::u16string folder = place + u"\\Projekt";
    const std::u16string source = place + u"\\Quelle.txt";
    CreateDirectoryW(Wide(folder), nullptr);
    WriteFile(source);
    FolderRig rig(folder);
    CompareCopies(rig, source, folder, 0);
    CompareCopies(rig, source, folder, 100);
    CompareConversions(rig);
    Empty(rig.platform.files, folder);
    return 0;
}

} // namespace talvix::bench
