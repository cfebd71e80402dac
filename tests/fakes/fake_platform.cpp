#include "tests/fakes/fake_platform.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/literal_path.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/full_path.h"

namespace talvix {

namespace {

std::u16string_view ExtensionOf(std::u16string_view path) {
    const std::size_t at = path.find_last_of(u".\\");
    return at == std::u16string_view::npos || path[at] != u'.' ? std::u16string_view()
                                                               : path.substr(at + 1);
}

/// The folder that a path lies in; a drive's root ends in a backslash.
std::u16string_view ParentOf(std::u16string_view path) {
    const std::size_t last = path.rfind(u'\\');
    if (last == std::u16string_view::npos || last + 1 == path.size()) {
        return {};
    }
    return path.substr(0, last == 2 ? last + 1 : last);
}

std::u16string RegistryKey(std::uint32_t root, std::u16string_view key, std::u16string_view name) {
    return FakeCulture().UpperCase(DecimalText(root) + u"\\" + std::u16string(key) + u":" +
                                   std::u16string(name));
}

} // namespace

std::u16string FakeFiles::Key(std::u16string_view given) const {
    const std::u16string plain = PlainPath(given);
    std::u16string_view path = plain;
    while (path.size() > 3 && path.back() == u'\\') {
        path.remove_suffix(1);
    }
    return culture_.UpperCase(path);
}

void FakeFiles::MakeFile(std::u16string_view path, std::int64_t length) {
    MakeFolder(path.substr(0, path.rfind(u'\\')));
    entries_[Key(path)] = {std::u16string(path), {false, length}};
}

void FakeFiles::MakeFolder(std::u16string_view path) {
    entries_.try_emplace(Key(path), Entry{std::u16string(path), {true, 0}});
    if (ParentOf(path).size() > 2) {
        MakeFolder(ParentOf(path));
    }
}

std::optional<FileFacts> FakeFiles::Query(std::u16string_view path) {
    journal_.Step(u"query");
    journal_.Write(u"query " + std::u16string(path));
    for (const std::u16string& root : silentRoots) {
        if (Key(path).starts_with(root)) {
            return std::nullopt;
        }
    }
    const auto found = entries_.find(Key(path));
    return found == entries_.end() ? std::nullopt : std::optional(found->second.facts);
}

std::u16string FakeFiles::FullPath(std::u16string_view path) {
    journal_.Step(u"full path");
    return pathsAreFull ? std::u16string(path) : FullPathOf(path, CurrentFolder());
}

FolderListing FakeFiles::List(std::u16string_view folder) {
    journal_.Step(u"list");
    if (onList) {
        if (auto listing = onList(folder)) {
            return *std::move(listing);
        }
    }
    const std::u16string key = Key(folder);
    if (!entries_.contains(key)) {
        throw Failure(failure_number::kInvalidArgument,
                      u"There is no folder " + std::u16string(folder));
    }
    journal_.Write(u"list " + std::u16string(folder));
    FolderListing listing;
    for (const auto& [each, entry] : entries_) {
        const bool isBelow = each.starts_with(key + u"\\") &&
                             each.find(u'\\', key.size() + 1) == std::u16string::npos;
        if (isBelow) {
            const std::u16string name = entry.path.substr(key.size() + 1);
            if (entry.facts.isFolder) {
                listing.folders.push_back(name);
            } else {
                listing.files.push_back(
                    {name, links.contains(each) ? std::nullopt : std::optional(entry.facts)});
            }
        }
    }
    return listing;
}

bool FakeFiles::TakesNew(std::u16string_view path) const {
    const std::u16string folder = Key(ParentOf(path));
    return entries_.contains(folder) && !readOnly.contains(folder);
}

void FakeFiles::CreateFolder(std::u16string_view path) {
    journal_.Step(u"create folder");
    journal_.Write(u"create folder " + std::u16string(path));
    while (path.size() > 3 && path.back() == u'\\') {
        path.remove_suffix(1);
    }
    if (entries_.contains(Key(path)) || !TakesNew(path)) {
        throw Failure(failure_number::kInvalidArgument, u"Cannot be created");
    }
    MakeFolder(path);
}

Renamed FakeFiles::Rename(std::u16string_view from, std::u16string_view to) {
    journal_.Step(u"rename");
    if (beforeRename) {
        beforeRename(to);
    }
    journal_.Write(u"rename " + std::u16string(from) + u" -> " + std::u16string(to));
    const auto found = entries_.find(Key(from));
    if (found == entries_.end() || !TakesNew(to)) {
        throw Failure(failure_number::kInvalidArgument, u"Cannot be renamed");
    }
    if (entries_.contains(Key(to))) {
        return Renamed::Taken;
    }
    const FileFacts facts = found->second.facts;
    entries_.erase(found);
    entries_[Key(to)] = {std::u16string(to), facts};
    return Renamed::Done;
}

void FakeFiles::Remove(std::u16string_view path) {
    journal_.Step(u"remove");
    journal_.Write(u"remove " + std::u16string(path));
    if (entries_.erase(Key(path)) == 0) {
        throw Failure(failure_number::kInvalidArgument, u"Cannot be removed");
    }
}

std::u16string FakeFiles::TemporaryFolder() {
    journal_.Step(u"temporary folder");
    return u"C:\\Temp";
}

bool FakeFiles::CopyFile(std::u16string_view source, std::u16string_view target) {
    const auto found = entries_.find(Key(source));
    if (found == entries_.end() || found->second.facts.isFolder || !TakesNew(target)) {
        return false;
    }
    entries_[Key(target)] = {std::u16string(target), found->second.facts};
    return true;
}

std::optional<std::int32_t> FakeFileAnswers::AskForIcon(std::u16string_view path) {
    journal_.Step(u"icon");
    journal_.Write(u"icon " + std::u16string(path));
    if (unknown.contains(std::u16string(path))) {
        return std::nullopt;
    }
    return ExtensionOf(path) == u"doc" ? 3 : 7;
}

std::optional<std::u16string> FakeFileAnswers::AskForTypeName(std::u16string_view path) {
    journal_.Step(u"type");
    journal_.Write(u"type " + std::u16string(path));
    const std::u16string_view extension = ExtensionOf(path);
    if (extension.empty() || unknown.contains(std::u16string(path))) {
        return std::nullopt;
    }
    return std::u16string(extension) + u"-Datei";
}

bool FakeFileAnswers::CarriesOwnIcon(std::u16string_view path) {
    journal_.Step(u"own icon");
    return ExtensionOf(path).empty() || ExtensionOf(path) == u"exe";
}

std::int64_t FakeShell::SmallIconList() {
    journal_.Step(u"image list");
    journal_.Write(u"image list");
    return 4711;
}

ShellCopy FakeShell::Copy(std::u16string_view source, std::u16string_view target) {
    journal_.Step(u"copy");
    journal_.Write(u"copy " + std::u16string(source) + u" -> " + std::u16string(target));
    if (copyResult != 0) {
        return {copyResult, false};
    }
    const auto present = files_.Query(target);
    if (present && !replaces) {
        return {0, true};
    }
    return {files_.CopyFile(source, target) ? 0 : 2, false};
}

void FakeShell::Open(std::u16string_view what, std::u16string_view workingFolder) {
    journal_.Step(u"open");
    journal_.Write(u"open " + std::u16string(what) + u" in " + std::u16string(workingFolder));
}

std::int32_t FakeShell::ShowProperties(std::u16string_view path, std::int64_t owner) {
    journal_.Step(u"properties");
    journal_.Write(u"properties " + std::u16string(path) + u" over " + DecimalText(owner));
    return files_.Query(path) ? 1 : 0;
}

std::u16string FakeSystemInfo::UniqueText() {
    journal_.Step(u"unique text");
    return DecimalText(++unique_);
}

std::optional<RegistryValue> FakeRegistry::Read(std::uint32_t root, std::u16string_view key,
                                                std::u16string_view name) {
    journal_.Step(u"registry");
    const auto found = values_.find(RegistryKey(root, key, name));
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void FakeRegistry::WriteText(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                             std::u16string_view text) {
    values_[RegistryKey(root, key, name)] = {kRegistryText, std::u16string(text), 0};
}

void FakeRegistry::WriteNumber(std::uint32_t root, std::u16string_view key,
                               std::u16string_view name, std::uint32_t number) {
    values_[RegistryKey(root, key, name)] = {kRegistryNumber, u"", number};
}

void FakeTimers::RunPending() {
    journal_.Step(u"pump");
    journal_.Write(u"pump");
    if (onPending) {
        onPending();
    }
    while (!events_.empty()) {
        const std::function<void()> event = std::move(events_.front());
        events_.pop_front();
        event();
    }
}

Value FakePictures::Picture(std::int32_t number) {
    journal_.Step(u"picture");
    if (number != kMissingFilePicture && number != kLinkPicture) {
        throw Failure(failure_number::kBadIndex, u"No such picture");
    }
    Value& picture = pictures_[number];
    if (picture.IsNothing()) {
        picture = std::make_shared<Expando>(u"Picture" + DecimalText(number));
    }
    return picture;
}

void FakeTrace::Note(std::u16string_view procedure, std::u16string_view text) {
    notes.push_back(std::u16string(procedure) + u": " + std::u16string(text));
}

} // namespace talvix
