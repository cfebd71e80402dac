#include "workbench/program/frame.h"

#include "automation/text.h"
#include "platform/win32/wide.h"
#include "workbench/program/user_memory.h"

#include <algorithm>
#include <cwchar>

namespace talvix::workbench {

namespace {

constexpr int kIcon = 1;
constexpr int kUnits = 96;
constexpr const wchar_t* kPlace = L"Place";

} // namespace

void RegisterFrame(const wchar_t* name, WNDPROC procedure) {
    WNDCLASSEXW own{};
    own.cbSize = sizeof own;
    own.lpfnWndProc = procedure;
    own.hInstance = GetModuleHandleW(nullptr);
    own.hIcon = LoadIconW(own.hInstance, MAKEINTRESOURCEW(kIcon));
    own.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    own.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<LONG_PTR>(COLOR_BTNFACE + 1));
    own.lpszClassName = name;
    RegisterClassExW(&own);
}

HFONT MessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

SIZE FirstSize(int dpi) {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return {std::min<LONG>(MulDiv(1010, dpi, kUnits), area.right - area.left),
            std::min<LONG>(MulDiv(640, dpi, kUnits), area.bottom - area.top)};
}

bool RestorePlace(HWND window) {
    WINDOWPLACEMENT place{};
    place.length = sizeof place;
    RECT& box = place.rcNormalPosition;
    int isMaximized = 0;
    const std::u16string text = Remembered(kPlace);
    if (std::swscanf(Wide(text), L"%ld %ld %ld %ld %d", &box.left, &box.top, &box.right,
                     &box.bottom, &isMaximized) != 5 ||
        box.right <= box.left || box.bottom <= box.top ||
        MonitorFromRect(&box, MONITOR_DEFAULTTONULL) == nullptr) {
        return false;
    }
    place.showCmd = isMaximized != 0 ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    return SetWindowPlacement(window, &place) != FALSE;
}

void RememberPlace(HWND window) {
    WINDOWPLACEMENT place{};
    place.length = sizeof place;
    if (GetWindowPlacement(window, &place) == FALSE) {
        return;
    }
    const RECT& box = place.rcNormalPosition;
    std::u16string text;
    for (const LONG number :
         {box.left, box.top, box.right, box.bottom, LONG{IsZoomed(window) != FALSE ? 1 : 0}}) {
        text += (text.empty() ? u"" : u" ") + DecimalText(number);
    }
    Remember(kPlace, text);
}

double Now() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

} // namespace talvix::workbench
