#pragma once

#include "automation/trace.h"
#include "platform/platform.h"

#include <array>

namespace talvix {

/// What the user has entered.
struct EnteredDocument {
    bool isFile = false;
    bool isLink = false; ///< an Outlook item is neither
    bool isToBeCopied = false;
    std::u16string path;
    std::u16string status;
    std::u16string longDescription;
    std::u16string action; ///< the entry that is chosen in the list of actions
};

/// The dialog in which a document is entered or changed. It decides and keeps; a window shows it
/// while it is open. Its controls keep what they hold from one showing to the next.
class ItemDialog : public ItemForm {
public:
    ItemDialog(Platform& platform, Trace& trace);

    /// Shows the dialog, empty for a new document or as the caller has filled it, until the user
    /// ends it.
    void ShowDialog(bool isNew);
    bool Cancelled() const { return cancelled_; }
    EnteredDocument Entered() const;

    std::int32_t Option(ItemControl option) const { return State(option).value; }
    const std::u16string& Text(ItemControl control) const { return State(control).text; }
    void SetText(ItemControl control, std::u16string_view text);
    /// Chooses one of the two options; the other one is cleared.
    void ChooseOption(ItemControl option);
    /// A document that is neither a file nor a link.
    void ClearOptions();
    void ClearActions();
    void AddAction(std::u16string text) { actions_.push_back(std::move(text)); }

    const std::u16string& Caption() const override { return caption_; }
    const ItemControlState& State(ItemControl control) const override;
    const std::vector<std::u16string>& Actions() const override { return actions_; }
    void Opened(ItemWindow& window) override;
    void Closed() override { window_ = nullptr; }
    void Found(ItemControl control, const ItemContent& content) override;
    void Click(ItemControl control) override;
    void Change(ItemControl control, std::u16string_view text) override;
    void Drop(std::optional<ItemControl> target, const DroppedData& data) override;

private:
    ItemControlState& At(ItemControl control);
    void Set(ItemControl control, const ItemControlState& state);
    void SetEnabled(ItemControl control, bool enabled);
    void PrepareNew();
    void PrepareChange();
    void UpdateControls();
    void SetComboDropWidth();
    bool ValidateInput();
    void Browse();
    void PathChanged();
    void DropText(std::u16string_view text);

    Platform& platform_;
    Trace& trace_;
    std::array<ItemControlState, kItemControls> states_;
    std::vector<std::u16string> actions_;
    std::u16string caption_ = u"Neues Dokument";
    ItemWindow* window_ = nullptr;
    bool cancelled_ = false;
};

} // namespace talvix
