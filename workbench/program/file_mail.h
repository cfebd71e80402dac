#pragma once

#include "automation/culture.h"
#include "workbench/program/open_project.h"

#include <windows.h>

namespace talvix::workbench {

/// How a mail is to be filed.
struct MailChoice {
    std::int32_t operation = 3; ///< as `AddDMSItem` numbers it
    std::u16string subfolder;
    bool writeList = true;
};

/// Asks for ".eml" files and how they are to be filed, and files them.
void FileMailFromDisk(HWND owner, OpenProject& project, const Culture& culture);
/// Asks how, and files the mail that is selected in the running Outlook. Failure with a German text
/// when there is none.
void FileSelectedMail(HWND owner, OpenProject& project, const Culture& culture);

} // namespace talvix::workbench
