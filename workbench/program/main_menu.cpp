#include "workbench/program/main_menu.h"

#include "platform/win32/wide.h"

#include <iterator>

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

} // namespace

HACCEL MakeMainMenu(HWND window) {
    HMENU bar = CreateMenu();
    HMENU file = CreatePopupMenu();
    for (const MenuItem& item : kFileMenu) {
        if (item.caption == nullptr) {
            AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
        } else {
            AppendMenuW(file, MF_STRING, static_cast<UINT_PTR>(item.command), Wide(item.caption));
        }
    }
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"&Datei");
    SetMenu(window, bar);
    ACCEL keys[] = {{FVIRTKEY | FCONTROL, 'N', kNew},
                    {FVIRTKEY | FCONTROL, 'O', kOpenFile},
                    {FVIRTKEY | FCONTROL, 'S', kSave},
                    {FVIRTKEY | FCONTROL, 'E', kFileMail},
                    {FVIRTKEY, VK_F5, kReadFolder}};
    return CreateAcceleratorTableW(keys, static_cast<int>(std::size(keys)));
}

} // namespace talvix::workbench
