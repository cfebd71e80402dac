#include "platform/win32/com/module.h"

#include "platform/win32/wide.h"

namespace talvix {

namespace {

LONG locks = 0;

} // namespace

void LockModule() {
    InterlockedIncrement(&locks);
}

void UnlockModule() {
    InterlockedDecrement(&locks);
}

LONG ModuleLocks() {
    return locks;
}

void KeepModuleLoaded() {
    static const bool isKept = [] {
        HMODULE module = nullptr;
        return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN |
                                      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                  reinterpret_cast<const wchar_t*>(&LockModule), &module) != FALSE;
    }();
    static_cast<void>(isKept);
}

HINSTANCE ModuleHandle() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&locks), &module);
    return module;
}

std::u16string ModulePath() {
    std::u16string path(512, u'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(ModuleHandle(), WideBuffer(path), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

} // namespace talvix
