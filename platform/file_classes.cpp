#include "platform/file_classes.h"

#include "automation/text.h"

#include <algorithm>
#include <utility>

namespace talvix {

namespace {

/// With its dot, in small ASCII letters; "" for a name without one.
std::u16string FoldedExtension(std::u16string_view path) {
    const std::size_t at = path.find_last_of(u".\\:");
    if (at == std::u16string_view::npos || path[at] != u'.') {
        return {};
    }
    std::u16string extension(path.substr(at));
    std::transform(extension.begin(), extension.end(), extension.begin(), FoldAscii);
    return extension;
}

} // namespace

const FileClasses::FileClass& FileClasses::ClassOf(const std::u16string& extension,
                                                   std::u16string_view path) {
    if (answers_.HaveClassesChanged()) {
        classes_.clear();
    }
    const auto found = classes_.find(extension);
    if (found != classes_.end()) {
        return found->second;
    }
    const bool hasOwnIcon = answers_.CarriesOwnIcon(path);
    return classes_.try_emplace(extension, FileClass{hasOwnIcon}).first->second;
}

template <typename Answer>
Answer FileClasses::Find(std::u16string_view path, std::optional<Answer> FileClass::*kept,
                         std::optional<Answer> (FileAnswers::*ask)(std::u16string_view)) {
    const std::u16string extension = FoldedExtension(path);
    if (const FileClass& known = ClassOf(extension, path); known.*kept) {
        return *(known.*kept);
    }
    std::optional<Answer> answer = (answers_.*ask)(path);
    // Looked up again: a shell that is asked may run others, who ask in their turn.
    const auto found = classes_.find(extension);
    if (answer && found != classes_.end() && !found->second.hasOwnIcon) {
        found->second.*kept = answer; // a file that has just gone says nothing of its class
    }
    return std::move(answer).value_or(Answer());
}

std::int32_t FileClasses::IconIndex(std::u16string_view path) {
    return Find(path, &FileClass::icon, &FileAnswers::AskForIcon);
}

std::u16string FileClasses::TypeName(std::u16string_view path) {
    return Find(path, &FileClass::typeName, &FileAnswers::AskForTypeName);
}

bool FileClasses::HasOwnIcon(std::u16string_view path) {
    return ClassOf(FoldedExtension(path), path).hasOwnIcon;
}

} // namespace talvix
