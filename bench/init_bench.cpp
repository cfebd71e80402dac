// Opening a stored list of 10,000 documents, beside what it cannot do without: one question for the
// attributes of each file, one shell call per class and three cells written per row.
#include "automation/text.h"
#include "bench/rigs.h"
#include "platform/win32/shell.h"
#include "platform/win32/wide.h"

#include <map>

namespace talvix::bench {

namespace {

using Documents = std::vector<host::Document>;

std::u16string PathOf(const host::Document& document) {
    return std::get<std::u16string>(document.at(u"PhysicalStore1").Content());
}

Documents Imported(const std::u16string& folder) {
    const ServerRig rig(folder);
    rig.Import();
    Require(rig.project->documents.size() == 10000, "opening");
    return rig.project->documents;
}

/// Every twentieth file is missing, every twentieth one written in capitals.
Documents WithOddPaths(Documents documents) {
    for (std::size_t row = 0; row < documents.size(); row += 10) {
        std::u16string path = PathOf(documents[row]);
        if (row % 20 == 0) {
            path += u".fehlt";
        } else {
            CharUpperBuffW(WideBuffer(path), static_cast<DWORD>(path.size()));
        }
        documents[row][u"PhysicalStore1"] = path;
    }
    return documents;
}

double Open(const std::u16string& folder, const Documents& documents) {
    const ServerRig rig(folder, documents);
    const double time = Timed([&] { return rig.main.Call(u"Init"); });
    Require(rig.Rows() == 10000, "opening");
    return time;
}

double OpenBare(const std::u16string& folder, const Documents& documents) {
    const ServerRig rig(folder, documents);
    Win32Shell shell;
    std::map<std::u16string, std::int32_t> icons;
    const double start = Now();
    rig.grid.Set(u"Redraw", false);
    const Late rows = rig.grid[u"Rows"];
    std::int32_t number = 0;
    for (const host::Document& document : documents) {
        const std::u16string path = PathOf(document);
        const bool isThere = GetFileAttributesW(Wide(path)) != INVALID_FILE_ATTRIBUTES;
        const auto [icon, isNew] = icons.try_emplace(path.substr(path.rfind(u'.')), 0);
        if (isNew) {
            icon->second = shell.Classes().IconIndex(path);
        }
        const Late row = rows(u"Item", ++number);
        row.SetAt(u"Value", u"Icon", icon->second + 1);
        row.SetAt(u"Value", u"ItemSize", u"1 KB");
        row.SetAt(u"Value", u"ObjectDescription", isThere ? u"Datei" : u"");
    }
    rig.grid.Set(u"Redraw", true);
    return Since(start);
}

} // namespace

int InitBench(const std::u16string& folder) {
    for (const auto& [name, inner] :
         {std::pair("flat", u"\\flach-10000"), std::pair("nested", u"\\tief-10000")}) {
        const std::u16string place = folder + inner;
        const Documents documents = Imported(place);
        const Documents odd = WithOddPaths(documents);
        Compare(
            {"init-" + std::string(name),
             "opening 10,000 documents, " + std::string(name) +
                 " / attributes, shell calls and cells alone",
             1.2},
            [&] { return Open(place, documents); }, [&] { return OpenBare(place, documents); });
        Compare(
            {"init-odd-" + std::string(name),
             "the same with 10 % missing or otherwise cased paths / with right ones", 1.3},
            [&] { return Open(place, odd); }, [&] { return Open(place, documents); });
    }
    return 0;
}

} // namespace talvix::bench
