#include "workbench/program/save_export.h"

#include "automation/text.h"
#include "platform/win32/wide.h"
#include "workbench/host/list_export.h"
#include "workbench/program/message_file.h"

#include <commdlg.h>

namespace talvix::workbench {

namespace {

constexpr const char* kUtf8Mark = "\xEF\xBB\xBF"; // German Excel takes a file without it for ANSI

std::u16string AskForExportFile(HWND owner, std::u16string_view name) {
    std::u16string path(name);
    path.resize(4096);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrTitle = L"Dokumentenliste exportieren";
    dialog.lpstrFilter = L"XML (*.xml)\0*.xml\0Tabelle für Excel (*.csv)\0*.csv\0"
                         L"Seite zum Drucken (*.html)\0*.html\0";
    dialog.lpstrFile = WideBuffer(path);
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrDefExt = L"xml"; // the chosen kind's extension takes its place
    dialog.Flags =
        OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR;
    if (GetSaveFileNameW(&dialog) == FALSE) {
        return {};
    }
    return path.substr(0, path.find(u'\0'));
}

bool HasExtension(std::u16string_view path, std::u16string_view extension) {
    return path.size() > extension.size() &&
           SameName(path.substr(path.size() - extension.size()), extension);
}

} // namespace

void WriteExport(std::u16string_view path, const host::Project& project, std::u16string_view xml,
                 const Culture& culture) {
    if (HasExtension(path, u".csv")) {
        WriteWholeFile(path, kUtf8Mark + ToUtf8(host::ListAsCsv(project, culture)));
    } else if (HasExtension(path, u".html") || HasExtension(path, u".htm")) {
        WriteWholeFile(path, ToUtf8(host::ListAsHtml(project, culture)));
    } else {
        WriteWholeFile(path, ToUtf8(xml));
    }
}

void SaveExport(HWND owner, const host::Project& project, std::u16string_view name,
                std::u16string_view xml, const Culture& culture) {
    const std::u16string path = AskForExportFile(owner, name);
    if (!path.empty()) {
        WriteExport(path, project, xml, culture);
    }
}

} // namespace talvix::workbench
