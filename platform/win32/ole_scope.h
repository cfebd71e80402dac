#pragma once

#include <windows.h>
#include <ole2.h>

namespace talvix {

/// OLE on this thread for the length of a block: drops and the shell's newer dialogs need it.
class OleScope {
public:
    OleScope() = default;
    OleScope(const OleScope&) = delete;
    OleScope& operator=(const OleScope&) = delete;
    ~OleScope() {
        if (SUCCEEDED(started_)) {
            OleUninitialize();
        }
    }

    explicit operator bool() const { return SUCCEEDED(started_); }

private:
    HRESULT started_ = OleInitialize(nullptr);
};

} // namespace talvix
