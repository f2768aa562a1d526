#include "platform/thread_slot.h"

#if __has_include(<linux/membarrier.h>)

#include <linux/membarrier.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <bit>
#include <cstdint>

constinit thread_local unsigned brcore8::threadSlot = brcore8::kUnclaimedSlot;

namespace {

constinit std::atomic<std::uint32_t> g_taken{0};  // a bit a slot
static_assert(brcore8::kThreadSlots == 32);

long MemoryBarrier(int command) noexcept {
    return syscall(SYS_membarrier, command, 0, 0);
}

bool CanFence() noexcept {
    static const bool can = MemoryBarrier(MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED) == 0;
    return can;
}

// Gives the number back when the thread ends; what still runs in the thread then has none.
struct Lease {
    ~Lease() {
        const unsigned slot = brcore8::threadSlot;
        brcore8::threadSlot = brcore8::kThreadSlots;
        g_taken.fetch_and(~(1u << slot), std::memory_order_release);
    }
};

}  // namespace

unsigned brcore8::ClaimThreadSlot() noexcept {
    if (threadSlot != kUnclaimedSlot) return threadSlot;
    threadSlot = kThreadSlots;
    if (!CanFence()) return threadSlot;
    std::uint32_t taken = g_taken.load(std::memory_order_relaxed);
    unsigned slot = 0;
    do {
        slot = static_cast<unsigned>(std::countr_one(taken));
        if (slot == kThreadSlots) return threadSlot;
    } while (!g_taken.compare_exchange_weak(taken, taken | 1u << slot, std::memory_order_acquire,
                                            std::memory_order_relaxed));
    threadSlot = slot;
    static thread_local Lease lease;
    static_cast<void>(lease);
    return slot;
}

void brcore8::FenceOtherThreads() noexcept {
    MemoryBarrier(MEMBARRIER_CMD_PRIVATE_EXPEDITED);
}

#endif
