#pragma once

#include "platform/item_window.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace talvix {

struct FolderBrowser {
    std::uint32_t flags = 0; ///< the system browser's own
    std::u16string title;
    std::u16string root;        ///< folder shown as the topmost, "" for the desktop
    std::u16string startFolder; ///< folder chosen at first, "" for none
};

enum class ProgressTimer { DMSTimer, LabelTimer };

/// What the window of a progress form reports.
class ProgressEvents {
public:
    virtual ~ProgressEvents() = default;
    virtual void Timer(ProgressTimer timer) = 0;
    /// The cancel button, its key or the window's close box.
    virtual void CancelButton_Click() = 0;
};

/// The window of a progress form: one label and one button.
class ProgressWindow {
public:
    virtual ~ProgressWindow() = default;
    /// Shows the new text at once.
    virtual void SetLabel(std::u16string_view text) = 0;
    virtual void EnableTimer(ProgressTimer timer, bool on) = 0;
    virtual void EnableCancel(bool on) = 0;
    virtual bool IsVisible() const = 0;
    /// Shows the window and returns when it was hidden; meanwhile no other window of the thread
    /// takes input. Failure when it cannot be shown.
    virtual void ShowModal(ProgressEvents& events) = 0;
    virtual void Hide() = 0;
};

struct ProgressForm {
    std::u16string caption;
    std::u16string label;
    std::u16string cancelButton;
    std::uint32_t dmsTimer = 0;   ///< milliseconds
    std::uint32_t labelTimer = 0; ///< milliseconds
};

struct FileChooser {
    std::int64_t owner = 0; ///< a window's handle
    bool toSave = false;
    std::u16string filter;        ///< pairs of text and pattern, each ended by NUL
    std::u16string fileName;      ///< filled in beforehand
    std::size_t bufferLength = 0; ///< units that the answer may take
    std::u16string folder;
    std::u16string title;
    std::uint32_t flags = 0; ///< the system's own (OFN_...)
    std::u16string defaultExtension;
};

/// The dialogs with windows of their own.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    /// The chosen folder, "" when the browser was cancelled or cannot be shown.
    virtual std::u16string BrowseForFolder(const FolderBrowser& browser) = 0;
    /// A progress form that is not shown yet.
    virtual std::unique_ptr<ProgressWindow> MakeProgress(const ProgressForm& form) = 0;
    /// The system's file dialog. The answer as it delivers it, NULs included; nothing when it was
    /// cancelled or failed.
    virtual std::optional<std::u16string> ChooseFile(const FileChooser& chooser) = 0;
    /// Shows the document dialog until it hides itself. Failure when it cannot be shown.
    virtual void ShowItemForm(ItemForm& form) = 0;
};

} // namespace talvix
