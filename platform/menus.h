#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace talvix {

inline constexpr std::uint32_t kReturnCommand = 0x100; // TPM_RETURNCMD
inline constexpr std::int32_t kAtMouse = -1;

/// A popup menu whose entries are addressed by their command numbers, sub-menus included. An entry
/// that is not there is passed over.
class PopupMenu {
public:
    virtual ~PopupMenu() = default;
    virtual void AddEntry(std::int32_t command, std::u16string_view text, bool enabled) = 0;
    virtual void AddSeparator(std::int32_t command) = 0;
    /// The new menu belongs to this one.
    virtual PopupMenu& AddSubMenu(std::int32_t command, std::u16string_view text) = 0;
    virtual void SetChecked(std::int32_t command, bool checked) = 0;
    virtual void SetEnabled(std::int32_t command, bool enabled) = 0;
    /// Shows the entry in bold.
    virtual void SetDefault(std::int32_t command) = 0;
    /// "" for an entry that is not there.
    virtual std::u16string Text(std::int32_t command) = 0;
    /// Shows the menu at a place of the screen, or at the mouse; the chosen command, 0 for none.
    /// `owner` is a window's handle.
    virtual std::int32_t Show(std::int64_t owner, std::uint32_t flags, std::int32_t x,
                              std::int32_t y) = 0;
};

class Menus {
public:
    virtual ~Menus() = default;
    virtual std::unique_ptr<PopupMenu> MakePopup() = 0;
};

} // namespace talvix
