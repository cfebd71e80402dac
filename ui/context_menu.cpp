#include "ui/context_menu.h"

#include "automation/resume_next.h"
#include "automation/text.h"
#include "core/document_record.h"
#include "operations/enter_document.h"
#include "ui/dms_dispatcher.h"
#include "ui/document_commands.h"

#include <optional>

namespace talvix {

namespace {

constexpr std::u16string_view kIconText = u"Symbol"; // the column has no caption
// The marks of the last three columns are set when the menu is built and when they are toggled.
constexpr std::int32_t kFirstMarked = 4;
constexpr std::int32_t kLastMarked = 16;

/// An entry; without a text it is a line.
struct MenuEntry {
    std::int32_t command;
    const char16_t* text;
};
constexpr MenuEntry kEntries[] = {{menu_command::kOpen, u"Öffnen"},
                                  {menu_command::kChange, u"Bearbeiten"},
                                  {100, nullptr},
                                  {menu_command::kDelete, u"Löschen"},
                                  {101, nullptr},
                                  {menu_command::kReadFolder, u"Ordnerinhalt einlesen"},
                                  {102, nullptr},
                                  {menu_command::kView, u"Ansicht"},
                                  {102, nullptr},
                                  {menu_command::kProperties, u"Eigenschaften"}};

std::u16string EntryText(const GridColumn& column) {
    return SameName(column.Key(), field::kIcon) ? std::u16string(kIconText) : column.Caption();
}

/// Columns that users never see have no entry.
bool HasEntry(std::u16string_view key) {
    return !SameName(key, field::kObjectType) && !SameName(key, field::kPhysicalStore3);
}

void AddColumns(Attachment& attachment, PopupMenu& view) {
    ResumeNext next{attachment.trace, u"BuildContextMenu"};
    std::int32_t count = 0;
    next([&] { count = attachment.dmsGrid.ColumnCount(); });
    std::int32_t command = menu_command::kFirstColumn;
    for (std::int32_t position = 0; position < count; ++position) {
        next([&] {
            const GridColumn column = attachment.dmsGrid.ColumnAt(position);
            if (HasEntry(column.Key())) {
                view.AddEntry(command, EntryText(column), true);
                const std::int32_t own = command++;
                view.SetChecked(own, !column.IsHidden());
            }
        });
    }
}

/// The first column that an entry's text stands for.
std::optional<GridColumn> ColumnOf(Attachment& attachment, std::u16string_view text) {
    ResumeNext next{attachment.trace, u"ContextMenu"};
    std::int32_t count = 0;
    next([&] { count = attachment.dmsGrid.ColumnCount(); });
    std::optional<GridColumn> found;
    for (std::int32_t position = 0; position < count && !found; ++position) {
        next([&] {
            GridColumn column = attachment.dmsGrid.ColumnAt(position);
            if (EntryText(column) == text) {
                found = std::move(column);
            }
        });
    }
    return found;
}

void ToggleColumn(Attachment& attachment, std::int32_t command) {
    ResumeNext next{attachment.trace, u"ContextMenu"};
    const std::shared_ptr<PopupMenu> menu = attachment.contextMenu;
    if (menu == nullptr) {
        return;
    }
    std::u16string text;
    next([&] { text = menu->Text(command); });
    const auto column = text.empty() ? std::nullopt : ColumnOf(attachment, text);
    if (!column) {
        return;
    }
    next([&] {
        const bool wasHidden = column->IsHidden();
        column->SetHidden(!wasHidden);
    });
    next([&] { menu->SetChecked(command, !column->IsHidden()); }); // a grid may refuse
    next([&] { attachment.dmsGrid.RefreshRows(); });
}

} // namespace

void BuildContextMenu(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"BuildContextMenu"};
    attachment.contextMenu.reset();
    std::shared_ptr<PopupMenu> menu; // the grid's answers may come from a host that builds another
    next([&] { menu = attachment.platform.menus.MakePopup(); });
    if (menu == nullptr) {
        return;
    }
    attachment.contextMenu = menu;
    for (const MenuEntry& entry : kEntries) {
        next([&] {
            if (entry.text == nullptr) {
                menu->AddSeparator(entry.command);
            } else if (entry.command == menu_command::kView) {
                AddColumns(attachment, menu->AddSubMenu(entry.command, entry.text));
            } else {
                menu->AddEntry(entry.command, entry.text, true);
            }
        });
    }
    next([&] { menu->SetDefault(menu_command::kOpen); });
}

void UpdateCheckMarks(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"UpdateCheckMarks"};
    const std::shared_ptr<PopupMenu> menu = attachment.contextMenu;
    if (menu == nullptr) {
        return;
    }
    for (std::int32_t command = kFirstMarked; command <= kLastMarked; ++command) {
        std::u16string text;
        next([&] { text = menu->Text(command); });
        const auto column = text.empty() ? std::nullopt : ColumnOf(attachment, text);
        if (column) {
            next([&] { menu->SetChecked(command, !column->IsHidden()); });
        }
    }
}

void DispatchCommand(Attachment& attachment, std::int32_t command) {
    switch (command) {
    case menu_command::kOpen:
        OpenDocument(attachment, kSelectedDocuments);
        break;
    case menu_command::kDelete:
        DeleteDMSItem(attachment);
        break;
    case menu_command::kProperties:
        ShowFileProperties(attachment);
        break;
    case menu_command::kChange:
        btnChangeDocument_Click(attachment);
        break;
    case menu_command::kReadFolder:
        AddFilesFromProjectFolder(attachment, false);
        break;
    default:
        if (command >= menu_command::kFirstColumn && command <= menu_command::kLastColumn) {
            ToggleColumn(attachment, command);
        }
    }
}

} // namespace talvix
