#include "platform/win32/item_window.h"

#include "automation/failure.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/com/module.h"
#include "platform/win32/device_context.h"
#include "platform/win32/dialog_template.h"
#include "platform/win32/item_layout.h"
#include "platform/win32/ole_scope.h"
#include "platform/win32/thread_windows.h"
#include "platform/win32/visual_styles.h"
#include "platform/win32/wide.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace talvix {

namespace {

constexpr int kFirstId = 100;
constexpr int kTwipsPerInch = 1440;
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr ItemControl kDropTargets[] = {ItemControl::TextPhysicalStore1, ItemControl::TextStatus,
                                        ItemControl::TextLongDescription};

std::u16string TextOfWindow(HWND window) {
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, WideBuffer(text), static_cast<int>(text.size()))));
    return text;
}

HFONT FontOf(int dpi, LONG weight) {
    LOGFONTW font{};
    font.lfHeight = -MulDiv(825, dpi, 7200); // 8.25 points
    font.lfWeight = weight;
    font.lfCharSet = DEFAULT_CHARSET;
    std::copy_n(L"MS Shell Dlg", 13, font.lfFaceName);
    return CreateFontIndirectW(&font);
}

} // namespace

int Win32ItemWindow::IdOf(ItemControl control) {
    switch (control) {
    case ItemControl::btnOK:
        return IDOK;
    case ItemControl::btnCancel:
        return IDCANCEL;
    default:
        return kFirstId + static_cast<int>(control);
    }
}

int Win32ItemWindow::Pixels(int twips) const {
    return MulDiv(twips, dpi_, kTwipsPerInch);
}

void Win32ItemWindow::ShowModal() {
    const OleScope ole;
    const VisualStyles styles;
    const HWND owner = OwnerForModal();
    const ThreadWindowsDisabled others(owner);
    const DialogTemplate description(kStyle, {0, 0, 10, 10}, form_.Caption());
    const INT_PTR result = DialogBoxIndirectParamW(ModuleHandle(), description.Get(), owner,
                                                   Procedure, reinterpret_cast<LPARAM>(this));
    if (result <= 0) {
        throw Failure(failure_number::kUnexpected, u"The dialog cannot be shown");
    }
}

void Win32ItemWindow::Hide() {
    EndDialog(dialog_, 1);
}

void Win32ItemWindow::Initialize() {
    const ScreenDc screen;
    dpi_ = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    RECT frame{0, 0, Pixels(kItemWidth), Pixels(kItemHeight)};
    AdjustWindowRectEx(&frame, kStyle, FALSE, WS_EX_DLGMODALFRAME);
    SetWindowPos(dialog_, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    CenterOverOwner(dialog_);
    font_.Reset(FontOf(dpi_, FW_NORMAL));
    boldFont_.Reset(FontOf(dpi_, FW_BOLD));
    MakeParts();
    RefreshActions();
    form_.Opened(*this);
    for (std::size_t control = 0; control < kItemControls; ++control) {
        Refresh(static_cast<ItemControl>(control));
    }
    RegisterDrops();
}

void Win32ItemWindow::MakeParts() {
    for (const ItemPart& part : ItemParts()) {
        const bool isEntry = part.control && (std::wstring_view(part.kind) == L"EDIT");
        const int id = part.control ? IdOf(*part.control) : -1;
        HWND window = CreateWindowExW(
            isEntry ? WS_EX_CLIENTEDGE : 0, part.kind, part.caption,
            part.style | WS_CHILD | WS_VISIBLE, Pixels(part.place.left), Pixels(part.place.top),
            Pixels(part.place.width), std::max(Pixels(part.place.height), 2), dialog_,
            reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)), ModuleHandle(), nullptr);
        SendMessageW(window, WM_SETFONT,
                     reinterpret_cast<WPARAM>(part.isBold ? boldFont_.Get() : font_.Get()), FALSE);
        if (part.picture != 0) {
            const int size = Pixels(part.place.width);
            icons_.emplace_back(
                static_cast<HICON>(LoadImageW(ModuleHandle(), MAKEINTRESOURCEW(part.picture),
                                              IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
            SendMessageW(window, STM_SETICON, reinterpret_cast<WPARAM>(icons_.back().Get()), 0);
        }
    }
    SendMessageW(At(ItemControl::TextLongDescription), EM_SETLIMITTEXT, 0, 0);
    SendMessageW(At(ItemControl::TextPhysicalStore1), EM_SETLIMITTEXT, 0, 0);
}

void Win32ItemWindow::RefreshActions() {
    HWND combo = At(ItemControl::ActionCombo);
    SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    const std::vector<std::u16string>& actions = form_.Actions();
    SendMessageW(combo, WM_SETREDRAW, FALSE, 0);
    SendMessageW(combo, CB_INITSTORAGE, actions.size(), static_cast<LPARAM>(actions.size()) * 100);
    for (const std::u16string& action : actions) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(action)));
    }
    SendMessageW(combo, WM_SETREDRAW, TRUE, 0);
}

void Win32ItemWindow::RegisterDrops() {
    drops_.emplace_back(dialog_,
                        [this](const DroppedData& data) { form_.Drop(std::nullopt, data); });
    for (const ItemControl control : kDropTargets) {
        drops_.emplace_back(
            At(control), [this, control](const DroppedData& data) { form_.Drop(control, data); });
    }
}

void Win32ItemWindow::ShowText(HWND window, const std::u16string& text) {
    if (TextOfWindow(window) != text) {
        SetWindowTextW(window, Wide(text));
    }
}

void Win32ItemWindow::Refresh(ItemControl control) {
    HWND window = At(control);
    const ItemControlState& state = form_.State(control);
    const bool before = std::exchange(isShowing_, true);
    EnableWindow(window, state.isEnabled ? TRUE : FALSE);
    switch (control) {
    case ItemControl::optFile:
    case ItemControl::optLink:
    case ItemControl::chkCopyItem:
        SendMessageW(window, BM_SETCHECK, state.value != 0 ? BST_CHECKED : BST_UNCHECKED, 0);
        break;
    case ItemControl::TextPhysicalStore1:
    case ItemControl::TextStatus:
    case ItemControl::TextLongDescription:
        SendMessageW(window, EM_SETREADONLY, state.isLocked ? TRUE : FALSE, 0);
        ShowText(window, state.text);
        break;
    case ItemControl::ActionCombo: {
        const std::vector<std::u16string>& actions = form_.Actions();
        const auto chosen = std::find(actions.begin(), actions.end(), state.text);
        const bool isThere = chosen != actions.end();
        SendMessageW(
            window, CB_SETCURSEL,
            isThere ? static_cast<WPARAM>(chosen - actions.begin()) : static_cast<WPARAM>(-1), 0);
        break;
    }
    default:
        break;
    }
    isShowing_ = before;
}

std::u16string Win32ItemWindow::ChosenAction() const {
    HWND combo = At(ItemControl::ActionCombo);
    const LRESULT chosen = SendMessageW(combo, CB_GETCURSEL, 0, 0);
    const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(chosen), 0);
    if (chosen < 0 || length <= 0) {
        return {};
    }
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(chosen),
                 reinterpret_cast<LPARAM>(WideBuffer(text)));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void Win32ItemWindow::SetDropWidth(std::int32_t pixels) {
    SendMessageW(At(ItemControl::ActionCombo), CB_SETDROPPEDWIDTH,
                 static_cast<WPARAM>(std::max(pixels, 0)), 0);
}

std::int32_t Win32ItemWindow::AverageCharWidth() {
    constexpr std::wstring_view kLetters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const ScreenDc dc(dialog_);
    const Chosen font(dc.Get(), GetStockObject(ANSI_VAR_FONT));
    SIZE size{};
    GetTextExtentPoint32W(dc.Get(), kLetters.data(), static_cast<int>(kLetters.size()), &size);
    return static_cast<std::int32_t>(size.cx) / static_cast<std::int32_t>(kLetters.size());
}

void Win32ItemWindow::OnCommand(int id, int notification) {
    for (std::size_t at = 0; at < kItemControls; ++at) {
        const auto control = static_cast<ItemControl>(at);
        if (IdOf(control) != id || isShowing_) {
            continue;
        }
        const bool isEntry = control == ItemControl::TextPhysicalStore1 ||
                             control == ItemControl::TextStatus ||
                             control == ItemControl::TextLongDescription;
        if (isEntry && notification == EN_CHANGE) {
            form_.Change(control, TextOfWindow(At(control)));
        } else if (control == ItemControl::ActionCombo && notification == CBN_SELCHANGE) {
            form_.Change(control, ChosenAction());
        } else if (!isEntry && control != ItemControl::ActionCombo && notification == BN_CLICKED) {
            form_.Click(control);
        }
    }
}

INT_PTR CALLBACK Win32ItemWindow::Procedure(HWND dialog, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        reinterpret_cast<Win32ItemWindow*>(lParam)->dialog_ = dialog;
    }
    auto* own = reinterpret_cast<Win32ItemWindow*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    INT_PTR handled = FALSE;
    if (own != nullptr) {
        const HRESULT result = Guarded([&] {
            handled = own->Handle(message, wParam);
            return S_OK;
        });
        if (FAILED(result) && message == WM_INITDIALOG) {
            EndDialog(dialog, 0);
        }
    }
    return handled;
}

INT_PTR Win32ItemWindow::Handle(UINT message, WPARAM wParam) {
    switch (message) {
    case WM_INITDIALOG:
        Initialize();
        return TRUE;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_DESTROY:
        drops_.clear();
        form_.Closed();
        return FALSE;
    default:
        return FALSE;
    }
}

} // namespace talvix
