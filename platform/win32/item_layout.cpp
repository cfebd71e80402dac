#include "platform/win32/item_layout.h"

namespace talvix {

namespace {

using Control = ItemControl;

constexpr DWORD kLabel = SS_LEFT;
constexpr DWORD kLine = SS_ETCHEDHORZ;
constexpr DWORD kIcon = SS_ICON | SS_REALSIZECONTROL | SS_CENTERIMAGE;
constexpr DWORD kOption = BS_AUTORADIOBUTTON;
constexpr DWORD kBox = ES_AUTOHSCROLL | WS_TABSTOP;
constexpr DWORD kNotes = ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP;
constexpr DWORD kList = CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP;
constexpr int kFilePicture = 3;
constexpr int kLinkPicture16 = 2;
constexpr int kNotesPicture = 4;
constexpr int kDocumentPicture = 5;
constexpr int kKindPicture = 6;

const ItemPart kParts[] = {
    {L"STATIC", L"Typ", kLabel, {120, 240, 500, 240}, {}, true},
    {L"STATIC", L"", kLine, {660, 345, 5310, 15}, {}},
    {L"STATIC", L"", kIcon, {240, 660, 480, 480}, {}, false, kKindPicture},
    {L"BUTTON",
     L"Datei",
     kOption | WS_GROUP | WS_TABSTOP,
     {1140, 600, 3000, 285},
     Control::optFile},
    {L"BUTTON", L"Internetverknüpfung", kOption, {1140, 960, 3600, 285}, Control::optLink},
    {L"STATIC", L"", kIcon, {840, 622, 240, 240}, {}, false, kFilePicture},
    {L"STATIC", L"", kIcon, {840, 982, 240, 240}, {}, false, kLinkPicture16},
    {L"STATIC", L"Dokument", kLabel | WS_GROUP, {120, 1680, 1000, 240}, {}, true},
    {L"STATIC", L"", kLine, {1200, 1785, 4770, 15}, {}},
    {L"STATIC", L"", kIcon, {240, 2100, 480, 480}, {}, false, kDocumentPicture},
    {L"STATIC", L"Pfad", kLabel, {840, 2070, 900, 240}, {}},
    {L"EDIT", L"", kBox, {1740, 2010, 3780, 315}, Control::TextPhysicalStore1},
    {L"BUTTON", L"...", WS_TABSTOP, {5595, 1980, 375, 375}, Control::CommandPhysicalStore1},
    {L"BUTTON",
     L"In den Talvix-Projektordner kopieren",
     BS_AUTOCHECKBOX | WS_TABSTOP,
     {1740, 2460, 4230, 285},
     Control::chkCopyItem},
    {L"STATIC", L"Weitere Informationen", kLabel, {120, 3240, 2000, 240}, {}, true},
    {L"STATIC", L"", kLine, {2220, 3345, 3750, 15}, {}},
    {L"STATIC", L"", kIcon, {240, 3660, 480, 480}, {}, false, kNotesPicture},
    {L"STATIC", L"Status", kLabel, {840, 3630, 900, 240}, {}},
    {L"EDIT", L"", kBox, {1740, 3570, 4230, 315}, Control::TextStatus},
    {L"STATIC", L"Notizen", kLabel, {840, 4050, 900, 240}, {}},
    {L"EDIT", L"", kNotes, {1740, 3990, 4230, 1335}, Control::TextLongDescription},
    {L"STATIC", L"Vorgang", kLabel, {840, 5490, 900, 240}, {}},
    {L"COMBOBOX", L"", kList, {1740, 5430, 4230, 3600}, Control::ActionCombo},
    {L"BUTTON", L"OK", BS_DEFPUSHBUTTON | WS_TABSTOP, {3330, 6180, 1260, 390}, Control::btnOK},
    {L"BUTTON", L"Abbrechen", WS_TABSTOP, {4710, 6180, 1260, 390}, Control::btnCancel},
};

} // namespace

std::span<const ItemPart> ItemParts() {
    return kParts;
}

} // namespace talvix
