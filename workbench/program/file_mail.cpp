#include "workbench/program/file_mail.h"

#include "automation/coercion.h"
#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/dialog_template.h"
#include "platform/win32/wide.h"
#include "workbench/host/mail_item.h"
#include "workbench/program/message_file.h"
#include "workbench/program/page.h"

#include <commdlg.h>
#include <oleauto.h>

namespace talvix::workbench {

namespace {

constexpr WORD kFirstOperation = 100;
constexpr WORD kSubfolder = 110;
constexpr WORD kWriteList = 111;
constexpr DWORD kRadio = BS_AUTORADIOBUTTON;

/// In the order of the component's operations.
constexpr const char16_t* kOperations[] = {
    u"Ganze E-Mail als eine Datei (.msg)", u"E-Mail ohne ihre Anlagen (.msg)",
    u"Nur die Anlagen, jede als eigene Datei", u"Anlagen und E-Mail getrennt"};

DialogTemplate Template(std::u16string_view what) {
    DialogTemplate made(WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_CENTER,
                        {0, 0, 230, 158}, u"E-Mail ablegen");
    made.Add(DialogTemplate::kStaticKind, 0xFFFF, SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_ENDELLIPSIS,
             {8, 8, 214, 10}, what);
    short top = 26;
    WORD id = kFirstOperation;
    for (const char16_t* each : kOperations) {
        const DWORD first = id == kFirstOperation ? WS_GROUP | WS_TABSTOP : 0;
        made.Add(DialogTemplate::kButtonKind, id, kRadio | first, {8, top, 214, 11}, each);
        top = static_cast<short>(top + 14);
        ++id;
    }
    made.Add(DialogTemplate::kStaticKind, 0xFFFF, SS_LEFT | WS_GROUP, {8, 91, 55, 10},
             u"&Unterordner:");
    made.Add(DialogTemplate::kEditKind, kSubfolder, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP,
             {64, 89, 158, 13}, u"");
    made.Add(DialogTemplate::kButtonKind, kWriteList, BS_AUTOCHECKBOX | WS_TABSTOP,
             {8, 110, 214, 11}, u"&Liste danach in das Projekt schreiben");
    made.Add(DialogTemplate::kButtonKind, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {116, 136, 50, 14},
             u"OK");
    made.Add(DialogTemplate::kButtonKind, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, {172, 136, 50, 14},
             u"Abbrechen");
    return made;
}

void ShowChoice(HWND dialog, const MailChoice& choice) {
    CheckRadioButton(dialog, kFirstOperation, kFirstOperation + 3,
                     kFirstOperation + choice.operation);
    SetDlgItemTextW(dialog, kSubfolder, Wide(choice.subfolder));
    CheckDlgButton(dialog, kWriteList, choice.writeList ? BST_CHECKED : BST_UNCHECKED);
}

void TakeChoice(HWND dialog, MailChoice& choice) {
    for (std::int32_t operation = 0; operation <= 3; ++operation) {
        if (IsDlgButtonChecked(dialog, kFirstOperation + operation) == BST_CHECKED) {
            choice.operation = operation;
        }
    }
    choice.subfolder = Trim(TextOfControl(GetDlgItem(dialog, kSubfolder)));
    choice.writeList = IsDlgButtonChecked(dialog, kWriteList) == BST_CHECKED;
}

INT_PTR CALLBACK ChoiceProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        CenterOverOwner(dialog);
        ShowChoice(dialog, *reinterpret_cast<const MailChoice*>(lParam));
        return TRUE;
    }
    if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)) {
        return FALSE;
    }
    if (LOWORD(wParam) == IDOK) {
        TakeChoice(dialog,
                   *reinterpret_cast<MailChoice*>(GetWindowLongPtrW(dialog, GWLP_USERDATA)));
    }
    EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

/// False when the user does not want to go on.
bool AskHow(HWND owner, std::u16string_view what, MailChoice& choice) {
    const DialogTemplate description = Template(what);
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), description.Get(), owner,
                                   ChoiceProcedure, reinterpret_cast<LPARAM>(&choice)) == IDOK;
}

/// Several files come as their folder and their names, one as its path.
std::vector<std::u16string> PathsIn(const std::u16string& chosen) {
    std::vector<std::u16string> parts;
    for (std::size_t at = 0; at < chosen.size() && chosen[at] != 0;) {
        parts.push_back(chosen.substr(at, chosen.find(u'\0', at) - at));
        at += parts.back().size() + 1;
    }
    if (parts.size() < 2) {
        return parts;
    }
    const std::u16string folder = parts.front() + u"\\";
    parts.erase(parts.begin());
    for (std::u16string& each : parts) {
        each.insert(0, folder);
    }
    return parts;
}

std::vector<std::u16string> AskForMails(HWND owner) {
    std::u16string chosen(32768, u'\0');
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrTitle = L"E-Mails zum Ablegen wählen";
    dialog.lpstrFilter = L"E-Mails (*.eml)\0*.eml\0Alle Dateien\0*.*\0";
    dialog.lpstrFile = WideBuffer(chosen);
    dialog.nMaxFile = static_cast<DWORD>(chosen.size());
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST |
                   OFN_NOCHANGEDIR | OFN_ALLOWMULTISELECT;
    return GetOpenFileNameW(&dialog) != FALSE ? PathsIn(chosen) : std::vector<std::u16string>();
}

void File(OpenProject& project, const Object& item, std::u16string_view subject,
          const MailChoice& choice) {
    const Value now = Date{0}; // the component takes today for it
    project.MainLate().Call(u"AddDMSItem", 0, subject, u"", now, u"", now, u"", u"", u"", u"", u"",
                            item, choice.operation, choice.writeList, choice.subfolder);
}

std::u16string Described(const host::Mail& mail) {
    const std::size_t count = mail.attachments.size();
    return mail.subject + u" (" +
           (count == 0 ? std::u16string(u"ohne") : DecimalText(static_cast<long long>(count))) +
           (count == 1 ? u" Anlage)" : u" Anlagen)");
}

Late SelectedInOutlook() {
    CLSID id{};
    ComPtr<IUnknown> running;
    ComPtr<IDispatch> outlook;
    if (FAILED(CLSIDFromProgID(L"Outlook.Application", &id)) ||
        FAILED(GetActiveObject(id, nullptr, running.Out())) ||
        FAILED(running->QueryInterface(IID_IDispatch, outlook.OutAny()))) {
        throw Failure(failure_number::kUnexpected,
                      u"Outlook läuft nicht. Bitte starten Sie Outlook, oder legen Sie eine E-Mail "
                      u"aus einer Datei (.eml) ab.");
    }
    const Late selection = Late(WrapDispatch(outlook.Get()))[u"ActiveExplorer"][u"Selection"];
    return selection(u"Item", 1);
}

} // namespace

void FileMailFromDisk(HWND owner, OpenProject& project, const Culture& culture) {
    const std::vector<std::u16string> paths = AskForMails(owner);
    std::vector<host::Mail> mails;
    for (const std::u16string& path : paths) {
        mails.push_back(ReadMailFile(path)); // all are readable before the first is filed
    }
    MailChoice choice;
    const std::u16string what =
        mails.size() == 1 ? Described(mails.front())
                          : DecimalText(static_cast<long long>(mails.size())) + u" E-Mails";
    if (mails.empty() || !AskHow(owner, what, choice)) {
        return;
    }
    for (host::Mail& mail : mails) {
        const std::u16string subject = mail.subject;
        File(project, host::MakeMailItem(mail, {WriteMessageFile, WriteWholeFile}, culture),
             subject, choice);
    }
}

void FileSelectedMail(HWND owner, OpenProject& project, const Culture& culture) {
    const Late item = SelectedInOutlook();
    const std::u16string subject = ToText(item.Call(u"Subject"), culture);
    MailChoice choice;
    if (AskHow(owner, subject, choice)) {
        File(project, item.AsObject(), subject, choice);
    }
}

} // namespace talvix::workbench
