#include "platform/win32/system.h"

#include "automation/failure.h"
#include "platform/win32/device_context.h"
#include "platform/win32/owned.h"

#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <array>
#include <bit>

namespace talvix {

namespace {

constexpr ULONG_PTR kDialogClass = 32770; // the atom of "#32770"

/// True when the message was a dialog's key and the dialog has taken it.
bool IsForDialog(MSG& message) {
    const HWND top = message.hwnd == nullptr ? nullptr : GetAncestor(message.hwnd, GA_ROOT);
    return top != nullptr && GetClassLongPtrW(top, GCW_ATOM) == kDialogClass &&
           IsDialogMessageW(top, &message) != FALSE;
}

} // namespace

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

std::u16string Win32SystemInfo::UniqueText() {
    GUID id{};
    if (FAILED(CoCreateGuid(&id))) {
        throw Failure(failure_number::kUnexpected, u"No unique name can be made");
    }
    constexpr std::u16string_view kDigits = u"0123456789abcdef";
    std::u16string text;
    for (const auto byte : std::bit_cast<std::array<std::uint8_t, sizeof id>>(id)) {
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0xFU];
    }
    return text;
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
        if (!IsForDialog(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

} // namespace talvix
