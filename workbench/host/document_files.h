#pragma once

#include "automation/culture.h"
#include "workbench/host/project.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace talvix::host {

/// A document that stands for a file, not for a link.
struct FileRow {
    std::int32_t id = 0;
    std::u16string name; ///< its "Subject"
    std::u16string path;
    bool operator==(const FileRow&) const = default;
};

/// The documents that are files and have a place.
std::vector<FileRow> FileRows(const std::vector<Document>& documents);

/// A document's file at another place.
struct PlaceChange {
    FileRow row;
    std::u16string to;
    bool operator==(const PlaceChange&) const = default;
};

/// All rows below a place, and where they would lie below another one. A place ends at a folder's
/// border
/// ("P:\A" does not mean "P:\AB"), with or without its closing "\"; cases do not matter. Nothing
/// for an empty old place.
std::vector<PlaceChange> MoveToPlace(const std::vector<FileRow>& rows, std::u16string_view oldPlace,
                                     std::u16string_view newPlace, const Culture& culture);

/// A folder that is the old place or lies below it, at the new one; nothing for every other folder.
std::optional<std::u16string> MoveFolder(std::u16string_view folder, std::u16string_view oldPlace,
                                         std::u16string_view newPlace, const Culture& culture);

/// Files by their names without a path, cases do not matter.
class FilesByName {
public:
    explicit FilesByName(const Culture& culture) : culture_(culture) {}
    void Add(std::u16string_view path);
    /// The rows whose file's name occurs exactly once.
    std::vector<PlaceChange> Find(const std::vector<FileRow>& rows) const;

private:
    const Culture& culture_;
    std::map<std::u16string, std::vector<std::u16string>> paths_;
};

/// The fields that other places give the rows, by "ID": the place and, as the component fills it,
/// the folder relative to the project's.
std::map<std::int32_t, Document> FieldsOf(const std::vector<PlaceChange>& changes,
                                          std::u16string_view projectFolder,
                                          const Culture& culture);

/// Rows that stand for the same file, each group in the list's order. `identity` gives the same
/// text for the same file, and "" for one that is not there; such rows are compared by their
/// spelling alone.
std::vector<std::vector<FileRow>>
Duplicates(const std::vector<FileRow>& rows,
           const std::function<std::u16string(std::u16string_view path)>& identity,
           const Culture& culture);

} // namespace talvix::host
