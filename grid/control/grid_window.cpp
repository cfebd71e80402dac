#include "grid/control/grid_window.h"

#include "grid/control/client_area.h"
#include "grid/control/grid_drop.h"
#include "grid/control/header_menu.h"
#include "grid/control/row_data.h"
#include "grid/model/rows_as_text.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/com/module.h"
#include "platform/win32/device_context.h"
#include "platform/win32/wide.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace talvix::grid {

namespace {

constexpr const wchar_t* kWindowClass = L"TalvixGridWindow";
constexpr UINT kRefresh = WM_APP + 1;

/// The window class belongs to the module and goes with it.
bool EnsureWindowClass(WNDPROC procedure) {
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    if (GetClassInfoExW(ModuleHandle(), kWindowClass, &known) != FALSE) {
        return true;
    }
    WNDCLASSEXW own{};
    own.cbSize = sizeof own;
    own.style = CS_DBLCLKS | CS_OWNDC; // its own device is at hand at once
    own.lpfnWndProc = procedure;
    own.hInstance = ModuleHandle();
    own.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    own.lpszClassName = kWindowClass;
    return RegisterClassExW(&own) != 0;
}

std::int32_t Signed16(DWORD_PTR word) {
    return static_cast<SHORT>(word & 0xFFFFU);
}

} // namespace

GridWindow::GridWindow(SharedGrid model)
    : model_(std::move(model)), painter_(*model_), input_(*model_) {
    input_.dragRows = [this] {
        ReleaseCapture();
        DragOut(SelectedData(*model_));
    };
    input_.copyRows = [this] { CopyToClipboard(window_, SelectedData(*model_)); };
}

GridWindow::~GridWindow() {
    Destroy();
}

bool GridWindow::Create(HWND parent, const RECT& place, std::function<void()> onFocus) {
    if (!EnsureWindowClass(Procedure)) {
        return false;
    }
    onFocus_ = std::move(onFocus);
    constexpr DWORD kStyle =
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL;
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, kWindowClass, L"", kStyle, place.left, place.top,
                              place.right - place.left, place.bottom - place.top, parent, nullptr,
                              ModuleHandle(), this);
    if (window_ == nullptr) {
        return false;
    }
    painter_.Measure();
    tips_.Create(window_);
    accessible_.SetWindow(window_);
    drop_.emplace(window_, ComPtr<IDropTarget>::Adopt(new GridDrop(model_, window_)).Get());
    model_->view = this;
    UpdateScrollBars();
    return true;
}

void GridWindow::Destroy() {
    if (window_ != nullptr) {
        model_->view = nullptr;
        DestroyWindow(window_);
    }
}

void GridWindow::Move(const RECT& place) {
    if (window_ != nullptr) {
        SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void GridWindow::Focus() {
    if (window_ != nullptr && GetFocus() != window_) {
        SetFocus(window_);
    }
}

HRESULT GridWindow::Get(HWND* window) const {
    if (window == nullptr) {
        return E_POINTER;
    }
    *window = window_;
    return window_ != nullptr ? S_OK : E_FAIL;
}

bool GridWindow::TakesKey(const MSG& message) {
    if (window_ == nullptr || message.hwnd != window_ || message.message != WM_KEYDOWN ||
        !GridInput::IsGridKey(message.wParam)) {
        return false;
    }
    SendMessageW(window_, message.message, message.wParam, message.lParam);
    return true;
}

void GridWindow::DrawTo(HDC dc, const RECT& place) {
    if (window_ == nullptr) {
        painter_.Measure();
    }
    painter_.Draw(dc, place, false);
}

void GridWindow::Refresh() {
    if (window_ != nullptr && !refreshPosted_) {
        refreshPosted_ = PostMessageW(window_, kRefresh, 0, 0) != FALSE;
    }
}

void GridWindow::Paint() {
    if (std::exchange(hasMoved_, false)) {
        InvalidateRect(window_, nullptr, FALSE);
    }
    const PaintDc paint(window_);
    if (model_->Redraw()) {
        const RECT client = ClientOf(window_);
        painter_.DrawBuffered(paint.Get(), {client.right, client.bottom}, paint.Area(), hasFocus_);
    }
}

LRESULT CALLBACK GridWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* own = static_cast<GridWindow*>(creation->lpCreateParams);
        own->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(own));
    }
    auto* own = reinterpret_cast<GridWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (own == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (message == WM_DESTROY) {
        own->drop_.reset();
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        own->window_ = nullptr;
        own->accessible_.SetWindow(nullptr);
        own->told_ = {};
        own->hasFocus_ = false;
        own->model_->view = nullptr;
        own->refreshPosted_ = false;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    const ComPtr<IUnknown> alive(own->owner_);
    LRESULT result = 0;
    Guarded([&] {
        result = own->Handle(message, wParam, lParam);
        return S_OK;
    });
    return result;
}

LRESULT GridWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case kRefresh:
        refreshPosted_ = false;
        UpdateScrollBars();
        accessible_.TellChanges();
        InvalidateRect(window_, nullptr, FALSE);
        return 0;
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SIZE:
        UpdateScrollBars();
        InvalidateRect(window_, nullptr, FALSE);
        return 0;
    case WM_TIMER:
        PaintScrollBars();
        return 0;
    case WM_VSCROLL:
    case WM_HSCROLL:
        OnScroll(message == WM_VSCROLL, wParam);
        return 0;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        painter_.Measure();
        Refresh();
        return 0;
    default:
        return HandleRequest(message, wParam, lParam);
    }
}

/// What the system and other programs ask of the window.
LRESULT GridWindow::HandleRequest(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NOTIFY:
        return tips_.Notify(*reinterpret_cast<const NMHDR*>(lParam)).value_or(0);
    case WM_COPY:
        input_.copyRows();
        return 0;
    case WM_GETOBJECT:
        if (const auto answer = accessible_.GetObject(wParam, lParam)) {
            return *answer;
        }
        return DefWindowProcW(window_, message, wParam, lParam);
    case WM_SETCURSOR:
        if (LOWORD(lParam) == HTCLIENT && input_.SetPointer(window_)) {
            return TRUE;
        }
        return DefWindowProcW(window_, message, wParam, lParam);
    case WM_CONTEXTMENU:
        if (inert_) { // the container's form has its own
            return DefWindowProcW(window_, message, wParam, lParam);
        }
        OpenContextMenu(lParam);
        return 0;
    case WM_ENTERMENULOOP:
        ++menus_;
        return DefWindowProcW(window_, message, wParam, lParam);
    default:
        return HandleKeyboard(message, wParam, lParam);
    }
}

LRESULT GridWindow::HandleKeyboard(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isHands = (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
                         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
    if (inert_ && isHands) {
        return DefWindowProcW(window_, message, wParam, lParam);
    }
    switch (message) {
    case WM_GETDLGCODE:
        // Enter is the grid's: a dialog around it would take it for its default button.
        return DLGC_WANTARROWS | DLGC_WANTCHARS | (wParam == VK_RETURN ? DLGC_WANTMESSAGE : 0);
    case WM_SETFOCUS:
        hasFocus_ = true;
        onFocus_();
        accessible_.TellFocus();
        InvalidateRect(window_, nullptr, FALSE);
        return 0;
    case WM_KILLFOCUS:
        hasFocus_ = false;
        InvalidateRect(window_, nullptr, FALSE);
        return 0;
    case WM_KEYDOWN:
        return input_.KeyDown(static_cast<int>(wParam), PageLines())
                   ? 0
                   : DefWindowProcW(window_, message, wParam, lParam);
    case WM_CHAR:
        input_.Character(static_cast<char16_t>(wParam), GetTickCount());
        return 0;
    default:
        return HandleMouse(message, wParam, lParam);
    }
}

/// A heading has a menu of its own, unless the host has answered the click with one.
void GridWindow::RightButtonUp(POINT point) {
    const HitResult hit = model_->HitTest(point.x, point.y);
    const std::uint32_t before = menus_;
    input_.ButtonUp(GridInput::ButtonOf(WM_RBUTTONUP), point);
    if (hit.area == Area::Heading && menus_ == before && window_ != nullptr) {
        ShowHeaderMenu(*model_, window_,
                       model_->columns.IndexAt(static_cast<std::size_t>(hit.column)));
    }
}

/// Shift+F10 and the menu key come without a point: they are a right click on the current row.
void GridWindow::OpenContextMenu(LPARAM screenPoint) {
    const auto words = static_cast<DWORD_PTR>(screenPoint);
    if (Signed16(words) != -1 || Signed16(words >> 16U) != -1) {
        return; // a mouse's right click was raised already
    }
    const RowRef current = model_->rows.Current();
    if (current.id != 0) {
        ScrollTo(model_->rows.NumberOf(current));
    }
    input_.RightClick(model_->PointOf(current));
}

LRESULT GridWindow::HandleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{Signed16(static_cast<DWORD_PTR>(lParam)),
                      Signed16(static_cast<DWORD_PTR>(lParam) >> 16U)};
    if (message == WM_MOUSEMOVE) {
        tips_.MouseMove(point);
    }
    tips_.Relay(message, wParam, lParam);
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK: // the second of two quick clicks is one like the first
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
        SetFocus(window_);
        SetCapture(window_);
        input_.ButtonDown(GridInput::ButtonOf(message), point);
        return 0;
    case WM_LBUTTONDBLCLK:
        SetCapture(window_);
        input_.DoubleClick(point);
        return 0;
    case WM_LBUTTONUP:
    case WM_MBUTTONUP:
        ReleaseCapture();
        input_.ButtonUp(GridInput::ButtonOf(message), point);
        return 0;
    case WM_RBUTTONUP:
        ReleaseCapture();
        RightButtonUp(point);
        return 0;
    case WM_MOUSEMOVE:
        input_.MouseMove(point, (wParam & MK_LBUTTON) != 0);
        return 0;
    case WM_MOUSEWHEEL:
        TurnWheel(Signed16(wParam >> 16U));
        return 0;
    default:
        return DefWindowProcW(window_, message, wParam, lParam);
    }
}

} // namespace talvix::grid
