#include "tests/fakes/fake_dialogs.h"

#include "automation/failure.h"
#include "automation/late_object.h"
#include "automation/text.h"

namespace talvix {

namespace {

constexpr std::int32_t kAnswerNo = 7;

template <typename Item>
Item TakeNext(std::deque<Item>& items, Item otherwise) {
    if (items.empty()) {
        return otherwise;
    }
    Item item = std::move(items.front());
    items.pop_front();
    return item;
}

} // namespace

std::int32_t FakeMessages::Show(std::u16string_view text, std::int32_t style,
                                std::u16string_view title) {
    journal_.Step(u"message");
    journal_.Write(u"message " + DecimalText(style) + u" [" + std::u16string(title) + u"] " +
                   std::u16string(text));
    return TakeNext(answers, kAnswerNo);
}

void FakeProgressWindow::SetLabel(std::u16string_view text) {
    label = text;
    journal_.Write(u"label " + label);
}

void FakeProgressWindow::EnableTimer(ProgressTimer timer, bool on) {
    if (on) {
        running.insert(timer);
    } else {
        running.erase(timer);
    }
}

void FakeProgressWindow::ShowModal(ProgressEvents& reports) {
    journal_.Step(u"show");
    journal_.Write(u"show " + form.caption);
    visible = true;
    events = &reports;
    Tick(ProgressTimer::LabelTimer);
    constexpr int kMostTicks = 100;
    for (int tick = 0; tick < kMostTicks && visible && running.contains(ProgressTimer::DMSTimer);
         ++tick) {
        Tick(ProgressTimer::DMSTimer);
    }
    journal_.formsWereLeft |= visible; // nobody would ever hide it
    events = nullptr;
}

void FakeProgressWindow::Hide() {
    visible = false;
    journal_.Write(u"hide");
}

void FakeProgressWindow::Tick(ProgressTimer timer) {
    if (events != nullptr && running.contains(timer)) {
        try {
            events->Timer(timer);
        } catch (...) { // a window's procedure lets nothing out
        }
    }
}

std::u16string FakeDialogs::BrowseForFolder(const FolderBrowser& browser) {
    journal_.Step(u"browse");
    journal_.Write(u"browse " + DecimalText(browser.flags) + u" [" + browser.title + u"]");
    return TakeNext(chosenFolders, std::u16string());
}

std::unique_ptr<ProgressWindow> FakeDialogs::MakeProgress(const ProgressForm& form) {
    journal_.Step(u"make form");
    auto made = std::make_unique<FakeProgressWindow>(journal_, form);
    progress = made.get();
    return made;
}

std::optional<std::u16string> FakeDialogs::ChooseFile(const FileChooser& chooser) {
    journal_.Step(u"choose file");
    journal_.Write(u"choose file [" + chooser.title + u"] in " + chooser.folder);
    lastChooser = chooser;
    if (chosenFiles.empty()) {
        return std::nullopt;
    }
    return TakeNext(chosenFiles, std::u16string());
}

void FakeDialogs::ShowItemForm(ItemForm& form) {
    journal_.Step(u"item form");
    journal_.Write(u"item form " + form.Caption());
    itemWindow = FakeItemWindow();
    form.Opened(itemWindow);
    if (onItemForm) {
        onItemForm(form);
    }
    if (!itemWindow.isHidden) {
        form.Click(ItemControl::btnCancel);
    }
    form.Closed();
}

std::optional<std::u16string> FakeNetwork::RemoteName(std::u16string_view drive) {
    journal_.Step(u"remote name");
    const auto found = drives.find(std::u16string(drive));
    return found == drives.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::u16string> FakeNetwork::ComputerName() {
    journal_.Step(u"computer name");
    return computer;
}

ShareTable FakeNetwork::Shares() {
    journal_.Step(u"shares");
    return shares;
}

void FakeNetwork::AddShare(std::u16string name, std::u16string_view data) {
    auto table = std::make_shared<std::vector<Share>>(*shares);
    table->push_back({std::move(name), std::u16string(data)});
    shares = std::move(table);
}

Object FakeObjects::Create(std::u16string_view programId) {
    journal_.Step(u"create");
    journal_.Write(u"create " + std::u16string(programId));
    const auto found = classes.find(std::u16string(programId));
    if (found == classes.end()) {
        throw Failure(failure_number::kUnexpected, u"There is no such class");
    }
    return found->second();
}

void FakePopupMenu::AddEntry(std::int32_t command, std::u16string_view text, bool enabled) {
    journal_.Step(u"menu entry");
    Top().entries.push_back(
        {command, std::u16string(text), enabled, false, false, above_ == nullptr ? 0 : 1});
}

void FakePopupMenu::AddSeparator(std::int32_t command) {
    AddEntry(command, u"-", true);
}

PopupMenu& FakePopupMenu::AddSubMenu(std::int32_t command, std::u16string_view text) {
    AddEntry(command, text, true);
    subMenus_.push_back(std::unique_ptr<FakePopupMenu>(new FakePopupMenu(journal_, &Top())));
    return *subMenus_.back();
}

FakeMenuEntry* FakePopupMenu::Find(std::int32_t command) {
    for (FakeMenuEntry& entry : Top().entries) {
        if (entry.command == command) {
            return &entry;
        }
    }
    return nullptr;
}

void FakePopupMenu::SetChecked(std::int32_t command, bool checked) {
    journal_.Step(u"menu check");
    if (FakeMenuEntry* entry = Find(command)) {
        entry->checked = checked;
    }
}

void FakePopupMenu::SetEnabled(std::int32_t command, bool enabled) {
    journal_.Step(u"menu enable");
    if (FakeMenuEntry* entry = Find(command)) {
        entry->enabled = enabled;
    }
}

void FakePopupMenu::SetDefault(std::int32_t command) {
    if (FakeMenuEntry* entry = Find(command)) {
        entry->isDefault = true;
    }
}

std::u16string FakePopupMenu::Text(std::int32_t command) {
    journal_.Step(u"menu text");
    const FakeMenuEntry* entry = Find(command);
    return entry == nullptr ? std::u16string() : entry->text;
}

std::int32_t FakePopupMenu::Show(std::int64_t, std::uint32_t flags, std::int32_t x,
                                 std::int32_t y) {
    journal_.Step(u"menu");
    journal_.Write(u"menu " + DecimalText(flags) + u" at " + DecimalText(x) + u" " +
                   DecimalText(y));
    return choice;
}

std::unique_ptr<PopupMenu> FakeMenus::MakePopup() {
    journal_.Step(u"make menu");
    auto made = std::make_unique<FakePopupMenu>(journal_);
    last = made.get();
    return made;
}

} // namespace talvix
