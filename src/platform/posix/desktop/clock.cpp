// The desktop's clock, and what tests do with it.

#include <brcore8/platform/posix/desktop_testing.h>

#include <chrono>
#include <optional>

#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

// Under the lock.
std::optional<std::uint64_t>& HeldTime() noexcept {
    static constinit std::optional<std::uint64_t> time;
    return time;
}

}  // namespace

std::uint64_t Milliseconds() noexcept {
    const std::lock_guard guard(Lock());
    if (HeldTime()) return *HeldTime();
    using namespace std::chrono;
    return static_cast<std::uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

bool IsClockVirtual() noexcept {
    const std::lock_guard guard(Lock());
    return HeldTime().has_value();
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

void SHoldDesktopClock() noexcept {
    const std::lock_guard guard(Lock());
    HeldTime() = Milliseconds();
}

void SAdvanceDesktopClock(unsigned milliseconds) noexcept {
    {
        const std::lock_guard guard(Lock());
        if (HeldTime()) *HeldTime() += milliseconds;
    }
    WakeAll();
}

void SReleaseDesktopClock() noexcept {
    {
        const std::lock_guard guard(Lock());
        HeldTime().reset();
    }
    WakeAll();
}
