#pragma once

#include "automation/culture.h"
#include "workbench/host/document_files.h"
#include "workbench/host/import_report.h"
#include "workbench/program/open_project.h"

#include <windows.h>

#include <functional>
#include <optional>

namespace talvix::workbench {

/// The documents whose files are not there.
std::vector<host::FileRow> MissingFiles(const std::vector<host::Document>& documents);
/// The documents that stand for the same file, in groups.
std::vector<std::vector<host::FileRow>>
DuplicateFiles(const std::vector<host::Document>& documents);

/// Lists the documents whose files are gone, and lets the user give them other places: one file,
/// one place for another in all rows, or by name below a folder. Every change is shown before it is
/// made and written back once.
void CheckMissingFiles(HWND owner, OpenProject& project, const Culture& culture);

/// Lists the documents that stand for the same file under two spellings.
void ShowDuplicates(HWND owner, const OpenProject& project);

/// Shows what became of the files of a folder that was read in.
void ShowImportReport(HWND owner, const host::ImportReport& report);

/// Every file below a folder, in the order in which the component reads them; folders that cannot
/// be listed are passed over. `goesOn` is asked before each folder; nothing once it says no.
std::optional<std::vector<std::u16string>> FilesBelow(
    std::u16string_view folder, const std::function<bool()>& goesOn = [] { return true; });

} // namespace talvix::workbench
