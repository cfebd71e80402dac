#include "workbench/program/main_menu.h"

#include "automation/text.h"
#include "platform/win32/wide.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace talvix::workbench {

namespace {

struct MenuItem {
    int command;
    const char16_t* caption; ///< null for a line
};
constexpr int kRecentMenu = 149;

constexpr MenuItem kFileMenu[] = {{kNew, u"&Neu\tStrg+N"},
                                  {kOpenFile, u"Ö&ffnen…\tStrg+O"},
                                  {kRecentMenu, u"&Zuletzt verwendet"},
                                  {kCloseProject, u"S&chließen\tStrg+W"},
                                  {kSave, u"&Speichern\tStrg+S"},
                                  {kSaveAs, u"Speichern &unter…"},
                                  {kVersions, u"Frühere Fassung &wiederherstellen…"},
                                  {0, nullptr},
                                  {kReadFolder, u"Ordnerinhalt &einlesen\tF5"},
                                  {kFileMail, u"E-Mail aus Datei &ablegen…\tStrg+E"},
                                  {kFileSelected, u"In Outlook markierte E-Mail ab&legen…"},
                                  {0, nullptr},
                                  {kPrint, u"&Drucken…\tStrg+P"},
                                  {0, nullptr},
                                  {kExit, u"&Beenden\tAlt+F4"}};

constexpr MenuItem kEditMenu[] = {{kUndo, u"&Rückgängig\tStrg+Z"},
                                  {kRedo, u"&Wiederholen\tStrg+Y"},
                                  {0, nullptr},
                                  {kCopyRows, u"&Kopieren\tStrg+C"},
                                  {kCopyNetworkPath, u"&Netzwerkpfad kopieren\tStrg+Umschalt+C"},
                                  {0, nullptr},
                                  {kFilterRows, u"&Suchen…\tStrg+F"},
                                  {kFitColumns, u"Spalten&breiten anpassen"}};

constexpr MenuItem kExtrasMenu[] = {{kMissingFiles, u"&Fehlende Dateien…"},
                                    {kDuplicates, u"&Doppelte Einträge…"},
                                    {kImportReport, u"&Bericht des letzten Einlesens…"}};

constexpr MenuItem kHelpMenu[] = {{kHelp, u"&Anleitung\tF1"}, {kAbout, u"&Info"}};

constexpr ACCEL kKeys[] = {{FVIRTKEY | FCONTROL, 'N', kNew},
                           {FVIRTKEY | FCONTROL, 'O', kOpenFile},
                           {FVIRTKEY | FCONTROL, 'W', kCloseProject},
                           {FVIRTKEY | FCONTROL, 'S', kSave},
                           {FVIRTKEY | FCONTROL, 'P', kPrint},
                           {FVIRTKEY | FCONTROL, 'E', kFileMail},
                           {FVIRTKEY | FCONTROL, 'F', kFilterRows},
                           {FVIRTKEY | FCONTROL, 'Z', kUndo},
                           {FVIRTKEY | FCONTROL, 'Y', kRedo},
                           {FVIRTKEY | FCONTROL | FSHIFT, 'C', kCopyNetworkPath},
                           {FVIRTKEY, VK_F5, kReadFolder},
                           {FVIRTKEY, VK_F1, kHelp},
                           {FVIRTKEY | FCONTROL, VK_TAB, kNextPage},
                           {FVIRTKEY | FCONTROL | FSHIFT, VK_TAB, kPreviousPage}};

void AppendMenuOf(HMENU bar, const wchar_t* caption, std::span<const MenuItem> items) {
    HMENU menu = CreatePopupMenu();
    for (const MenuItem& item : items) {
        if (item.caption == nullptr) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        } else if (item.command == kRecentMenu) {
            AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(CreatePopupMenu()),
                        Wide(item.caption));
        } else {
            AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(item.command), Wide(item.caption));
        }
    }
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), caption);
}

} // namespace

HACCEL MakeMainMenu(HWND window) {
    HMENU bar = CreateMenu();
    AppendMenuOf(bar, L"&Datei", kFileMenu);
    AppendMenuOf(bar, L"&Bearbeiten", kEditMenu);
    AppendMenuOf(bar, L"&Extras", kExtrasMenu);
    AppendMenuOf(bar, L"&Hilfe", kHelpMenu);
    SetMenu(window, bar);
    ACCEL keys[std::size(kKeys)];
    std::copy(std::begin(kKeys), std::end(kKeys), keys);
    return CreateAcceleratorTableW(keys, static_cast<int>(std::size(keys)));
}

void ShowRecentFiles(HWND window, const std::vector<std::u16string>& files) {
    HMENU fileMenu = GetSubMenu(GetMenu(window), 0);
    int place = 0;
    while (kFileMenu[place].command != kRecentMenu) {
        ++place;
    }
    HMENU menu = GetSubMenu(fileMenu, place);
    while (DeleteMenu(menu, 0, MF_BYPOSITION) != FALSE) {
    }
    int number = 0;
    for (const std::u16string& file : files) {
        const std::u16string caption =
            u"&" + DecimalText(number + 1) + u" " + Replace(file, u"&", u"&&");
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(kFirstRecent + number), Wide(caption));
        ++number;
    }
    EnableMenuItem(fileMenu, static_cast<UINT>(place),
                   MF_BYPOSITION | (files.empty() ? MF_GRAYED : MF_ENABLED));
}

void EnableCommand(HWND window, int command, bool enabled) {
    EnableMenuItem(GetMenu(window), static_cast<UINT>(command),
                   MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

} // namespace talvix::workbench
