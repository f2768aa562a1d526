// The pools' hot path, inline for the library's own code. Programs call SFixedAlloc's exported
// members instead: only the library knows whether its blocks are poisoned for AddressSanitizer.
#ifndef BRCORE8_SRC_CORE_POOL_ACCESS_H
#define BRCORE8_SRC_CORE_POOL_ACCESS_H

#include <brcore8/core/fixed_alloc.h>

#include "platform/sanitizer.h"

namespace brcore8 {

struct PoolAccess {
    // As SFixedAlloc::Alloc.
    [[nodiscard]] static void* Alloc(SFixedAlloc& pool) {
        pool.lock_.Lock();
        void* const block = pool.free_;
        if (block == nullptr) [[unlikely]] {
            return AllocFromNewChunk(pool);
        }
        UnpoisonMemory(block, pool.blockSize_);
        pool.free_ = *static_cast<void**>(block);
        pool.lock_.Unlock();
        return block;
    }

    // As SFixedAlloc::Free; `block` is not null.
    static void Free(SFixedAlloc& pool, void* block) noexcept {
        pool.lock_.Lock();
        *static_cast<void**>(block) = pool.free_;
        pool.free_ = block;
        // Saturates: only "some" and "a chunk's worth" matter.
        if (pool.freed_ != 0x7FFFFFFF) ++pool.freed_;
        PoisonMemory(block, pool.blockSize_);
        pool.lock_.Unlock();
    }

private:
    // Entered with the lock held; left without it.
    static void* AllocFromNewChunk(SFixedAlloc& pool);
    static void* NewChunk(const SFixedAlloc& pool) noexcept;
    // Under the lock: the chunk's first block becomes the head of the free list.
    static void AddChunk(SFixedAlloc& pool, void* chunk) noexcept;
};

}  // namespace brcore8

#endif
