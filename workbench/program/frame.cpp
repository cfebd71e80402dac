#include "workbench/program/frame.h"

#include <algorithm>

namespace talvix::workbench {

namespace {

constexpr int kIcon = 1;
constexpr int kUnits = 96;

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

double Now() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

} // namespace talvix::workbench
