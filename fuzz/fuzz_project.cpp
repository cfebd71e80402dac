#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "fuzz/fuzz.h"
#include "tests/fakes/fake_xml.h"
#include "workbench/host/project_text.h"

using namespace talvix;

/// What is no project is refused in words that name the file; what was read is kept as it was read,
/// also when it is read and kept once more.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr const char16_t* kPath = u"P:\\a.talvix";
    const Late document(FakeXmlDocument(FromUtf8({reinterpret_cast<const char*>(data), size})));
    if (!document) {
        return 0;
    }
    host::Project project;
    try {
        project = host::ProjectIn(document, kPath);
    } catch (const Failure& failure) {
        Require(failure.Text().find(kPath) != std::u16string::npos);
        return 0;
    }
    const std::u16string kept = host::ProjectXml(project);
    const Late again(FakeXmlDocument(kept));
    Require(static_cast<bool>(again));
    const host::Project read = host::ProjectIn(again, kPath);
    Require(read.settings == project.settings && read.documents == project.documents);
    Require(read.actions.size() == project.actions.size() && host::ProjectXml(read) == kept);
    return 0;
}
