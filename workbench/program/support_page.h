#pragma once

#include "workbench/host/project.h"
#include "workbench/program/page.h"

#include <optional>

namespace talvix::workbench {

enum class ActionCommand { Add, Change, Remove };

/// The page "Betreuung": the project's actions, with fields and buttons to add, change and remove
/// one.
class SupportPage : public Page {
public:
    explicit SupportPage(const Look& look);

    void Layout(const RECT& place) override;
    /// A new container for the grid of actions; the former one goes.
    HWND RenewGridHost();
    /// Shows an action in the fields, or empties them; the buttons follow. What is typed stays as
    /// long as it is the same action.
    void ShowAction(const host::Action* action);
    /// The next action is shown even when it is the same.
    void Forget() { shownId_.reset(); }
    /// What stands in the fields, without a number; nothing while there is no description.
    std::optional<host::Action> TypedAction() const;
    static std::optional<ActionCommand> CommandOf(int id, int notification);

private:
    HWND gridHost_ = nullptr;
    HWND dateLabel_ = nullptr;
    HWND date_ = nullptr;
    HWND textLabel_ = nullptr;
    HWND text_ = nullptr;
    std::vector<HWND> buttons_;
    std::optional<std::int32_t> shownId_; ///< of the action in the fields, 0 for none
};

} // namespace talvix::workbench
