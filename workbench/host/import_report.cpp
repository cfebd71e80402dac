#include "workbench/host/import_report.h"

#include "automation/text.h"
#include "common/general.h"
#include "folder/project_copy.h"

#include <algorithm>

namespace talvix::host {

std::unordered_set<std::u16string> PlacesOf(const std::vector<Document>& documents,
                                            const Culture& culture) {
    std::unordered_set<std::u16string> places;
    for (const Document& document : documents) {
        const auto found = document.find(u"PhysicalStore1");
        const auto* text = found == document.end() ? nullptr : found->second.If<std::u16string>();
        if (text != nullptr) {
            places.insert(culture.UpperCase(*text));
        }
    }
    return places;
}

ImportReport ReportImport(const std::unordered_set<std::u16string>& placesBefore,
                          const std::vector<Document>& after,
                          const std::vector<std::u16string>& found,
                          const std::vector<std::u16string>& notes, const Culture& culture) {
    const auto placesAfter = PlacesOf(after, culture);
    ImportReport report;
    for (const std::u16string& path : found) {
        const std::u16string key = culture.UpperCase(path);
        if (placesBefore.contains(key)) {
            ++report.listed;
            report.lines.push_back({ImportOutcome::Listed, path, u""});
        } else if (placesAfter.contains(key)) {
            ++report.added;
            report.lines.push_back({ImportOutcome::Added, path, u""});
        } else {
            ++report.notAdded;
            report.lines.push_back({ImportOutcome::NotAdded, path,
                                    IsUnfinishedCopy(GetFileName(path))
                                        ? u"unfertige Kopie"
                                        : u"abgebrochen oder vom Gitter abgelehnt"});
        }
    }
    for (const std::u16string& note : notes) {
        report.lines.push_back({ImportOutcome::Note, u"", note});
    }
    std::stable_sort(report.lines.begin(), report.lines.end(),
                     [&](const ImportLine& left, const ImportLine& right) {
                         return left.outcome < right.outcome;
                     });
    return report;
}

std::u16string ImportSummary(const ImportReport& report) {
    const auto count = [](std::size_t number) {
        return DecimalText(static_cast<long long>(number));
    };
    return count(report.added) + u" aufgenommen, " + count(report.listed) + u" schon in der Liste" +
           (report.notAdded == 0 ? u"" : u", " + count(report.notAdded) + u" nicht aufgenommen");
}

const char16_t* OutcomeText(ImportOutcome outcome) {
    switch (outcome) {
    case ImportOutcome::Added:
        return u"aufgenommen";
    case ImportOutcome::Listed:
        return u"schon in der Liste";
    case ImportOutcome::NotAdded:
        return u"nicht aufgenommen";
    default:
        return u"Hinweis";
    }
}

} // namespace talvix::host
