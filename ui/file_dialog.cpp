#include "ui/file_dialog.h"

#include <algorithm>
#include <utility>

namespace talvix {

namespace {

constexpr std::size_t kBufferLength = 512;
constexpr std::uint32_t kOpenFlags = 6148;          // hide read only, path and file must exist
constexpr std::uint32_t kOpenSeveralFlags = 530948; // the same, explorer style, several files
constexpr std::uint32_t kSaveFlags = 2054;          // ask before replacing, path must exist
constexpr std::uint32_t kSeveral = 0x80200;
constexpr std::int32_t kCritical = 16;
constexpr std::uint32_t kFolderFlags = 65;

std::vector<std::u16string> SplitAtNul(const std::u16string& text) {
    std::vector<std::u16string> parts;
    for (std::size_t start = 0; start < text.size() && text[start] != 0;) {
        const std::size_t end = std::min(text.find(u'\0', start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

} // namespace

FileDialog::FileDialog(Platform& platform)
    : DefaultDir(platform.files.CurrentFolder()), platform_(platform) {}

void FileDialog::SetFilter(std::size_t number, std::u16string_view text,
                           std::u16string_view suffix) {
    if (number >= 1 && number <= pairs_.size()) {
        pairs_[number - 1] = {std::u16string(text), std::u16string(suffix)};
    }
}

std::u16string FileDialog::FilterText() {
    std::u16string filter;
    for (const Pair& pair : pairs_) {
        if (!pair.text.empty() && !pair.suffix.empty()) {
            filter += pair.text + u'\0' + pair.suffix + u'\0';
        }
    }
    if (!Filter.empty()) {
        while (Filter.ends_with(u'\0')) {
            Filter.pop_back();
        }
        filter += Filter + u'\0';
    }
    if (filter.empty()) {
        filter = u"Alle Dateien" + std::u16string(1, u'\0') + u"*.*";
    }
    return filter + std::u16string(2, u'\0');
}

void FileDialog::CheckFlags(std::u16string_view intention) {
    if (Flags != 0) {
        Flags |= MultiSelect ? kSeveral : 0;
    } else if (intention == u"Open") {
        Flags = MultiSelect ? kOpenSeveralFlags : kOpenFlags;
    } else if (intention == u"Save") {
        Flags = kSaveFlags;
    } else {
        platform_.messages.Show(u"Unbekannte Intention: " + std::u16string(intention), kCritical,
                                u"CheckFlags");
    }
}

void FileDialog::ShowOpen() {
    Show(u"Open", u"Datei öffnen");
}

void FileDialog::ShowSave() {
    Show(u"Save", u"Datei speichern unter");
}

void FileDialog::ShowFolder() {
    fileName_ = platform_.dialogs.BrowseForFolder({kFolderFlags, DialogTitle, u"", DefaultDir});
    fileCount_ = fileName_.empty() ? 0 : 1;
    files_.clear();
    nextFile_ = 0;
}

void FileDialog::Show(std::u16string_view intention, std::u16string_view builtInTitle) {
    FileChooser chooser;
    chooser.filter = FilterText();
    // What is chosen for one showing is not the caller's choice for the next one.
    const std::uint32_t given = Flags;
    CheckFlags(intention);
    chooser.flags = given == 0 ? std::exchange(Flags, 0) : Flags;
    chooser.owner = hWnd;
    chooser.toSave = intention == u"Save";
    chooser.fileName = DefaultFileName;
    chooser.bufferLength = kBufferLength;
    chooser.folder = DefaultDir;
    chooser.title = DialogTitle.empty() ? std::u16string(builtInTitle) : DialogTitle;
    chooser.defaultExtension = DefaultExt;
    fileName_.clear();
    fileCount_ = 0;
    files_.clear();
    nextFile_ = 0;
    const auto answer = platform_.dialogs.ChooseFile(chooser);
    if (answer) {
        Take(*answer);
    }
}

void FileDialog::Take(const std::u16string& answer) {
    if (!MultiSelect) {
        fileName_ = answer.substr(0, answer.find(u'\0'));
        fileCount_ = 1;
        return;
    }
    std::vector<std::u16string> parts = SplitAtNul(answer);
    if (parts.size() > 1) { // the folder, then each name
        std::u16string folder = parts.front();
        folder += folder.ends_with(u'\\') ? u"" : u"\\";
        parts.erase(parts.begin());
        for (std::u16string& part : parts) {
            part.insert(0, folder);
        }
    }
    files_ = std::move(parts);
    fileCount_ = static_cast<std::int16_t>(std::min<std::size_t>(files_.size(), INT16_MAX));
    if (MultiSelectOCXCompatible) {
        fileName_ = answer.substr(0, answer.find(std::u16string(2, u'\0')));
    } else if (!files_.empty()) {
        fileName_ = files_.front();
        nextFile_ = 1;
    }
}

std::u16string FileDialog::GetNextFile() {
    return nextFile_ < files_.size() ? files_[nextFile_++] : std::u16string();
}

} // namespace talvix
