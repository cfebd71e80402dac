#include "workbench/program/main_menu.h"

#include "platform/win32/wide.h"

#include <iterator>
#include <span>

namespace talvix::workbench {

namespace {

struct MenuItem {
    int command;
    const char16_t* caption; ///< null for a line
};
constexpr MenuItem kFileMenu[] = {{kNew, u"&Neu\tStrg+N"},
                                  {kOpenFile, u"Ö&ffnen…\tStrg+O"},
                                  {kSave, u"&Speichern\tStrg+S"},
                                  {kSaveAs, u"Speichern &unter…"},
                                  {0, nullptr},
                                  {kReadFolder, u"Ordnerinhalt &einlesen\tF5"},
                                  {kFileMail, u"E-Mail aus Datei &ablegen…\tStrg+E"},
                                  {kFileSelected, u"In Outlook markierte E-Mail ab&legen…"},
                                  {0, nullptr},
                                  {kExit, u"&Beenden\tAlt+F4"}};

constexpr MenuItem kEditMenu[] = {{kCopyRows, u"&Kopieren\tStrg+C"},
                                  {kFilterRows, u"&Suchen…\tStrg+F"},
                                  {0, nullptr},
                                  {kFitColumns, u"Spalten&breiten anpassen"}};

void AppendMenuOf(HMENU bar, const wchar_t* caption, std::span<const MenuItem> items) {
    HMENU menu = CreatePopupMenu();
    for (const MenuItem& item : items) {
        if (item.caption == nullptr) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
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
    SetMenu(window, bar);
    ACCEL keys[] = {{FVIRTKEY | FCONTROL, 'N', kNew},        {FVIRTKEY | FCONTROL, 'O', kOpenFile},
                    {FVIRTKEY | FCONTROL, 'S', kSave},       {FVIRTKEY | FCONTROL, 'E', kFileMail},
                    {FVIRTKEY | FCONTROL, 'F', kFilterRows}, {FVIRTKEY, VK_F5, kReadFolder}};
    return CreateAcceleratorTableW(keys, static_cast<int>(std::size(keys)));
}

} // namespace talvix::workbench
