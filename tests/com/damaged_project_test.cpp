// Project files that somebody or something has damaged: each is read, and then can be kept as it
// was read, or is refused in words that name the file.
#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "platform/win32/objects.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"
#include "tests/proof/proof.h"
#include "workbench/host/project_text.h"
#include "workbench/program/project_file.h"

#include <gtest/gtest.h>

namespace talvix::workbench {

namespace {

constexpr const char* kPieces[] = {
    "<",
    ">",
    "&",
    "&amp;",
    "&#0;",
    "&#xD800;",
    "]]>",
    "<![CDATA[",
    "<!-- ",
    "<!DOCTYPE a [<!ENTITY b SYSTEM \"file:///c:/windows/win.ini\">]>",
    "&b;",
    "\\u0000",
    "\\ud800",
    "\\",
    " version=\"2\"",
    " type=\"date\"",
    " type=\"number\"",
    "99999999999999999999",
    "-1",
    "1e999",
    "<Document>",
    "</Document>",
    "<Field name=\"ID\" type=\"long\">1</Field>",
    "\xFF",
    "\xEF\xBB\xBF",
    " xmlns=\"urn:x\"",
    "?>"};

host::Project Sample() {
    host::Project project;
    project.number = u"4711";
    project.name = u"Neubau \"Süd\" <1> & 2";
    project.folder = u"P:\\Projekte\\4711";
    project.nextId = 12;
    project.settings = {{u"Allgemein\\Regel", u"a=b"}};
    for (std::int32_t id = 1; id <= 3; ++id) {
        project.documents.push_back({{u"ID", id},
                                     {u"ObjectType", std::int16_t{1}},
                                     {u"Subject", u"Bericht " + DecimalText(id) + u".doc"},
                                     {u"CreationDate", Date{38000.5 + id}},
                                     {u"PhysicalStore1", u"P:\\Projekte\\4711\\Bericht.doc"}});
    }
    project.actions = {{1, Date{38000}, u"Abnahme"}};
    return project;
}

std::string Damaged(std::string text, ProofRandom& random) {
    const int times = 1 + random.Below(3);
    for (int time = 0; time < times; ++time) {
        const auto at = static_cast<std::size_t>(random.Below(static_cast<int>(text.size())));
        const auto length = static_cast<std::size_t>(1 + random.Below(random.OneIn(8) ? 400 : 12));
        switch (random.Below(8)) {
        case 0:
            text[at] = static_cast<char>(random.Below(256));
            break;
        case 1:
            text.erase(at, length);
            break;
        case 2:
            text.insert(at, text.substr(at, length));
            break;
        case 3:
            text.resize(at + 1);
            break;
        case 4:
            text.insert(at, random.Of(kPieces));
            break;
        default: // a wrong key on the keyboard
            text[at] = static_cast<char>(' ' + random.Below(95));
        }
    }
    return text;
}

void Write(const std::u16string& path, std::string_view text) {
    const OwnedFile file(
        CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

std::size_t CountOf(const Late& document, std::u16string_view path) {
    return static_cast<std::size_t>(
        *document(u"selectNodes", path).Call(u"length").If<std::int32_t>());
}

/// What the file says is what was read: no document and no field of one is left out.
void ExpectWhole(const std::u16string& path, const host::Project& project) {
    Win32Objects objects;
    const Late document(Value(objects.Create(u"MSXML2.DOMDocument.6.0")));
    document.Set(u"async", false);
    document.Set(u"preserveWhiteSpace", true);
    ASSERT_EQ(document.Call(u"load", path), Value(true));
    const std::u16string all = u"/TalvixProject/Documents/Document";
    ASSERT_EQ(CountOf(document, all), project.documents.size());
    for (std::size_t at = 0; at < project.documents.size(); ++at) {
        const std::u16string own = all + u"[" + DecimalText(static_cast<std::int64_t>(at) + 1) +
                                   u"]/Field[not(@name = preceding-sibling::Field/@name)]";
        EXPECT_EQ(CountOf(document, own), project.documents[at].size()) << at;
    }
    EXPECT_EQ(CountOf(document, u"/TalvixProject/Actions/Action"), project.actions.size());
}

/// True when the file was read; then it was read whole and can be kept and read again as the same.
bool ReadsWholeOrRefuses(const std::u16string& path) {
    host::Project project;
    try {
        project = ReadProject(path);
    } catch (const Failure& failure) {
        EXPECT_NE(failure.Text().find(path), std::u16string::npos) << ToUtf8(failure.Text());
        return false;
    }
    ExpectWhole(path, project);
    const std::u16string kept = host::ProjectXml(project);
    Write(path, ToUtf8(kept));
    try {
        EXPECT_EQ(host::ProjectXml(ReadProject(path)), kept);
    } catch (const Failure& failure) {
        ADD_FAILURE() << ToUtf8(failure.Text());
    }
    return true;
}

} // namespace

TEST(DamagedProjects, AreReadWholeOrRefused) {
    const TemporaryFolder folder;
    const std::u16string path = folder.Path() + u"\\a.talvix";
    const std::string whole = ToUtf8(host::ProjectXml(Sample()));
    Write(path, whole);
    ASSERT_TRUE(ReadsWholeOrRefuses(path));
    const std::size_t count = ProofCount(5000, 1000000);
    const unsigned first = ProofSeed();
    std::size_t read = 0;
    for (std::size_t at = 0; at < count && !HasFailure(); ++at) {
        const unsigned seed = first + static_cast<unsigned>(at);
        SCOPED_TRACE("TALVIX_SEED=" + std::to_string(seed));
        ProofRandom random(seed);
        Write(path, Damaged(whole, random));
        read += ReadsWholeOrRefuses(path) ? 1 : 0;
    }
    StateProof("damaged projects", count,
               std::to_string(read) + " read, " + std::to_string(count - read) +
                   " refused, seeds from " + std::to_string(first));
    EXPECT_GT(read, count / 100);
    EXPECT_LT(read, count);
}

} // namespace talvix::workbench
