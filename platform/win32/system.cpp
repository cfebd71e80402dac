#include "platform/win32/system.h"

#include "platform/win32/owned.h"

#include <windows.h>
#include <oleauto.h>

namespace talvix {

std::optional<SystemVersion> Win32SystemInfo::Version() {
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
    if (GetVersionExW(&info) == FALSE) {
        return std::nullopt;
    }
    return SystemVersion{static_cast<std::uint32_t>(info.dwPlatformId),
                         static_cast<std::uint32_t>(info.dwMajorVersion),
                         static_cast<std::uint32_t>(info.dwMinorVersion)};
}

std::int32_t Win32SystemInfo::PixelsPerInch() {
    const ScreenDc screen;
    return GetDeviceCaps(screen.Get(), LOGPIXELSY);
}

Date Win32Clock::Now() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    Date date;
    SystemTimeToVariantTime(&now, &date.days);
    return date;
}

void Win32Timers::RunPending() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace talvix
