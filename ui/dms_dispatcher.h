#pragma once

#include "core/attachment.h"

#include <memory>

namespace talvix {

/// The form that shows how a folder import goes on and lets the user end it. It and the import know
/// of each other through `stopImport` and `strAddingFile` only.
class DMSDispatcher : public ProgressEvents {
public:
    explicit DMSDispatcher(Attachment& attachment);

    /// Shows the form, imports and returns when the form is hidden; always False.
    bool Execute();

    void Timer(ProgressTimer timer) override;
    void CancelButton_Click() override;

private:
    void DMSTimer_Timer();
    void LabelTimer_Timer();
    /// Back to the text without a file name.
    void ClearLabel();

    Attachment& attachment_;
    std::unique_ptr<ProgressWindow> window_;
};

/// Reads the project folder in behind a `DMSDispatcher`. A silent import derives no missing project
/// folder and asks for none.
void AddFilesFromProjectFolder(Attachment& attachment, bool silent);

} // namespace talvix
