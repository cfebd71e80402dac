#pragma once

#include "workbench/host/project.h"
#include "workbench/program/page.h"

#include <functional>

namespace talvix::workbench {

/// What a button of the page is for.
enum class PageCommand { Forward, ReadFolder, FileMail };

/// The page "Dokumente": the project folder, the buttons and the grid.
class DocumentsPage : public Page {
public:
    explicit DocumentsPage(const Look& look);

    void Layout(const RECT& place) override;
    /// A new container for a grid; the former one goes.
    HWND RenewGridHost();
    void ShowFolder(std::u16string_view folder);

    /// A button's meaning and, for Forward, the component's member. Null for other controls.
    struct Button {
        const char16_t* caption;
        PageCommand command;
        const char16_t* member;
        int width;
        bool besideFolder; ///< in the folder's line
    };
    static const Button* ButtonOf(int id);
    /// True when the folder's field has been left or Enter was pressed in it.
    static bool IsFolderEntered(int id, int notification);
    std::u16string Folder() const { return TextOfControl(folder_); }

    /// Opens the line with the quick filter and puts the keyboard into it.
    void OpenFilter();
    /// Empties and closes it; false when it was closed already.
    bool CloseFilter();
    bool IsFilterOpen() const { return filterIsOpen_; }
    static bool IsFilterChanged(int id, int notification);
    std::u16string FilterText() const { return TextOfControl(filter_); }

    void Show(bool visible) override;

private:
    void ShowFilter();
    /// Places the buttons of one line, or of all lines that they take; the new top.
    int PlaceButtons(bool besideFolder, const RECT& place, int top);

    HWND folderLabel_ = nullptr;
    HWND folder_ = nullptr;
    HWND gridHost_ = nullptr;
    HWND filterLabel_ = nullptr;
    HWND filter_ = nullptr;
    bool filterIsOpen_ = false;
    std::vector<HWND> buttons_;
};

} // namespace talvix::workbench
