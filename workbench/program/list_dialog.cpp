#include "workbench/program/list_dialog.h"

#include "platform/win32/device_context.h"
#include "platform/win32/dialog_template.h"
#include "platform/win32/wide.h"

#include <windows.h>
#include <commctrl.h>

namespace talvix::workbench {

namespace {

constexpr WORD kFirstChoice = 100;
constexpr int kList = 99;
constexpr WORD kHint = 98;
constexpr short kWidth = 380;
constexpr short kHeight = 210;
constexpr LONG kMargin = 7; // dialog units, as the following ones
constexpr LONG kHintHeight = 18;
constexpr LONG kButtonHeight = 14;

/// One dialog while it is shown.
class ShownList {
public:
    explicit ShownList(const ListDialog& dialog) : dialog_(dialog) {}
    ListAnswer Show(HWND owner);

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void MakeTable();
    void Layout() const;
    void TellButtons() const;
    void FillCell(LVITEMW& cell) const;
    std::optional<std::size_t> Selected() const;
    RECT Units(LONG left, LONG top, LONG right, LONG bottom) const;

    const ListDialog& dialog_;
    ListAnswer answer_{dialog_.buttons.size() - 1, std::nullopt};
    HWND window_ = nullptr;
    HWND table_ = nullptr;
};

RECT ShownList::Units(LONG left, LONG top, LONG right, LONG bottom) const {
    RECT box{left, top, right, bottom};
    MapDialogRect(window_, &box);
    return box;
}

ListAnswer ShownList::Show(HWND owner) {
    DialogTemplate made(WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | DS_MODALFRAME,
                        {0, 0, kWidth, kHeight}, dialog_.title);
    made.Add(DialogTemplate::kStaticKind, kHint, SS_LEFT | SS_NOPREFIX, {0, 0, 0, 0}, dialog_.hint);
    for (std::size_t at = 0; at < dialog_.buttons.size(); ++at) {
        const bool closes = at + 1 == dialog_.buttons.size();
        made.Add(DialogTemplate::kButtonKind,
                 closes ? WORD{IDCANCEL} : static_cast<WORD>(kFirstChoice + at),
                 (at == 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | WS_TABSTOP, {0, 0, 0, 0},
                 dialog_.buttons[at]);
    }
    DialogBoxIndirectParamW(GetModuleHandleW(nullptr), made.Get(), owner, Procedure,
                            reinterpret_cast<LPARAM>(this));
    return answer_;
}

void ShownList::MakeTable() {
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT |
                             LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SINGLESEL;
    table_ = CreateWindowExW(0, WC_LISTVIEWW, L"", kStyle, 0, 0, 10, 10, window_,
                             reinterpret_cast<HMENU>(static_cast<LONG_PTR>(kList)),
                             GetModuleHandleW(nullptr), nullptr);
    SendMessageW(table_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(window_, WM_GETFONT, 0, 0)),
                 FALSE);
    SendMessageW(table_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT);
    const int dpi = GetDeviceCaps(ScreenDc(window_).Get(), LOGPIXELSX);
    for (std::size_t at = 0; at < dialog_.columns.size(); ++at) {
        std::u16string caption = dialog_.columns[at].caption;
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = WideBuffer(caption);
        column.cx = MulDiv(dialog_.columns[at].width, dpi, 96);
        SendMessageW(table_, LVM_INSERTCOLUMNW, at, reinterpret_cast<LPARAM>(&column));
    }
    SendMessageW(table_, LVM_SETITEMCOUNT, dialog_.rows.size(), 0);
    if (!dialog_.rows.empty()) {
        LVITEMW first{};
        first.state = first.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(table_, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&first));
    }
}

void ShownList::Layout() const {
    RECT client{};
    GetClientRect(window_, &client);
    const RECT edge = Units(kMargin, kMargin, kMargin, kMargin + kHintHeight);
    const RECT button = Units(0, 0, 4, kButtonHeight);
    const int width = static_cast<int>(client.right - 2 * edge.left);
    MoveWindow(GetDlgItem(window_, kHint), edge.left, edge.top, width, edge.bottom - edge.top,
               TRUE);
    const int buttonTop = static_cast<int>(client.bottom - edge.top - button.bottom);
    const int tableTop = static_cast<int>(edge.bottom + edge.top / 2);
    MoveWindow(table_, edge.left, tableTop, width,
               std::max<int>(0, buttonTop - edge.top - tableTop), TRUE);
    int right = static_cast<int>(client.right - edge.left);
    for (std::size_t at = dialog_.buttons.size(); at-- > 0;) {
        const bool closes = at + 1 == dialog_.buttons.size();
        const int id = closes ? IDCANCEL : kFirstChoice + static_cast<int>(at);
        const auto letters = static_cast<LONG>(dialog_.buttons[at].size());
        const int own =
            static_cast<int>(Units(0, 0, std::max<LONG>(50, letters * 4 + 12), 1).right);
        right -= own;
        MoveWindow(GetDlgItem(window_, id), right, buttonTop, own, button.bottom, TRUE);
        right -= static_cast<int>(edge.left / 2);
    }
    InvalidateRect(window_, nullptr, TRUE);
}

std::optional<std::size_t> ShownList::Selected() const {
    const LRESULT row =
        SendMessageW(table_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

void ShownList::TellButtons() const {
    if (dialog_.needsSelection) {
        EnableWindow(GetDlgItem(window_, kFirstChoice), Selected() ? TRUE : FALSE);
    }
}

void ShownList::FillCell(LVITEMW& cell) const {
    const auto row = static_cast<std::size_t>(cell.iItem);
    const auto column = static_cast<std::size_t>(cell.iSubItem);
    if ((cell.mask & LVIF_TEXT) != 0 && row < dialog_.rows.size() && cell.cchTextMax > 0) {
        const std::vector<std::u16string>& cells = dialog_.rows[row];
        const std::u16string text = column < cells.size() ? cells[column] : std::u16string();
        lstrcpynW(cell.pszText, Wide(text), cell.cchTextMax);
    }
}

INT_PTR CALLBACK ShownList::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
        reinterpret_cast<ShownList*>(lParam)->window_ = window;
    }
    auto* own = reinterpret_cast<ShownList*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return own == nullptr ? FALSE : own->Handle(message, wParam, lParam);
}

INT_PTR ShownList::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        MakeTable();
        Layout();
        TellButtons();
        CenterOverOwner(window_);
        SetFocus(table_);
        return FALSE;
    case WM_SIZE:
        Layout();
        return TRUE;
    case WM_NOTIFY: {
        const auto* header = reinterpret_cast<const NMHDR*>(lParam);
        if (header->idFrom == kList && header->code == LVN_GETDISPINFOW) {
            FillCell(reinterpret_cast<NMLVDISPINFOW*>(lParam)->item);
        } else if (header->idFrom == kList && header->code == LVN_ITEMCHANGED) {
            TellButtons();
        }
        return TRUE;
    }
    case WM_COMMAND: {
        const int id = LOWORD(wParam);
        const auto at = static_cast<std::size_t>(id - kFirstChoice);
        if (id != IDCANCEL && (id < kFirstChoice || at + 1 >= dialog_.buttons.size())) {
            return FALSE;
        }
        answer_ = {id == IDCANCEL ? dialog_.buttons.size() - 1 : at, Selected()};
        EndDialog(window_, id);
        return TRUE;
    }
    default:
        return FALSE;
    }
}

} // namespace

ListAnswer ShowListDialog(HWND owner, const ListDialog& dialog) {
    return ShownList(dialog).Show(owner);
}

} // namespace talvix::workbench
