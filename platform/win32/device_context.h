#pragma once

#include "platform/win32/owned.h"

#include <windows.h>

#include <utility>

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

/// What is to be painted anew of a window, for the length of a block.
class PaintDc {
public:
    explicit PaintDc(HWND window) : window_(window) { BeginPaint(window_, &paint_); }
    PaintDc(const PaintDc&) = delete;
    PaintDc& operator=(const PaintDc&) = delete;
    ~PaintDc() { EndPaint(window_, &paint_); }
    HDC Get() const { return paint_.hdc; }
    const RECT& Area() const { return paint_.rcPaint; }

private:
    HWND window_;
    PAINTSTRUCT paint_{};
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

/// A picture in memory with a device context of its own, to draw on and to copy from. It stays
/// chosen into that: choosing a bitmap takes longer than drawing a line of cells on it.
class MemoryPicture {
public:
    MemoryPicture() = default;
    /// As deep as the device; empty where there is no memory for it.
    MemoryPicture(HDC like, const SIZE& size)
        : bitmap_(CreateCompatibleBitmap(like, size.cx, size.cy)),
          dc_(bitmap_ ? CreateCompatibleDC(like) : nullptr),
          size_(size) {
        SelectObject(dc_.Get(), bitmap_.Get());
    }
    MemoryPicture(MemoryPicture&&) noexcept = default;
    MemoryPicture& operator=(MemoryPicture&& other) noexcept {
        dc_ = std::move(other.dc_); // before the bitmap, which cannot end while it is chosen
        bitmap_ = std::move(other.bitmap_);
        size_ = std::exchange(other.size_, SIZE{});
        return *this;
    }
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;
    ~MemoryPicture() = default;
    explicit operator bool() const { return static_cast<bool>(dc_); }
    HDC Get() const { return dc_.Get(); }
    const SIZE& Size() const { return size_; }

private:
    OwnedBitmap bitmap_;
    OwnedMemoryDc dc_; ///< ends before its bitmap
    SIZE size_{};
};

} // namespace talvix
