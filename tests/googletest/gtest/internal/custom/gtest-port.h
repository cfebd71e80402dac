#pragma once

#include <atomic>

// What Google Test lets a platform bring along (its custom/README.md). Its own Notification is made
// of std::mutex, which the compiler's Windows threads do not have.
#define GTEST_HAS_NOTIFICATION_ 1

extern "C" __declspec(dllimport) void __stdcall Sleep(unsigned long);

namespace testing::internal {

/// Lets a new thread wait until it may begin; Google Test uses it in its own tests only.
class Notification {
public:
    void Notify() { notified_ = true; }
    void WaitForNotification() const {
        while (!notified_) {
            Sleep(1);
        }
    }

private:
    std::atomic<bool> notified_ = false;
};

} // namespace testing::internal
