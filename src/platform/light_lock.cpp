#include <brcore8/platform/light_lock.h>

#include <chrono>
#include <thread>

void brcore8::LightLock::Wait() noexcept {
    // Spinning on a read leaves the holder's cache line alone; sleeping in the end lets a holder
    // of lower priority run.
    for (int round = 0;; ++round) {
        for (int spin = 0; spin < 64; ++spin) {
            if (held_.load(std::memory_order_relaxed) == 0 &&
                held_.exchange(1, std::memory_order_acquire) == 0) {
                return;
            }
        }
        if (round < 16) {
            std::this_thread::yield();
        } else {
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
    }
}
