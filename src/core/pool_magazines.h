// Free blocks that each thread keeps of a pool, so that threads that share the pool do not meet in
// its lock for every block.
#ifndef BRCORE8_SRC_CORE_POOL_MAGAZINES_H
#define BRCORE8_SRC_CORE_POOL_MAGAZINES_H

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "platform/sanitizer.h"
#include "platform/thread_slot.h"

namespace brcore8 {

// Free blocks, each beginning with the link to the next; all of a free block is poisoned.
struct PoolChain {
    void* first = nullptr;
    std::uint32_t count = 0;

    void Push(void* block) noexcept {
        *static_cast<void**>(block) = first;
        first = block;
        ++count;
    }
    // The first block, its link readable; null when there is none.
    void* Pop() noexcept {
        void* const block = first;
        if (block == nullptr) return nullptr;
        UnpoisonMemory(block, sizeof(void*));
        first = *static_cast<void**>(block);
        --count;
        return block;
    }
};

// What one thread keeps. Its thread enters it without an atomic exchange; the holder of the pool's
// lock either is that thread or first stops it (see PoolMagazinesStop).
struct alignas(64) PoolMagazine {
    std::atomic<bool> entered{false};
    std::atomic<bool> stopped{false};
    std::uint32_t size = 0;             // of a full chain
    std::atomic<std::size_t> freed{0};  // Free calls since the last reclamation
    PoolChain loaded;
    PoolChain spare;  // full, or empty: blocks go to and come from the pool a whole chain at a time

    // Whether the thread may now use it. No fence keeps the store before the load: who sets
    // `stopped` puts one into this thread from outside.
    bool Enter() noexcept {
        entered.store(true, std::memory_order_relaxed);
        std::atomic_signal_fence(std::memory_order_seq_cst);
        if (!stopped.load(std::memory_order_acquire)) [[likely]] return true;
        Leave();
        return false;
    }
    void Leave() noexcept { entered.store(false, std::memory_order_release); }

    // For who has entered, or stopped it. A block, its link readable; null when there is none.
    void* Take() noexcept {
        if (loaded.count == 0) [[unlikely]] std::swap(loaded, spare);
        return loaded.Pop();
    }
    // False when both chains are full.
    bool Put(void* block) noexcept {
        if (loaded.count == size) [[unlikely]] {
            if (spare.count != 0) return false;
            std::swap(loaded, spare);
        }
        loaded.Push(block);
        freed.store(freed.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        return true;
    }
};

struct PoolMagazines {
    explicit PoolMagazines(std::uint32_t size) noexcept {
        for (PoolMagazine& magazine : of)
            magazine.size = size;
    }

    PoolMagazine of[kThreadSlots];
};

}  // namespace brcore8

#endif
