#include "workbench/program/file_checks.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/dialog_template.h"
#include "platform/win32/dialogs.h"
#include "platform/win32/files.h"
#include "platform/win32/locale.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "workbench/program/frame.h"
#include "workbench/program/list_dialog.h"
#include "workbench/program/page.h"

#include <windows.h>
#include <commdlg.h>

namespace talvix::workbench {

namespace {

constexpr WORD kOldPlace = 100;
constexpr WORD kNewPlace = 101;
constexpr std::uint32_t kFoldersOnly = 0x1; // BIF_RETURNONLYFSDIRS

/// The mouse shows that it takes a while, for the length of a block.
class WaitPointer {
public:
    WaitPointer() : before_(SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)))) {}
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
    ~WaitPointer() { SetCursor(before_); }

private:
    HCURSOR before_;
};

std::u16string Counted(std::size_t count, std::u16string_view one, std::u16string_view many) {
    return DecimalText(static_cast<long long>(count)) + u" " +
           std::u16string(count == 1 ? one : many);
}

/// Shows what is to be changed; true when the user agrees.
bool Agrees(HWND owner, const std::vector<host::PlaceChange>& changes) {
    ListDialog dialog;
    dialog.title = u"Neue Speicherorte";
    dialog.hint = changes.empty()
                      ? std::u16string(u"Kein Dokument ist betroffen.")
                      : Counted(changes.size(), u"Dokument erhält", u"Dokumente erhalten") +
                            u" einen anderen Speicherort. Dateien werden nicht bewegt.";
    dialog.columns = {{u"Name/Betreff", 150}, {u"Bisher", 200}, {u"Künftig", 200}, {u"Datei", 70}};
    Win32Files files;
    for (const host::PlaceChange& change : changes) {
        dialog.rows.push_back({change.row.name, change.row.path, change.to,
                               files.Query(change.to) ? u"vorhanden" : u"fehlt"});
    }
    dialog.buttons = {u"Ü&bernehmen", u"Abbrechen"};
    if (changes.empty()) {
        dialog.buttons = {u"Schließen"};
    }
    return ShowListDialog(owner, dialog).button == 0 && !changes.empty();
}

void AssignFile(HWND owner, OpenProject& project, const host::FileRow& row,
                const Culture& culture) {
    std::u16string path(4096, u'\0');
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    const std::u16string title = u"Datei für „" + row.name + u"“";
    dialog.lpstrTitle = Wide(title);
    dialog.lpstrFilter = L"Alle Dateien\0*.*\0";
    dialog.lpstrFile = WideBuffer(path);
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_FILEMUSTEXIST | OFN_NOCHANGEDIR;
    if (GetOpenFileNameW(&dialog) != FALSE) {
        const host::PlaceChange change{row, path.substr(0, path.find(u'\0'))};
        project.ChangeFields(host::FieldsOf({change}, project.Project().folder, culture));
    }
}

struct Places {
    std::u16string before;
    std::u16string after;
};

INT_PTR CALLBACK PlacesProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        CenterOverOwner(dialog);
        SetDlgItemTextW(dialog, kOldPlace, Wide(reinterpret_cast<const Places*>(lParam)->before));
        return TRUE;
    }
    if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)) {
        return FALSE;
    }
    auto* places = reinterpret_cast<Places*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    places->before = TextOfControl(GetDlgItem(dialog, kOldPlace));
    places->after = TextOfControl(GetDlgItem(dialog, kNewPlace));
    EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

bool AskForPlaces(HWND owner, Places& places) {
    DialogTemplate made(WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_CENTER,
                        {0, 0, 260, 74}, u"Ort ersetzen");
    constexpr DWORD kField = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
    made.Add(DialogTemplate::kStaticKind, 0xFFFF, SS_LEFT, {8, 10, 58, 10}, u"&Bisheriger Ort:");
    made.Add(DialogTemplate::kEditKind, kOldPlace, kField, {70, 8, 182, 13}, u"");
    made.Add(DialogTemplate::kStaticKind, 0xFFFF, SS_LEFT, {8, 29, 58, 10}, u"&Neuer Ort:");
    made.Add(DialogTemplate::kEditKind, kNewPlace, kField, {70, 27, 182, 13}, u"");
    made.Add(DialogTemplate::kButtonKind, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {146, 52, 50, 14},
             u"Vorschau");
    made.Add(DialogTemplate::kButtonKind, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, {202, 52, 50, 14},
             u"Abbrechen");
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), made.Get(), owner, PlacesProcedure,
                                   reinterpret_cast<LPARAM>(&places)) == IDOK;
}

/// The project's folder goes along when it lies at the old place, too.
void OfferMove(HWND owner, OpenProject& project, const Places& places, const Culture& culture) {
    host::Project& own = project.Project();
    const auto moved = host::MoveFolder(own.folder, places.before, places.after, culture);
    const auto changes = host::MoveToPlace(host::FileRows(host::ReadRows(project.GridLate())),
                                           places.before, places.after, culture);
    if (!Agrees(owner, changes)) {
        return;
    }
    if (moved) {
        const std::u16string question =
            u"Auch der Projektordner liegt dort. Soll er künftig „" + *moved + u"“ sein?";
        if (MessageBoxW(owner, Wide(question), Wide(kProgram), MB_YESNO | MB_ICONQUESTION) ==
            IDYES) {
            own.folder = *moved;
        }
    }
    project.ChangeFields(host::FieldsOf(changes, own.folder, culture));
}

void ReplacePlace(HWND owner, OpenProject& project, std::u16string_view example,
                  const Culture& culture) {
    Places places{std::u16string(example.substr(0, example.rfind(u'\\'))), u""};
    if (AskForPlaces(owner, places)) {
        OfferMove(owner, project, places, culture);
    }
}

/// Nothing when the user has ended the search.
std::optional<std::vector<std::u16string>> SearchedFiles(const std::u16string& folder) {
    const WaitPointer wait;
    GetAsyncKeyState(VK_ESCAPE); // what was pressed before does not count
    return FilesBelow(folder, [] { return GetAsyncKeyState(VK_ESCAPE) == 0; });
}

void SearchBelow(HWND owner, OpenProject& project, const std::vector<host::FileRow>& missing,
                 const Culture& culture) {
    Win32Dialogs dialogs;
    const std::u16string folder = dialogs.BrowseForFolder(
        {kFoldersOnly,
         u"Unter welchem Ordner liegen die fehlenden Dateien? (Esc beendet die Suche.)", u"",
         project.Project().folder});
    if (folder.empty()) {
        return;
    }
    const auto files = SearchedFiles(folder);
    if (!files) {
        return;
    }
    host::FilesByName known(culture);
    for (const std::u16string& path : *files) {
        known.Add(path);
    }
    const std::vector<host::PlaceChange> changes = known.Find(missing);
    if (Agrees(owner, changes)) {
        project.ChangeFields(host::FieldsOf(changes, project.Project().folder, culture));
    }
}

/// The file itself, whatever path leads to it; "" for one that is not there.
std::u16string IdentityOf(std::u16string_view path) {
    const std::u16string extended = ExtendedPath(path);
    const OwnedFile file(CreateFileW(Wide(extended), 0,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!file || GetFileInformationByHandle(file.Get(), &facts) == FALSE) {
        return {};
    }
    std::u16string text;
    for (const DWORD part :
         {facts.dwVolumeSerialNumber, facts.nFileIndexHigh, facts.nFileIndexLow}) {
        text += DecimalText(part) + u"/";
    }
    return text;
}

} // namespace

std::vector<host::FileRow> MissingFiles(const std::vector<host::Document>& documents) {
    const WaitPointer wait;
    Win32Files files;
    std::vector<host::FileRow> rows = host::FileRows(documents);
    std::erase_if(rows, [&](const host::FileRow& row) {
        const auto facts = files.Query(row.path);
        return facts && !facts->isFolder;
    });
    return rows;
}

std::vector<std::vector<host::FileRow>>
DuplicateFiles(const std::vector<host::Document>& documents) {
    const WaitPointer wait;
    return host::Duplicates(host::FileRows(documents), IdentityOf, Win32Locale());
}

std::optional<std::vector<std::u16string>> FilesBelow(std::u16string_view folder,
                                                      const std::function<bool()>& goesOn) {
    Win32Files files;
    std::vector<std::u16string> found;
    std::vector<std::u16string> open{std::u16string(folder)};
    while (!open.empty()) {
        if (!goesOn()) {
            return std::nullopt;
        }
        std::u16string at = std::move(open.back());
        open.pop_back();
        at += at.ends_with(u'\\') ? u"" : u"\\";
        FolderListing listing;
        try {
            listing = files.List(at);
        } catch (const Failure&) { // it vanished, or is not for this user
            continue;
        }
        for (const ListedFile& file : listing.files) {
            found.push_back(at + file.name);
        }
        for (auto name = listing.folders.rbegin(); name != listing.folders.rend(); ++name) {
            open.push_back(at + *name);
        }
    }
    return found;
}

void CheckMissingFiles(HWND owner, OpenProject& project, const Culture& culture) {
    for (;;) {
        const std::vector<host::FileRow> missing = MissingFiles(host::ReadRows(project.GridLate()));
        ListDialog dialog;
        dialog.title = u"Fehlende Dateien";
        dialog.hint = missing.empty()
                          ? std::u16string(u"Alle Dateien der Liste sind an ihrem Ort.")
                          : Counted(missing.size(), u"Dokument zeigt", u"Dokumente zeigen") +
                                u" auf eine Datei, die nicht da ist.";
        dialog.columns = {{u"Nr.", 50}, {u"Name/Betreff", 170}, {u"Speicherort", 330}};
        for (const host::FileRow& row : missing) {
            dialog.rows.push_back({DecimalText(row.id), row.name, row.path});
        }
        dialog.buttons = {u"Datei &zuordnen…", u"&Ort ersetzen…", u"&Unter Ordner suchen…",
                          u"Schließen"};
        dialog.needsSelection = true;
        if (missing.empty()) {
            dialog.buttons = {u"Schließen"};
            dialog.needsSelection = false;
        }
        const ListAnswer answer = ShowListDialog(owner, dialog);
        if (answer.button + 1 == dialog.buttons.size()) {
            return;
        }
        const host::FileRow& row = missing[answer.row.value_or(0)];
        if (answer.button == 0) {
            AssignFile(owner, project, row, culture);
        } else if (answer.button == 1) {
            ReplacePlace(owner, project, row.path, culture);
        } else {
            SearchBelow(owner, project, missing, culture);
        }
    }
}

void ShowDuplicates(HWND owner, const OpenProject& project) {
    ListDialog dialog;
    std::size_t groups = 0;
    for (const auto& group : DuplicateFiles(host::ReadRows(project.GridLate()))) {
        ++groups;
        for (const host::FileRow& row : group) {
            dialog.rows.push_back({DecimalText(static_cast<long long>(groups)), DecimalText(row.id),
                                   row.name, row.path});
        }
    }
    dialog.title = u"Doppelte Einträge";
    dialog.hint = groups == 0 ? std::u16string(u"Kein Dokument steht zweimal in der Liste.")
                              : Counted(groups, u"Datei steht", u"Dateien stehen") +
                                    u" mehrfach in der Liste. Gleiche Nummern in der ersten Spalte "
                                    u"gehören zusammen.";
    dialog.columns = {{u"Datei", 50}, {u"Nr.", 50}, {u"Name/Betreff", 150}, {u"Speicherort", 300}};
    dialog.buttons = {u"Schließen"};
    ShowListDialog(owner, dialog);
}

void ShowImportReport(HWND owner, const host::ImportReport& report) {
    ListDialog dialog;
    dialog.title = u"Bericht des Einlesens";
    dialog.hint = host::ImportSummary(report) + u".";
    dialog.columns = {{u"Ergebnis", 120}, {u"Datei", 280}, {u"Grund", 150}};
    for (const host::ImportLine& line : report.lines) {
        dialog.rows.push_back({host::OutcomeText(line.outcome), line.path, line.reason});
    }
    dialog.buttons = {u"Schließen"};
    ShowListDialog(owner, dialog);
}

} // namespace talvix::workbench
