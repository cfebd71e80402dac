#pragma once

#include "platform/dialogs.h"
#include "platform/menus.h"
#include "platform/messages.h"
#include "platform/network.h"
#include "platform/objects.h"
#include "tests/fakes/journal.h"

#include <deque>
#include <functional>
#include <map>
#include <set>

namespace talvix {

/// Answers with what a test has laid ready, "No" or "" when there is nothing left.
class FakeMessages : public Messages {
public:
    explicit FakeMessages(Journal& journal) : journal_(journal) {}
    std::int32_t Show(std::u16string_view text, std::int32_t style,
                      std::u16string_view title) override;
    std::deque<std::int32_t> answers;

private:
    Journal& journal_;
};

/// A progress window whose timers tick when a test, or the modal loop, lets them.
class FakeProgressWindow : public ProgressWindow {
public:
    FakeProgressWindow(Journal& journal, ProgressForm progressForm)
        : journal_(journal), form(std::move(progressForm)), label(form.label) {}
    FakeProgressWindow(const FakeProgressWindow&) = delete;
    FakeProgressWindow& operator=(const FakeProgressWindow&) = delete;
    /// Tells of timers that still run.
    ~FakeProgressWindow() override { journal_.timersWereLeft |= !running.empty(); }
    void SetLabel(std::u16string_view text) override;
    void EnableTimer(ProgressTimer timer, bool on) override;
    void EnableCancel(bool on) override { cancelEnabled = on; }
    bool IsVisible() const override { return visible; }
    void ShowModal(ProgressEvents& reports) override;
    void Hide() override;
    void Tick(ProgressTimer timer);

private:
    Journal& journal_;

public:
    const ProgressForm form;
    std::u16string label;
    std::set<ProgressTimer> running;
    bool cancelEnabled = true;
    bool visible = false;
    ProgressEvents* events = nullptr;
};

/// Remembers what a window would show.
class FakeItemWindow : public ItemWindow {
public:
    void Refresh(ItemControl) override { ++refreshes; }
    void SetDropWidth(std::int32_t pixels) override { dropWidth = pixels; }
    std::int32_t AverageCharWidth() override { return 6; }
    void Hide() override { isHidden = true; }
    int refreshes = 0;
    std::optional<std::int32_t> dropWidth;
    bool isHidden = false;
};

class FakeDialogs : public Dialogs {
public:
    explicit FakeDialogs(Journal& journal) : journal_(journal) {}
    std::u16string BrowseForFolder(const FolderBrowser& browser) override;
    std::unique_ptr<ProgressWindow> MakeProgress(const ProgressForm& form) override;
    std::optional<std::u16string> ChooseFile(const FileChooser& chooser) override;
    void ShowItemForm(ItemForm& form) override;
    std::deque<std::u16string> chosenFolders;
    std::deque<std::u16string> chosenFiles; ///< answers of the file dialog
    std::optional<FileChooser> lastChooser;
    /// What the user does in the document dialog; it is cancelled without.
    std::function<void(ItemForm&)> onItemForm;
    FakeItemWindow itemWindow;
    FakeProgressWindow* progress = nullptr; ///< the one made last, while it lives

private:
    Journal& journal_;
};

class FakeNetwork : public Network {
public:
    explicit FakeNetwork(Journal& journal) : journal_(journal) {}
    std::optional<std::u16string> RemoteName(std::u16string_view drive) override;
    std::optional<std::u16string> ComputerName() override;
    ShareTable Shares() override;
    void AddShare(std::u16string name, std::u16string_view data);
    std::map<std::u16string, std::u16string> drives; ///< by "X:"
    std::optional<std::u16string> computer = u"PC1";
    ShareTable shares = std::make_shared<std::vector<Share>>();

private:
    Journal& journal_;
};

struct FakeMenuEntry {
    std::int32_t command = 0;
    std::u16string text; ///< "-" for a line
    bool enabled = true;
    bool checked = false;
    bool isDefault = false;
    int depth = 0; ///< 1 in a sub-menu
};

/// A menu as a list of entries, those of its sub-menus behind their entry.
class FakePopupMenu : public PopupMenu {
public:
    explicit FakePopupMenu(Journal& journal) : FakePopupMenu(journal, nullptr) {}
    void AddEntry(std::int32_t command, std::u16string_view text, bool enabled) override;
    void AddSeparator(std::int32_t command) override;
    PopupMenu& AddSubMenu(std::int32_t command, std::u16string_view text) override;
    void SetChecked(std::int32_t command, bool checked) override;
    void SetEnabled(std::int32_t command, bool enabled) override;
    void SetDefault(std::int32_t command) override;
    std::u16string Text(std::int32_t command) override;
    std::int32_t Show(std::int64_t owner, std::uint32_t flags, std::int32_t x,
                      std::int32_t y) override;
    FakeMenuEntry* Find(std::int32_t command);
    std::vector<FakeMenuEntry> entries; ///< of the outermost menu
    std::int32_t choice = 0;            ///< what the user chooses

private:
    FakePopupMenu(Journal& journal, FakePopupMenu* above) : journal_(journal), above_(above) {}
    FakePopupMenu& Top() { return above_ == nullptr ? *this : *above_; }
    Journal& journal_;
    FakePopupMenu* above_;
    std::vector<std::unique_ptr<FakePopupMenu>> subMenus_;
};

class FakeMenus : public Menus {
public:
    explicit FakeMenus(Journal& journal) : journal_(journal) {}
    std::unique_ptr<PopupMenu> MakePopup() override;
    FakePopupMenu* last = nullptr; ///< the one made last

private:
    Journal& journal_;
};

class FakeObjects : public Objects {
public:
    explicit FakeObjects(Journal& journal) : journal_(journal) {}
    Object Create(std::u16string_view programId) override;
    std::map<std::u16string, std::function<Object()>> classes;

private:
    Journal& journal_;
};

} // namespace talvix
