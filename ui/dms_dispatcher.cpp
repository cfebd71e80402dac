#include "ui/dms_dispatcher.h"

#include "automation/resume_next.h"
#include "folder/folder_import.h"

namespace talvix {

namespace {

const ProgressForm kForm{u"Aktulisierung läuft...", u"Dateiliste wird aktualisiert...",
                         u"Abbrechen", 100, 333};

} // namespace

DMSDispatcher::DMSDispatcher(Attachment& attachment)
    : attachment_(attachment), window_(attachment.platform.dialogs.MakeProgress(kForm)) {}

bool DMSDispatcher::Execute() {
    ResumeNext next{attachment_.trace, u"Execute"};
    window_->EnableTimer(ProgressTimer::DMSTimer, true);
    window_->EnableTimer(ProgressTimer::LabelTimer, true);
    next([&] { window_->ShowModal(*this); });
    window_->EnableTimer(ProgressTimer::DMSTimer, false);
    window_->EnableTimer(ProgressTimer::LabelTimer, false);
    return false;
}

void DMSDispatcher::Timer(ProgressTimer timer) {
    if (timer == ProgressTimer::DMSTimer) {
        DMSTimer_Timer();
    } else {
        LabelTimer_Timer();
    }
}

void DMSDispatcher::DMSTimer_Timer() {
    ResumeNext next{attachment_.trace, u"DMSTimer_Timer"};
    next([&] { ClearLabel(); });
    if (window_->IsVisible()) { // whatever fails, the form goes in the end
        next([&] { window_->EnableTimer(ProgressTimer::DMSTimer, false); });
        next([&] { ImportProjectFolder(attachment_); });
        next([&] { window_->Hide(); });
        next([&] { ClearLabel(); });
    }
}

void DMSDispatcher::LabelTimer_Timer() {
    window_->SetLabel(attachment_.strAddingFile.empty() ? kForm.label
                                                        : u"Dateiliste wird aktualisiert (" +
                                                              attachment_.strAddingFile + u")...");
}

void DMSDispatcher::CancelButton_Click() {
    window_->EnableCancel(false);
    attachment_.stopImport = true;
}

void DMSDispatcher::ClearLabel() {
    attachment_.strAddingFile.clear();
    window_->SetLabel(kForm.label);
}

void AddFilesFromProjectFolder(Attachment& attachment, bool silent) {
    ResumeNext next{attachment.trace, u"AddFilesFromProjectFolder"};
    attachment.silentImport = silent;
    attachment.stopImport = false;
    next([&] { DMSDispatcher(attachment).Execute(); });
}

} // namespace talvix
