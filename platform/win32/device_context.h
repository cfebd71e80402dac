#pragma once

#include <windows.h>

namespace talvix {

/// The screen's device context for the length of a block.
class ScreenDc {
public:
    explicit ScreenDc(HWND window = nullptr) : window_(window), dc_(GetDC(window)) {}
    ScreenDc(const ScreenDc&) = delete;
    ScreenDc& operator=(const ScreenDc&) = delete;
    ~ScreenDc() { ReleaseDC(window_, dc_); }
    HDC Get() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

/// An object chosen into a device context for the length of a block.
class Chosen {
public:
    Chosen(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
    Chosen(const Chosen&) = delete;
    Chosen& operator=(const Chosen&) = delete;
    ~Chosen() { SelectObject(dc_, before_); }

private:
    HDC dc_;
    HGDIOBJ before_;
};

} // namespace talvix
