#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "fuzz/fuzz.h"
#include "tests/fakes/fake_xml.h"
#include "workbench/host/project_text.h"

using namespace talvix;

namespace {

/// The first letter tells what the rest is: a part of an otherwise whole file, or the file.
std::u16string FileOf(std::string_view input) {
    const char kind = input.empty() ? ' ' : input.front();
    const std::u16string rest = FromUtf8(input.substr(input.empty() ? 0 : 1));
    const auto within = [](std::u16string_view parts) {
        return u"<TalvixProject version=\"1\"><Project number=\"\" name=\"\" company=\"\" "
               u"folder=\"\" nextId=\"1\"/>" +
               std::u16string(parts) + u"</TalvixProject>";
    };
    switch (kind) {
    case 'P':
        return u"<TalvixProject version=\"1\"><Project nextId=\"1\" " + rest +
               u"/></TalvixProject>";
    case 'S':
        return within(u"<Settings><Setting " + rest + u"/></Settings>");
    case 'A':
        return within(u"<Actions><Action " + rest + u"/></Actions>");
    case 'D':
        return within(u"<Documents><Document>" + rest + u"</Document></Documents>");
    case 'F':
        return within(u"<Documents><Document><Field name=\"a\" " + rest +
                      u"</Field></Document></Documents>");
    default:
        return rest;
    }
}

} // namespace

/// What is no project is refused in words that name the file; what was read is kept as it was read,
/// also when it is read and kept once more.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr const char16_t* kPath = u"P:\\a.talvix";
    const Late document(FakeXmlDocument(FileOf({reinterpret_cast<const char*>(data), size})));
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
    Require(read.settings == project.settings && host::ProjectXml(read) == kept);
    Require(read.actions.size() == project.actions.size());
    Require(read.documents.size() == project.documents.size());
    for (std::size_t at = 0; at < read.documents.size(); ++at) {
        Require(read.documents[at].size() == project.documents[at].size());
    }
    return 0;
}
