#pragma once

#include "automation/value.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace talvix::host {

/// The fields of a document by column key; a key that is missing is an empty field.
using Document = std::map<std::u16string, Value>;

struct Action {
    std::int32_t id = 0;
    Date startDate;
    std::u16string description;
};

/// What one project item holds.
struct Project {
    std::u16string number;
    std::u16string name;
    std::u16string company;
    std::u16string folder;                             ///< "Speicherort Dokumente"
    std::int32_t nextId = 1;                           ///< next free number of the list "DMS"
    std::map<std::u16string, std::u16string> settings; ///< global settings by path
    std::vector<Document> documents;                   ///< the item's body
    std::vector<Action> actions;
    bool isChanged = false; ///< since it was read or saved
};

} // namespace talvix::host
