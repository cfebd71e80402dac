#pragma once

#include "platform/dialogs.h"

namespace talvix {

class Win32Dialogs : public Dialogs {
public:
    std::u16string BrowseForFolder(const FolderBrowser& browser) override;
    std::unique_ptr<ProgressWindow> MakeProgress(const ProgressForm& form) override;
    std::optional<std::u16string> ChooseFile(const FileChooser& chooser) override;
    void ShowItemForm(ItemForm& form) override;
};

} // namespace talvix
