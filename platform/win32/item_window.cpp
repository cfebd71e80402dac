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
#include <iterator>
#include <string_view>
#include <utility>

namespace talvix {

namespace {

constexpr int kFirstId = 100;
constexpr int kTwipsPerInch = 1440;
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr wchar_t kFont[] = L"MS Sans Serif";
constexpr ItemControl kDropTargets[] = {ItemControl::TextPhysicalStore1, ItemControl::TextStatus,
                                        ItemControl::TextLongDescription};

bool IsOption(ItemControl control) {
    return control == ItemControl::optFile || control == ItemControl::optLink;
}

bool IsEntry(ItemControl control) {
    return control == ItemControl::TextPhysicalStore1 || control == ItemControl::TextStatus ||
           control == ItemControl::TextLongDescription;
}

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
    std::copy(std::begin(kFont), std::end(kFont), font.lfFaceName);
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
    const ModalOwner owner;
    const ThreadWindowsDisabled others(owner.Get());
    const DialogTemplate description(kStyle, {0, 0, 10, 10}, form_.Caption(), TextOf(kFont));
    const INT_PTR result = DialogBoxIndirectParamW(ModuleHandle(), description.Get(), owner.Get(),
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
    ShowActions();
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

void Win32ItemWindow::ShowActions() {
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
    const auto accept = [this](HWND window, std::optional<ItemControl> target) {
        drops_.emplace_back(window, [this, target](const DroppedData& data) {
            TellFound(std::nullopt);
            form_.Drop(target, data);
        });
    };
    accept(dialog_, std::nullopt);
    for (const ItemControl control : kDropTargets) {
        accept(At(control), control);
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
    known_[static_cast<std::size_t>(control)] = Content(control);
}

ItemContent Win32ItemWindow::Content(ItemControl control) const {
    if (IsEntry(control)) {
        return {TextOfWindow(At(control)), 0};
    }
    if (control == ItemControl::ActionCombo) {
        return {ChosenAction(), 0};
    }
    const bool isTicked = (IsOption(control) || control == ItemControl::chkCopyItem) &&
                          SendMessageW(At(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
    return {u"", isTicked ? 1 : 0};
}

void Win32ItemWindow::TellFound(std::optional<ItemControl> about) {
    for (std::size_t at = 0; at < kItemControls; ++at) {
        const auto control = static_cast<ItemControl>(at);
        const bool isAbout = control == about || (about && IsOption(*about) && IsOption(control));
        if (isAbout && control != ItemControl::chkCopyItem) {
            continue;
        }
        ItemContent content = Content(control);
        if (isAbout) {
            content.value = 1 - content.value; // the box has turned itself already
        }
        if (content != known_[at]) {
            known_[at] = content;
            form_.Found(control, content);
        }
    }
}

std::u16string Win32ItemWindow::ChosenAction() const {
    const std::vector<std::u16string>& actions = form_.Actions();
    const auto chosen =
        static_cast<std::size_t>(SendMessageW(At(ItemControl::ActionCombo), CB_GETCURSEL, 0, 0));
    return chosen < actions.size() ? actions[chosen] : std::u16string();
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
        const bool isList = control == ItemControl::ActionCombo;
        const int change = isList ? CBN_SELCHANGE : EN_CHANGE;
        if ((isList || IsEntry(control)) && notification == change) {
            TellFound(control);
            const ItemContent content = Content(control);
            known_[at] = content;
            form_.Change(control, content.text);
        } else if (!isList && !IsEntry(control) && notification == BN_CLICKED) {
            TellFound(control);
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
