#include "operations/action_combo.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "core/forms.h"

#include <optional>
#include <utility>

namespace talvix {

namespace {

constexpr std::u16string_view kNone = u"Keiner";
constexpr std::u16string_view kNoAction = u"-1";
constexpr std::size_t kNumberStart = 5; // behind "Nr. "

/// An action as the list shows it.
struct Action {
    std::u16string number;
    std::u16string entry;
};

/// The host's grid of actions and where its three columns stand. What fails there leaves its text
/// empty.
class ActionsGrid {
public:
    ActionsGrid(Attachment& attachment, Late grid)
        : culture_(attachment.platform.locale),
          next_(attachment.trace, u"FillActionCombo"),
          grid_(std::move(grid)) {
        for (const auto& column : {std::pair(u"id", &id_), std::pair(u"startdate", &start_),
                                   std::pair(u"description", &description_)}) {
            next_([&] { *column.second = grid_(u"Columns", column.first).Call(u"Position"); });
        }
    }

    std::int32_t RowCount() const { return ToLong(grid_[u"rows"].Call(u"Count"), culture_); }
    Late Row(std::int32_t number) const { return grid_(u"rows", number); }
    /// A row that does not tell is no heading.
    bool IsHeading(const Late& row) {
        return next_.If([&] { return ToBoolean(row.Call(u"IsGroup"), culture_); });
    }
    Action Read(const Late& row) {
        std::u16string number = Cell(row, id_);
        const std::u16string start = Cell(row, start_);
        const std::u16string description = Cell(row, description_);
        std::u16string entry = u"Nr. " + number + u" (" + start + u"): " + description;
        return {std::move(number), std::move(entry)};
    }

private:
    std::u16string Cell(const Late& row, const std::optional<Value>& position) {
        std::u16string text;
        if (position) {
            next_([&] { text = ToText(row.Call(u"Value", *position), culture_); });
        }
        return text;
    }

    const Culture& culture_;
    ResumeNext next_;
    Late grid_;
    std::optional<Value> id_;
    std::optional<Value> start_;
    std::optional<Value> description_;
};

void AddActions(Attachment& attachment, ItemDialog& dialog, std::u16string_view selectedId) {
    ResumeNext next{attachment.trace, u"FillActionCombo"};
    std::optional<ActionsGrid> actions;
    next([&] {
        attachment.sgActions = attachment.Item()[u"GetInspector"](
            u"ModifiedFormPages", u"Betreuung")(u"Controls", u"sgActions");
        actions.emplace(attachment, attachment.sgActions);
    });
    std::int32_t count = 0;
    next([&] { count = actions ? actions->RowCount() : 0; });
    for (std::int32_t number = 1; number <= count; ++number) {
        next([&] {
            const Late row = actions->Row(number);
            if (actions->IsHeading(row)) {
                return;
            }
            const Action action = actions->Read(row);
            dialog.AddAction(action.entry);
            if (action.number == selectedId) {
                dialog.SetText(ItemControl::ActionCombo, action.entry);
            }
        });
    }
}

} // namespace

void FillActionCombo(Attachment& attachment, std::u16string_view selectedId) {
    const TakenDialog dialog(attachment.forms);
    if (dialog) {
        FillActions(attachment, *dialog, selectedId);
    }
}

void FillActions(Attachment& attachment, ItemDialog& dialog, std::u16string_view selectedId) {
    dialog.ClearActions();
    dialog.AddAction(std::u16string(kNone));
    AddActions(attachment, dialog, selectedId);
    if (selectedId.empty() || selectedId == kNoAction) {
        dialog.SetText(ItemControl::ActionCombo, kNone);
    }
}

std::u16string ActionNumberIn(std::u16string_view entry) {
    const std::size_t end = entry.find(u" (");
    if (entry == kNone || end == std::u16string_view::npos || end + 1 < kNumberStart) {
        return std::u16string(kNoAction);
    }
    return std::u16string(Mid(Left(entry, end), kNumberStart));
}

std::u16string SelectedActionNumber(Attachment& attachment) {
    return ActionNumberIn(attachment.forms.Dialog().Text(ItemControl::ActionCombo));
}

} // namespace talvix
