#pragma once

#include "platform/platform.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace talvix {

/// Chooses files with the system's dialogs for opening and saving.
class FileDialog {
public:
    /// It begins in the process's current folder unless another one is set.
    explicit FileDialog(Platform& platform);

    std::int64_t hWnd = 0; ///< the owner's handle
    std::u16string DefaultDir;
    std::u16string DefaultFileName;
    std::u16string DefaultExt;
    std::u16string DialogTitle; ///< "" for the built-in one
    std::u16string Filter;      ///< added behind the pairs
    std::uint32_t Flags = 0;    ///< 0 lets the dialog choose them
    bool MultiSelect = false;
    bool MultiSelectOCXCompatible = false;

    /// A pair of the filter, numbered from 1 to 5; other numbers are passed over.
    void SetFilter(std::size_t number, std::u16string_view text, std::u16string_view suffix);
    void SetInitDir(std::u16string_view folder) { DefaultDir = folder; }

    void ShowOpen();
    void ShowSave();
    /// Chooses a folder instead; FileName is its path.
    void ShowFolder();

    /// "" after a cancelled dialog.
    const std::u16string& FileName() const { return fileName_; }
    std::int16_t FileCount() const { return fileCount_; }
    /// The next of several chosen files as a full path, "" after the last.
    std::u16string GetNextFile();

    /// The filter text as the system's dialog takes it.
    std::u16string FilterText();
    /// Chooses the flags for an intention, "Open" or "Save", where none are set.
    void CheckFlags(std::u16string_view intention);

private:
    struct Pair {
        std::u16string text;
        std::u16string suffix;
    };
    void Show(std::u16string_view intention, std::u16string_view builtInTitle);
    void Take(const std::u16string& answer);

    Platform& platform_;
    std::array<Pair, 5> pairs_;
    std::u16string fileName_;
    std::int16_t fileCount_ = 0;
    std::vector<std::u16string> files_;
    std::size_t nextFile_ = 0;
};

} // namespace talvix
