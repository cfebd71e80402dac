// The project folder's work against what the system alone needs for it.
#include "automation/text.h"
#include "bench/rigs.h"
#include "folder/copy_to_project_folder.h"
#include "folder/unc_conversion.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"

#include <tuple>

namespace talvix::bench {

namespace {

constexpr int kCopies = 30;
constexpr int kConversions = 1000;
constexpr int kShares = 100;
constexpr const wchar_t* kSharesKey = L"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Shares";

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

/// The names "Bericht.txt" to "Bericht (N).txt", so many of them.
void TakeNames(const std::u16string& folder, int taken) {
    for (int number = 0; number < taken; ++number) {
        WriteFile(folder + u"\\Bericht" + (number == 0 ? u"" : u" (" + DecimalText(number) + u")") +
                  u".txt");
    }
}

/// Copies under free names against the shell's bare copy; `taken` names are in use before.
void CompareCopies(ComponentRig& rig, const Question& question, const std::u16string& place,
                   int taken) {
    const std::u16string source = place + u"\\Quelle.txt";
    const std::u16string folder = place + u"\\Projekt";
    const std::u16string copied =
        folder + (taken == 0 ? u"\\Bericht.txt" : u"\\Bericht (" + DecimalText(taken) + u").txt");
    Files& files = rig.platform.files;
    const auto timed = [&](const std::function<void()>& copy) {
        double spent = 0;
        for (int round = 0; round < kCopies; ++round) {
            Empty(files, folder);
            TakeNames(folder, taken);
            const double start = Now();
            copy();
            spent += Since(start);
            const auto facts = files.Query(copied);
            Require(facts && facts->length == 10, question.what);
        }
        return spent;
    };
    Compare(
        question,
        [&] {
            return timed([&] {
                CopyToProjectFolder(rig.main.Attached(),
                                    {source, u"", u"", u"", u"Bericht.txt", Date{1}, Date{1}, u""});
            });
        },
        [&] { return timed([&] { rig.platform.shell.Copy(source, copied); }); });
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
    return Since(start) * 10;
}

void CompareConversions(ComponentRig& rig) {
    WriteShares(true);
    for (const auto& [id, path, converted] :
         {std::tuple("unc-network", u"\\\\srv\\daten\\Projekt\\a.doc",
                     u"\\\\srv\\daten\\Projekt\\a.doc"),
          std::tuple("unc-local", u"C:\\Projekt\\a.doc", u"C:\\Projekt\\a.doc")}) {
        const auto convert = [&, path = path, converted = converted] {
            const double start = Now();
            for (int run = 0; run < kConversions; ++run) {
                Require(ConvertToUNC(rig.platform.network, rig.platform.locale, rig.trace, path) ==
                            converted,
                        "conversion");
            }
            return Since(start);
        };
        Compare({id,
                 "1,000 conversions of " + ToUtf8(path).substr(0, 5) +
                     "… with 100 shares / bare enumeration",
                 0.05},
                convert, EnumerateBare);
    }
    WriteShares(false);
}

} // namespace

int FolderBench(const std::u16string& place) {
    CreateDirectoryW(Wide(place + u"\\Projekt"), nullptr);
    WriteFile(place + u"\\Quelle.txt");
    ComponentRig rig(place + u"\\Projekt");
    rig.main.Init();
    CompareCopies(rig, {"copy", "copy of a small file into the folder / shell copy alone", 1.3},
                  place, 0);
    CompareCopies(rig, {"copy-99", "the same with 99 collisions / shell copy alone", 2.0}, place,
                  99);
    CompareConversions(rig);
    Empty(rig.platform.files, place + u"\\Projekt");
    return 0;
}

} // namespace talvix::bench
