#include "workbench/host/document_files.h"

#include "automation/coercion.h"
#include "automation/text.h"
#include "common/general.h"

namespace talvix::host {

namespace {

constexpr std::int32_t kLink = 2;

std::u16string TextOf(const Document& document, const char16_t* key) {
    const auto found = document.find(key);
    const auto* text = found == document.end() ? nullptr : found->second.If<std::u16string>();
    return text == nullptr ? std::u16string() : *text;
}

std::int32_t NumberOf(const Document& document, const char16_t* key) {
    const auto found = document.find(key);
    const auto number = found == document.end() ? std::nullopt : NumericContent(found->second);
    return number && *number >= INT32_MIN && *number <= INT32_MAX
               ? static_cast<std::int32_t>(*number)
               : 0;
}

std::u16string_view WithoutEnd(std::u16string_view folder) {
    while (folder.ends_with(u'\\')) {
        folder.remove_suffix(1);
    }
    return folder;
}

std::u16string_view NameOf(std::u16string_view path) {
    return path.substr(path.rfind(u'\\') + 1);
}

/// What follows `folder` in a path below it, with its "\"; nothing for other paths.
std::optional<std::u16string_view> Below(std::u16string_view path, std::u16string_view folder,
                                         const Culture& culture) {
    if (folder.empty() || path.size() <= folder.size() || path[folder.size()] != u'\\' ||
        !culture.SameText(path.substr(0, folder.size()), folder)) {
        return std::nullopt;
    }
    return path.substr(folder.size());
}

/// Spelling alone: case, "/" for "\", doubled separators and ".\" do not matter.
std::u16string PlainSpelling(std::u16string_view path, const Culture& culture) {
    std::u16string plain = Replace(path, u"/", u"\\");
    const bool isNetwork = plain.starts_with(u"\\\\");
    for (const auto* what : {u"\\.\\", u"\\\\"}) {
        while (plain.find(what, 1) != std::u16string::npos) {
            plain.replace(1, std::u16string::npos, Replace(plain.substr(1), what, u"\\"));
        }
    }
    return culture.UpperCase((isNetwork && !plain.starts_with(u"\\\\") ? u"\\" : u"") + plain);
}

} // namespace

std::vector<FileRow> FileRows(const std::vector<Document>& documents) {
    std::vector<FileRow> rows;
    for (const Document& document : documents) {
        std::u16string path(Trim(TextOf(document, u"PhysicalStore1")));
        if (NumberOf(document, u"ObjectType") != kLink && !path.empty()) {
            rows.push_back(
                {NumberOf(document, u"ID"), TextOf(document, u"Subject"), std::move(path)});
        }
    }
    return rows;
}

std::vector<PlaceChange> MoveToPlace(const std::vector<FileRow>& rows, std::u16string_view oldPlace,
                                     std::u16string_view newPlace, const Culture& culture) {
    const std::u16string_view from = WithoutEnd(Trim(oldPlace));
    const std::u16string to(WithoutEnd(Trim(newPlace)));
    std::vector<PlaceChange> changes;
    for (const FileRow& row : rows) {
        if (const auto rest = Below(row.path, from, culture)) {
            changes.push_back({row, to + std::u16string(*rest)});
        }
    }
    return changes;
}

std::optional<std::u16string> MoveFolder(std::u16string_view folder, std::u16string_view oldPlace,
                                         std::u16string_view newPlace, const Culture& culture) {
    const std::u16string_view from = WithoutEnd(Trim(oldPlace));
    const std::u16string_view own = WithoutEnd(Trim(folder));
    const std::u16string to(WithoutEnd(Trim(newPlace)));
    if (!from.empty() && culture.SameText(own, from)) {
        return to;
    }
    const auto rest = Below(own, from, culture);
    return rest ? std::optional(to + std::u16string(*rest)) : std::nullopt;
}

void FilesByName::Add(std::u16string_view path) {
    paths_[culture_.UpperCase(NameOf(path))].emplace_back(path);
}

std::vector<PlaceChange> FilesByName::Find(const std::vector<FileRow>& rows) const {
    std::vector<PlaceChange> changes;
    for (const FileRow& row : rows) {
        const auto found = paths_.find(culture_.UpperCase(NameOf(row.path)));
        if (found != paths_.end() && found->second.size() == 1) {
            changes.push_back({row, found->second.front()});
        }
    }
    return changes;
}

std::map<std::int32_t, Document> FieldsOf(const std::vector<PlaceChange>& changes,
                                          std::u16string_view projectFolder,
                                          const Culture& culture) {
    std::map<std::int32_t, Document> fields;
    for (const PlaceChange& change : changes) {
        fields[change.row.id] = {
            {u"PhysicalStore1", change.to},
            {u"PhysicalStore2",
             ReplaceNoCase(culture, GetFolderPath(change.to), Trim(projectFolder), u"")}};
    }
    return fields;
}

std::vector<std::vector<FileRow>>
Duplicates(const std::vector<FileRow>& rows,
           const std::function<std::u16string(std::u16string_view)>& identity,
           const Culture& culture) {
    std::map<std::u16string, std::size_t> known;
    std::vector<std::vector<FileRow>> groups;
    for (const FileRow& row : rows) {
        const std::u16string own = identity(row.path);
        const std::u16string key =
            own.empty() ? u"?" + PlainSpelling(row.path, culture) : u"=" + own;
        const auto [place, isNew] = known.try_emplace(key, groups.size());
        if (isNew) {
            groups.emplace_back();
        }
        groups[place->second].push_back(row);
    }
    std::erase_if(groups, [](const std::vector<FileRow>& group) { return group.size() < 2; });
    return groups;
}

} // namespace talvix::host
