#pragma once

#include "automation/culture.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/menus.h"
#include "platform/messages.h"
#include "platform/network.h"
#include "platform/objects.h"
#include "platform/pictures.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/system_info.h"
#include "platform/timers.h"

namespace talvix {

/// Everything outside the process that the component uses.
struct Platform {
    Files& files;
    Shell& shell;
    Registry& registry;
    SystemInfo& system;
    Clock& clock;
    Culture& locale;
    Timers& timers;
    Pictures& pictures;
    Network& network;
    Messages& messages;
    Dialogs& dialogs;
    Objects& objects;
    Menus& menus;
};

} // namespace talvix
