#include "ui/item_dialog.h"

#include "automation/failure.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "common/mod_registry.h"
#include "common/mod_registry_access.h"
#include "ui/file_dialog.h"

#include <algorithm>

namespace talvix {

namespace {

constexpr const char16_t* kFormSettings = u"Software\\Talvix\\FormSettings";
constexpr const char16_t* kCopyItemSelected = u"Document Copy Item Selected";
constexpr const char16_t* kDmsKey = u"Software\\Talvix\\DMS";
constexpr const char16_t* kDefaultDirectory = u"DMS Default File Directory";
constexpr std::uint32_t kChooserFlags = 6148;
constexpr std::size_t kMostActions = 32768; // the entries are counted in 16 bits
constexpr std::int32_t kOverflow = 6;

using Control = ItemControl;

} // namespace

ItemDialog::ItemDialog(Platform& platform, Trace& trace) : platform_(platform), trace_(trace) {
    At(Control::optFile).value = 1;
}

const ItemControlState& ItemDialog::State(ItemControl control) const {
    return states_[static_cast<std::size_t>(control)];
}

ItemControlState& ItemDialog::At(ItemControl control) {
    return states_[static_cast<std::size_t>(control)];
}

void ItemDialog::Set(ItemControl control, const ItemControlState& state) {
    At(control) = state;
    if (window_ != nullptr) {
        window_->Refresh(control);
    }
}

void ItemDialog::SetText(ItemControl control, std::u16string_view text) {
    ItemControlState state = State(control);
    state.text = text;
    Set(control, state);
}

void ItemDialog::SetEnabled(ItemControl control, bool enabled) {
    ItemControlState state = State(control);
    state.isEnabled = enabled;
    Set(control, state);
}

void ItemDialog::ClearOptions() {
    for (const Control option : {Control::optFile, Control::optLink}) {
        ItemControlState state = State(option);
        state.value = 0;
        Set(option, state);
    }
}

void ItemDialog::ChooseOption(ItemControl option) {
    ClearOptions();
    ItemControlState state = State(option);
    state.value = 1;
    Set(option, state);
    SetText(Control::TextPhysicalStore1, u"");
    UpdateControls();
}

void ItemDialog::ClearActions() {
    actions_.clear();
    SetText(Control::ActionCombo, u"");
}

EnteredDocument ItemDialog::Entered() const {
    return {Option(Control::optFile) != 0,     Option(Control::optLink) != 0,
            Option(Control::chkCopyItem) != 0, Text(Control::TextPhysicalStore1),
            Text(Control::TextStatus),         Text(Control::TextLongDescription),
            Text(Control::ActionCombo)};
}

void ItemDialog::PrepareNew() {
    ResumeNext next{trace_, u"ShowDialog"};
    caption_ = u"Neues Dokument";
    ChooseOption(Control::optFile);
    for (const Control text :
         {Control::TextPhysicalStore1, Control::TextStatus, Control::TextLongDescription}) {
        SetText(text, u"");
    }
    At(Control::chkCopyItem).value = 1;
    for (const Control control : {Control::optFile, Control::optLink,
                                  Control::CommandPhysicalStore1, Control::chkCopyItem}) {
        SetEnabled(control, true);
    }
    At(Control::TextPhysicalStore1).isLocked = false;
    if (next.If([&] {
            return RegValueExists(platform_.registry, kCurrentUser, kFormSettings,
                                  kCopyItemSelected);
        })) {
        next([&] {
            const auto stored =
                RegGetDWord(platform_.registry, kCurrentUser, kFormSettings, kCopyItemSelected);
            At(Control::chkCopyItem).value = stored != 0 ? 1 : 0;
        });
    }
}

void ItemDialog::PrepareChange() {
    for (const Control control :
         {Control::optFile, Control::optLink, Control::CommandPhysicalStore1}) {
        SetEnabled(control, false);
    }
    At(Control::TextPhysicalStore1).isLocked = Option(Control::optLink) == 0;
    At(Control::chkCopyItem).value = 0;
    SetEnabled(Control::chkCopyItem, false);
    caption_ = u"Dokument ändern";
}

void ItemDialog::ShowDialog(bool isNew) {
    ResumeNext next{trace_, u"ShowDialog"};
    cancelled_ = true;
    if (isNew) {
        PrepareNew();
    } else {
        PrepareChange();
    }
    UpdateControls();
    next([&] { platform_.dialogs.ShowItemForm(*this); });
    if (isNew && !cancelled_) {
        next([&] {
            RegSaveDWord(platform_.registry, kCurrentUser, kFormSettings, kCopyItemSelected,
                         State(Control::chkCopyItem).value);
        });
    }
}

void ItemDialog::Opened(ItemWindow& window) {
    ResumeNext next{trace_, u"ShowDialog"};
    window_ = &window;
    next([&] { SetComboDropWidth(); });
}

void ItemDialog::UpdateControls() {
    const bool isFileEnabled = State(Control::optFile).isEnabled;
    SetEnabled(Control::chkCopyItem, Option(Control::optLink) == 0 && isFileEnabled);
    SetEnabled(Control::CommandPhysicalStore1, Option(Control::optFile) != 0 && isFileEnabled);
}

void ItemDialog::SetComboDropWidth() {
    if (actions_.size() > kMostActions) {
        throw Failure(kOverflow, u"There are too many actions");
    }
    std::size_t longest = 0;
    for (const std::u16string& action : actions_) {
        longest = std::max(longest, action.size());
    }
    const std::int64_t width =
        (static_cast<std::int64_t>(longest) - 2) * window_->AverageCharWidth();
    if (width > INT32_MAX) {
        throw Failure(kOverflow, u"The actions are too long");
    }
    window_->SetDropWidth(static_cast<std::int32_t>(width));
}

bool ItemDialog::ValidateInput() {
    if (!Trim(Text(Control::TextPhysicalStore1)).empty()) {
        return true;
    }
    platform_.messages.Show(u"Bitte geben Sie im Feld 'Pfad' einen Dateinamen oder eine "
                            u"Internetverknüpfung an.",
                            kInformation, u"Eingabe erforderlich");
    return false;
}

void ItemDialog::Click(ItemControl control) {
    ResumeNext next{trace_, u"ItemDialog"};
    switch (control) {
    case Control::optFile:
    case Control::optLink:
        if (Option(control) ==
            0) { // a window reports the chosen option again when it gets the focus
            ChooseOption(control);
        }
        break;
    case Control::chkCopyItem:
        At(control).value = State(control).value == 0 ? 1 : 0;
        UpdateControls();
        break;
    case Control::CommandPhysicalStore1:
        next([&] { Browse(); });
        break;
    case Control::btnOK:
        if (next.If([&] { return ValidateInput(); })) {
            cancelled_ = false;
            window_->Hide();
        }
        break;
    case Control::btnCancel:
        cancelled_ = true;
        window_->Hide();
        break;
    default:
        break;
    }
}

void ItemDialog::Found(ItemControl control, const ItemContent& content) {
    At(control).text = content.text;
    At(control).value = content.value;
}

void ItemDialog::Change(ItemControl control, std::u16string_view text) {
    At(control).text = text;
    if (control == Control::TextPhysicalStore1) {
        PathChanged();
    }
}

void ItemDialog::PathChanged() {
    ResumeNext next{trace_, u"TextPhysicalStore1_Change"};
    const std::u16string& path = Text(Control::TextPhysicalStore1);
    if (Option(Control::optFile) != 0 && Trim(Text(Control::TextLongDescription)).empty() &&
        next.If([&] { return FileExistsOnDisk(platform_.files, path); })) {
        next(
            [&] { SetText(Control::TextLongDescription, GetFileTypeName(platform_.shell, path)); });
    }
}

void ItemDialog::Browse() {
    ResumeNext next{trace_, u"CommandPhysicalStore1_Click"};
    std::u16string folder;
    if (next.If([&] {
            return RegValueExists(platform_.registry, kCurrentUser, kDmsKey, kDefaultDirectory);
        })) {
        next([&] {
            const Value stored =
                RegGetString(platform_.registry, kCurrentUser, kDmsKey, kDefaultDirectory);
            const auto* text = stored.If<std::u16string>();
            folder = text == nullptr ? std::u16string() : *text;
        });
    }
    if (Option(Control::optFile) == 0) {
        return;
    }
    FileDialog dialog(platform_);
    dialog.DefaultDir = folder;
    dialog.DialogTitle = u"Wählen Sie ein Dokument aus...";
    dialog.SetFilter(1, u"Alle Dateien", u"*.*");
    dialog.Flags = kChooserFlags;
    next([&] { dialog.ShowOpen(); });
    if (dialog.FileName().empty()) {
        return;
    }
    SetText(Control::TextPhysicalStore1, dialog.FileName());
    PathChanged();
    next([&] {
        RegSaveString(platform_.registry, kCurrentUser, kDmsKey, kDefaultDirectory,
                      GetFolderPath(dialog.FileName()));
    });
}

void ItemDialog::DropText(std::u16string_view text) {
    if (Left(text, 4) == u"http") {
        ChooseOption(Control::optLink);
    }
    SetText(Control::TextPhysicalStore1, text);
    PathChanged();
}

void ItemDialog::Drop(std::optional<ItemControl> target, const DroppedData& data) {
    if (target == Control::TextLongDescription && data.text) {
        SetText(Control::TextLongDescription, *data.text);
        return;
    }
    // The path takes a text before a file list; everything else is a drop on the surface.
    const bool textFirst = target == Control::TextPhysicalStore1 && data.text;
    if (!textFirst && data.files) {
        if (data.files->empty()) {
            return;
        }
        ChooseOption(Control::optFile);
        SetText(Control::TextPhysicalStore1, data.files->front());
        PathChanged();
    } else if (data.text) {
        DropText(*data.text);
    }
}

} // namespace talvix
