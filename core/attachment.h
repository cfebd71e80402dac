#pragma once

#include "automation/trace.h"
#include "core/grid.h"
#include "core/presentation_pass.h"
#include "platform/platform.h"

#include <string>

namespace talvix {

class Forms;

/// What one `Main` is attached to, and the little state that its procedures share. The current
/// Outlook item is never kept: Item() reads it afresh.
struct Attachment {
    Platform& platform;
    Trace& trace;
    Forms& forms;

    Late talvixCommon{};
    Late talvixManaging{};
    Late talvixPlanning{};
    Late talvixBudgets{};
    Late talvixControlling{};
    Late talvixExport{};
    Grid dmsGrid{};
    std::shared_ptr<PopupMenu> contextMenu{}; ///< null until the list was presented
    Late sgActions{};                         ///< the host's grid of actions, once it was asked for

    bool silentImport = false;
    bool stopImport = false;
    std::u16string strAddingFile{};
    /// The pass over the rows that is running, null outside one.
    PresentationPass* pass = nullptr;
    /// While the import runs on a list without groups its rows are put in place together.
    bool placesRowsLater = false;

    Late Item() const { return talvixManaging[u"Item"]; }
    /// A global setting's text; Failure where the common library does not give it.
    std::u16string ReadGlobalSetting(std::u16string_view name) const;
    /// The text of one of the item's user properties.
    std::u16string UserProperty(std::u16string_view name) const;
    void SetUserProperty(std::u16string_view name, std::u16string_view text) const;
};

/// Makes a pass the running one for the length of a block; an outer pass goes on afterwards.
class PassScope {
public:
    explicit PassScope(Attachment& attachment)
        : attachment_(attachment),
          pass_(attachment.platform, attachment.trace),
          outer_(attachment.pass) {
        attachment_.pass = &pass_;
    }
    PassScope(const PassScope&) = delete;
    PassScope& operator=(const PassScope&) = delete;
    ~PassScope() { attachment_.pass = outer_; }

private:
    Attachment& attachment_;
    PresentationPass pass_;
    PresentationPass* outer_;
};

} // namespace talvix
