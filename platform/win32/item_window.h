#pragma once

#include "platform/item_window.h"
#include "platform/win32/drop_target.h"
#include "platform/win32/owned.h"

#include <windows.h>

#include <array>
#include <list>
#include <vector>

namespace talvix {

/// The document dialog's window: a fixed modal dialog of standard classes, laid out from twips.
class Win32ItemWindow : public ItemWindow {
public:
    explicit Win32ItemWindow(ItemForm& form) : form_(form) {}
    Win32ItemWindow(const Win32ItemWindow&) = delete;
    Win32ItemWindow& operator=(const Win32ItemWindow&) = delete;

    /// Returns when the window was hidden. Failure when it cannot be shown.
    void ShowModal();

    void Refresh(ItemControl control) override;
    void SetDropWidth(std::int32_t pixels) override;
    std::int32_t AverageCharWidth() override;
    void Hide() override;

    /// The number of a control's window.
    static int IdOf(ItemControl control);

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Handle(UINT message, WPARAM wParam);
    void Initialize();
    void MakeParts();
    void ShowActions();
    ItemContent Content(ItemControl control) const;
    /// Tells the form what controls hold by now that have not reported it. The control that an
    /// event is about reports for itself; nothing for an event about none.
    void TellFound(std::optional<ItemControl> about);
    /// What is chosen in the list of actions.
    std::u16string ChosenAction() const;
    void RegisterDrops();
    void OnCommand(int id, int notification);
    HWND At(ItemControl control) const { return GetDlgItem(dialog_, IdOf(control)); }
    int Pixels(int twips) const;
    void ShowText(HWND window, const std::u16string& text);

    ItemForm& form_;
    std::array<ItemContent, kItemControls> known_; ///< what the form has been told, or has shown
    HWND dialog_ = nullptr;
    int dpi_ = 96;
    OwnedFont font_;
    OwnedFont boldFont_;
    std::vector<OwnedIcon> icons_;
    std::list<DropRegistration> drops_;
    bool isShowing_ = false; ///< what the form says, not what the user does
};

} // namespace talvix
