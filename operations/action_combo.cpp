#include "operations/action_combo.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "core/forms.h"

namespace talvix {

namespace {

constexpr std::u16string_view kNone = u"Keiner";
constexpr std::u16string_view kNoAction = u"-1";
constexpr std::size_t kNumberStart = 5; // behind "Nr. "

/// The host's grid of actions and where its three columns stand.
class ActionsGrid {
public:
    ActionsGrid(Late grid, const Culture& culture) : grid_(std::move(grid)), culture_(culture) {
        for (const auto& [key, position] :
             {std::pair(u"id", &id_), std::pair(u"startdate", &start_),
              std::pair(u"description", &description_)}) {
            *position = grid_(u"Columns", key).Call(u"Position");
        }
    }

    std::int32_t RowCount() const { return ToLong(grid_[u"rows"].Call(u"Count"), culture_); }
    Late Row(std::int32_t number) const { return grid_(u"rows", number); }
    std::u16string Number(const Late& row) const { return Cell(row, id_); }
    std::u16string Entry(const Late& row) const {
        return u"Nr. " + Number(row) + u" (" + Cell(row, start_) + u"): " + Cell(row, description_);
    }

private:
    std::u16string Cell(const Late& row, const Value& position) const {
        return ToText(row.Call(u"Value", position), culture_);
    }

    Late grid_;
    const Culture& culture_;
    Value id_;
    Value start_;
    Value description_;
};

void AddActions(Attachment& attachment, ItemDialog& dialog, std::u16string_view selectedId) {
    ResumeNext next{attachment.trace, u"FillActionCombo"};
    const Culture& locale = attachment.platform.locale;
    std::optional<ActionsGrid> actions;
    next([&] {
        attachment.sgActions = attachment.Item()[u"GetInspector"](
            u"ModifiedFormPages", u"Betreuung")(u"Controls", u"sgActions");
        actions.emplace(attachment.sgActions, locale);
    });
    std::int32_t count = 0;
    next([&] { count = actions ? actions->RowCount() : 0; });
    for (std::int32_t number = 1; number <= count; ++number) {
        next([&] {
            const Late row = actions->Row(number);
            if (ToBoolean(row.Call(u"IsGroup"), locale)) {
                return;
            }
            const std::u16string entry = actions->Entry(row);
            dialog.AddAction(entry);
            if (actions->Number(row) == selectedId) {
                dialog.SetText(ItemControl::ActionCombo, entry);
            }
        });
    }
}

} // namespace

void FillActionCombo(Attachment& attachment, std::u16string_view selectedId) {
    ItemDialog& dialog = attachment.forms.Dialog();
    dialog.ClearActions();
    dialog.AddAction(std::u16string(kNone));
    AddActions(attachment, dialog, selectedId);
    if (selectedId.empty() || selectedId == kNoAction) {
        dialog.SetText(ItemControl::ActionCombo, kNone);
    }
    dialog.ShowActions();
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
