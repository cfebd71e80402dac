#pragma once

#include <windows.h>

#include <functional>
#include <process.h>
#include <utility>

namespace talvix {

/// A thread that does one piece of work; its end is waited for.
class Thread {
public:
    explicit Thread(std::function<void()> work)
        : work_(std::move(work)),
          handle_(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, Run, this, 0, nullptr))) {}
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    ~Thread() { Join(); }

    void Join() {
        if (handle_ != nullptr) {
            WaitForSingleObject(handle_, INFINITE);
            CloseHandle(std::exchange(handle_, nullptr));
        }
    }

private:
    static unsigned __stdcall Run(void* self) {
        static_cast<Thread*>(self)->work_();
        return 0;
    }

    std::function<void()> work_;
    HANDLE handle_;
};

} // namespace talvix
