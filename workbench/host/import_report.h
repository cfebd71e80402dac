#pragma once

#include "automation/culture.h"
#include "workbench/host/project.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace talvix::host {

/// In the order in which a report tells them.
enum class ImportOutcome { NotAdded, Note, Added, Listed };

struct ImportLine {
    ImportOutcome outcome = ImportOutcome::Added;
    std::u16string path;   ///< "" for a note
    std::u16string reason; ///< German; "" where none is needed
    bool operator==(const ImportLine&) const = default;
};

/// What became of every file of a folder that was read in.
struct ImportReport {
    std::vector<ImportLine> lines; ///< what was not added first, then notes, added and listed files
    std::size_t added = 0;
    std::size_t listed = 0; ///< in the list before
    std::size_t notAdded = 0;
};

/// The places of the documents, in upper case.
std::unordered_set<std::u16string> PlacesOf(const std::vector<Document>& documents,
                                            const Culture& culture);
/// `found` are the files of the folder, `notes` what the component's trace said meanwhile.
ImportReport ReportImport(const std::unordered_set<std::u16string>& placesBefore,
                          const std::vector<Document>& after,
                          const std::vector<std::u16string>& found,
                          const std::vector<std::u16string>& notes, const Culture& culture);

/// "12 aufgenommen, 3 schon in der Liste" and, where there are any, ", 1 nicht aufgenommen".
std::u16string ImportSummary(const ImportReport& report);
const char16_t* OutcomeText(ImportOutcome outcome);

} // namespace talvix::host
