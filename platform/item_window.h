#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace talvix {

/// The document dialog's controls that hold or order something, in their tab order.
enum class ItemControl {
    optFile,
    optLink,
    TextPhysicalStore1,
    CommandPhysicalStore1,
    chkCopyItem,
    TextStatus,
    TextLongDescription,
    ActionCombo,
    btnOK,
    btnCancel
};
inline constexpr std::size_t kItemControls = 10;

/// What a control shows.
struct ItemControlState {
    std::u16string text;
    std::int32_t value = 0; ///< 1 for a chosen option or a ticked box
    bool isEnabled = true;
    bool isLocked = false; ///< shown, but not to be edited
};

/// What a user, or another program, can change in a control.
struct ItemContent {
    std::u16string text;
    std::int32_t value = 0; ///< 1 for a chosen option or a ticked box

    bool operator==(const ItemContent& other) const = default;
};

/// Data that is dropped; one that a source does not offer is missing.
struct DroppedData {
    std::optional<std::vector<std::u16string>> files;
    std::optional<std::u16string> text;
};

/// The window that shows the dialog while it is open.
class ItemWindow {
public:
    virtual ~ItemWindow() = default;
    /// Shows a control's state anew.
    virtual void Refresh(ItemControl control) = 0;
    /// Width of the drop-down list in pixels; the list is never narrower than its control.
    virtual void SetDropWidth(std::int32_t pixels) = 0;
    /// Average width in pixels of the letters of the system's variable font.
    virtual std::int32_t AverageCharWidth() = 0;
    virtual void Hide() = 0;
};

/// The dialog as its window sees it.
class ItemForm {
public:
    virtual ~ItemForm() = default;
    virtual const std::u16string& Caption() const = 0;
    virtual const ItemControlState& State(ItemControl control) const = 0;
    virtual const std::vector<std::u16string>& Actions() const = 0;

    /// The window is there, but not yet to be seen.
    virtual void Opened(ItemWindow& window) = 0;
    virtual void Closed() = 0;
    /// What a control holds by now, told before any event: other programs set texts, boxes and
    /// lists without an event of their own. What still shows the form's state is not told.
    virtual void Found(ItemControl control, const ItemContent& content) = 0;
    /// A button, box or option was pressed; the close box is btnCancel.
    virtual void Click(ItemControl control) = 0;
    /// The user has changed a control's text.
    virtual void Change(ItemControl control, std::u16string_view text) = 0;
    /// Something was dropped on a text box, or on the dialog's surface for nothing.
    virtual void Drop(std::optional<ItemControl> target, const DroppedData& data) = 0;
};

} // namespace talvix
