#pragma once

#include "platform/platform.h"
#include "platform/win32/dialogs.h"
#include "platform/win32/files.h"
#include "platform/win32/locale.h"
#include "platform/win32/messages.h"
#include "platform/win32/network.h"
#include "platform/win32/objects.h"
#include "platform/win32/pictures.h"
#include "platform/win32/popup_menu.h"
#include "platform/win32/registry.h"
#include "platform/win32/shell.h"
#include "platform/win32/system.h"

namespace talvix {

/// All ports as this system offers them.
struct Win32Platform {
    Win32Files files;
    Win32Shell shell;
    Win32Registry registry;
    Win32SystemInfo system;
    Win32Clock clock;
    Win32Locale locale;
    Win32Timers timers;
    Win32Pictures pictures;
    Win32Network network;
    Win32Messages messages;
    Win32Dialogs dialogs;
    Win32Objects objects;
    Win32Menus menus;
    Platform ports{files,    shell,   registry, system,  clock,   locale, timers,
                   pictures, network, messages, dialogs, objects, menus};
};

} // namespace talvix
