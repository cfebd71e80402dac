#pragma once

#include "platform/menus.h"

#include <windows.h>

#include <vector>

namespace talvix {

/// A popup menu of the system. A sub-menu ends with the menu that it belongs to.
class CPopupMenu : public PopupMenu {
public:
    CPopupMenu();
    CPopupMenu(const CPopupMenu&) = delete;
    CPopupMenu& operator=(const CPopupMenu&) = delete;
    ~CPopupMenu() override;

    void AddEntry(std::int32_t command, std::u16string_view text, bool enabled) override;
    void AddSeparator(std::int32_t command) override;
    PopupMenu& AddSubMenu(std::int32_t command, std::u16string_view text) override;
    void SetChecked(std::int32_t command, bool checked) override;
    void SetEnabled(std::int32_t command, bool enabled) override;
    void SetDefault(std::int32_t command) override;
    std::u16string Text(std::int32_t command) override;
    std::int32_t Show(std::int64_t owner, std::uint32_t flags, std::int32_t x,
                      std::int32_t y) override;

private:
    void Insert(MENUITEMINFOW& item);
    /// Sets or clears one bit of an entry's state.
    void SetState(std::int32_t command, UINT bit, bool on);

    HMENU menu_;
    bool isOwned_ = true; ///< by this object, not by a menu above
    std::vector<std::unique_ptr<CPopupMenu>> subMenus_;
};

class Win32Menus : public Menus {
public:
    std::unique_ptr<PopupMenu> MakePopup() override { return std::make_unique<CPopupMenu>(); }
};

} // namespace talvix
