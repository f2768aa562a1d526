// The lock around a few instructions: one word, usable before main and after it in constant-
// initialised objects. Uncontended it costs one atomic exchange, or none while the process has a
// single thread; contended it spins briefly and then yields. Not recursive.
#ifndef BRCORE8_PLATFORM_LIGHT_LOCK_H
#define BRCORE8_PLATFORM_LIGHT_LOCK_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/threads.h>

#include <atomic>
#include <cstdint>

namespace brcore8 {

class LightLock {
public:
    constexpr LightLock() noexcept = default;
    LightLock(const LightLock&) = delete;
    LightLock& operator=(const LightLock&) = delete;

    void Lock() noexcept {
        // The word says the truth in both cases, so a thread started meanwhile waits as it must.
        if (IsSingleThreaded() && held_.load(std::memory_order_relaxed) == 0) {
            held_.store(1, std::memory_order_relaxed);
        } else if (held_.exchange(1, std::memory_order_acquire) != 0) {
            Wait();
        }
    }

    void Unlock() noexcept { held_.store(0, std::memory_order_release); }

private:
    // Returns holding the lock.
    BRCORE8_API void Wait() noexcept;

    std::atomic<std::uint32_t> held_{0};
};

class LightLockGuard {
public:
    explicit LightLockGuard(LightLock& lock) noexcept : lock_(lock) { lock_.Lock(); }
    ~LightLockGuard() { lock_.Unlock(); }
    LightLockGuard(const LightLockGuard&) = delete;
    LightLockGuard& operator=(const LightLockGuard&) = delete;

private:
    LightLock& lock_;
};

}  // namespace brcore8

#endif
