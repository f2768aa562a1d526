// The pools' hot path, inline for the library's own code. Programs call SFixedAlloc's exported
// members instead: only the library knows whether its blocks are poisoned for AddressSanitizer.
#ifndef BRCORE8_SRC_CORE_POOL_ACCESS_H
#define BRCORE8_SRC_CORE_POOL_ACCESS_H

#include <brcore8/core/fixed_alloc.h>
#include <brcore8/platform/threads.h>

#include "core/pool_check.h"
#include "core/pool_magazines.h"
#include "platform/sanitizer.h"

namespace brcore8 {

// A process of one thread has the pool to itself. After that a thread turns to its magazine, and
// to the pool, under its lock, when that is empty or full.
struct PoolAccess {
    // As SFixedAlloc::Alloc.
    [[nodiscard]] static void* Alloc(SFixedAlloc& pool) {
        void* const block = AllocAtOnce(pool);
        return block != nullptr ? block : Checked(pool, AllocFromPool(pool));
    }
    // Null when it takes more than to pop a free block.
    [[nodiscard]] static void* AllocAtOnce(SFixedAlloc& pool) noexcept {
        void* block = nullptr;
        if (IsSingleThreaded()) {
            block = pool.free_;
            if (block == nullptr) [[unlikely]] return nullptr;
            UnpoisonMemory(block, pool.blockSize_);
            pool.free_ = *static_cast<void**>(block);
        } else if (PoolMagazine* const own = OwnMagazine(pool); own != nullptr && own->Enter()) {
            block = own->Take();
            own->Leave();
            if (block != nullptr) UnpoisonMemory(block, pool.blockSize_);
        }
        return Checked(pool, block);
    }

    // As SFixedAlloc::Free; `block` is not null.
    static void Free(SFixedAlloc& pool, void* block) noexcept {
        if constexpr (kChecksPools) CheckGivenBack(pool, block);
        if (IsSingleThreaded()) {
            PutBack(pool, block);
            return;
        }
        if (PoolMagazine* const own = OwnMagazine(pool); own != nullptr && own->Enter()) {
            const bool kept = own->Put(block);
            if (kept) PoisonMemory(block, pool.blockSize_);
            own->Leave();
            if (kept) [[likely]] return;
        }
        FreeToPool(pool, block);
    }

    // Free calls since the last reclamation, of every thread.
    static int CountFreed(const SFixedAlloc& pool) noexcept;
    // Under the pool's lock: what magazines hold goes back to the pool, or is counted.
    static void EmptyMagazines(SFixedAlloc& pool) noexcept;
    static std::size_t CountMagazines(const SFixedAlloc& pool) noexcept;

private:
    static void* Checked(const SFixedAlloc& pool, void* block) noexcept {
        if constexpr (kChecksPools) {
            if (block != nullptr) CheckTaken(pool, block);
        }
        return block;
    }
    static PoolMagazine* OwnMagazine(const SFixedAlloc& pool) noexcept {
        PoolMagazines* const magazines = pool.magazines_.load(std::memory_order_acquire);
        const unsigned slot = ThreadSlot();
        return magazines != nullptr && slot < kThreadSlots ? &magazines->of[slot] : nullptr;
    }
    static void PutBack(SFixedAlloc& pool, void* block) noexcept {
        *static_cast<void**>(block) = pool.free_;
        pool.free_ = block;
        if (pool.freed_ != 0x7FFFFFFF) ++pool.freed_;
        PoisonMemory(block, pool.blockSize_);
    }

    // The ways past the magazines, which they fill or empty on the way.
    static void* AllocFromPool(SFixedAlloc& pool);
    static void FreeToPool(SFixedAlloc& pool, void* block) noexcept;
    static PoolMagazine* MakeOwnMagazine(SFixedAlloc& pool) noexcept;
    static void Load(SFixedAlloc& pool, PoolMagazine& magazine) noexcept;
    static void GiveToPool(SFixedAlloc& pool, PoolChain& chain) noexcept;
    static void* TakeFromPool(SFixedAlloc& pool) noexcept;

    static void* NewChunk(const SFixedAlloc& pool) noexcept;
    // Under the lock: the chunk's first block becomes the head of the free list.
    static void AddChunk(SFixedAlloc& pool, void* chunk) noexcept;
};

}  // namespace brcore8

#endif
