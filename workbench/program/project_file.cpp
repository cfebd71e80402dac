#include "workbench/program/project_file.h"

#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"
#include "workbench/host/project_text.h"

namespace talvix::workbench {

namespace {

Late NewDocument() {
    CLSID id{};
    ComPtr<IDispatch> document;
    for (const auto* name :
         {L"MSXML2.DOMDocument.6.0", L"MSXML2.DOMDocument.3.0", L"MSXML2.DOMDocument"}) {
        if (SUCCEEDED(CLSIDFromProgID(name, &id)) &&
            SUCCEEDED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                       document.OutAny()))) {
            Late late(WrapDispatch(document.Get()));
            late.Set(u"async", false);
            late.Set(u"validateOnParse", false);
            late.Set(u"resolveExternals", false);
            late.Set(u"preserveWhiteSpace", true);
            return late;
        }
    }
    throw Failure(failure_number::kUnexpected,
                  u"Der XML-Dienst des Systems (MSXML) ist nicht vorhanden.");
}

void Load(const Late& document, const std::u16string& path) {
    if (GetFileAttributesW(Wide(path)) == INVALID_FILE_ATTRIBUTES) {
        host::RefuseProject(path, SystemText(GetLastError()));
    }
    if (document.Call(u"load", path) == Value(true)) {
        return;
    }
    const Late error = document[u"parseError"];
    const Value line = error.Call(u"line");
    const Value place = error.Call(u"linepos");
    const auto* lineNumber = line.If<std::int32_t>();
    const auto* column = place.If<std::int32_t>();
    const std::u16string reason(Trim(host::TextIn(error, u"reason")));
    const bool hasPlace = lineNumber != nullptr && *lineNumber > 0 && column != nullptr;
    host::RefuseProject(path, (hasPlace ? u"Zeile " + DecimalText(*lineNumber) + u", Spalte " +
                                              DecimalText(*column) + u": "
                                        : u"") +
                                  reason);
}

} // namespace

host::Project ReadProject(std::u16string_view path) {
    const Late document = NewDocument();
    Load(document, std::u16string(path));
    return host::ProjectIn(document, path);
}

} // namespace talvix::workbench
