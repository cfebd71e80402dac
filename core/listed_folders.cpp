#include "core/listed_folders.h"

#include "automation/failure.h"
#include "automation/text.h"

#include <algorithm>

namespace talvix {

namespace {

constexpr int kMissingUntilListed = 4;

struct Place {
    std::u16string_view folder;
    std::u16string_view name;
};

Place PlaceOf(std::u16string_view path) {
    const std::size_t end = path.find_last_of(u'\\');
    if (end == std::u16string_view::npos) {
        return {};
    }
    return {path.substr(0, end), path.substr(end + 1)};
}

bool IsTakenAsWritten(std::u16string_view name) {
    return !name.empty() && name.back() != u'.' && name.back() != u' ' &&
           std::all_of(name.begin(), name.end(), [](char16_t unit) {
               return unit >= u' ' && unit < 0x7F && unit != u'~' && unit != u'/' && unit != u':' &&
                      unit != u'*' && unit != u'?';
           });
}

std::u16string Folded(std::u16string_view name) {
    std::u16string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), FoldAscii);
    return folded;
}

} // namespace

std::optional<ListedFolders::Answer> ListedFolders::Ask(std::u16string_view path) const {
    const Place place = PlaceOf(path);
    if (folders_.empty() || !IsTakenAsWritten(place.name)) {
        return std::nullopt;
    }
    const auto folder = folders_.find(Folded(place.folder));
    if (folder == folders_.end() || !folder->second.isListed) {
        return std::nullopt;
    }
    const auto found = folder->second.names.find(Folded(place.name));
    if (found == folder->second.names.end()) {
        return Answer{};
    }
    return found->second ? std::optional(Answer{found->second}) : std::nullopt;
}

void ListedFolders::NoteMissing(std::u16string_view path) {
    const Place place = PlaceOf(path);
    if (place.folder.empty() || place.folder.back() == u':') {
        return; // "C:" alone would be the drive's current folder
    }
    Folder& folder = folders_[Folded(place.folder)];
    if (++folder.missing == kMissingUntilListed) {
        List(place.folder, folder);
    }
}

void ListedFolders::List(std::u16string_view folder, Folder& into) {
    FolderListing listing;
    try {
        listing = files_.List(folder);
    } catch (const Failure&) {
        return; // then each file is asked for
    }
    for (const ListedFile& file : listing.files) {
        into.names.emplace(Folded(file.name), file.facts);
    }
    for (const std::u16string& name : listing.folders) {
        into.names.emplace(Folded(name), FileFacts{true, 0});
    }
    into.isListed = listing.isWhole;
}

} // namespace talvix
