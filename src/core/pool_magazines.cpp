#include "core/pool_magazines.h"

#include <brcore8/core/throw.h>

#include <algorithm>
#include <limits>
#include <new>
#include <thread>

#include "core/pool_access.h"

namespace brcore8 {
namespace {

// While one lives, under the pool's lock, no thread uses its magazine of the pool.
class MagazinesStop {
public:
    explicit MagazinesStop(PoolMagazines& magazines) noexcept : magazines_(magazines) {
        for (PoolMagazine& magazine : magazines_.of)
            magazine.stopped.store(true, std::memory_order_relaxed);
        // From here on every thread has either been seen entering or sees that it must not.
        FenceOtherThreads();
        for (PoolMagazine& magazine : magazines_.of) {
            while (magazine.entered.load(std::memory_order_acquire))
                std::this_thread::yield();
        }
    }
    ~MagazinesStop() {
        for (PoolMagazine& magazine : magazines_.of)
            magazine.stopped.store(false, std::memory_order_release);
    }
    MagazinesStop(const MagazinesStop&) = delete;
    MagazinesStop& operator=(const MagazinesStop&) = delete;

private:
    PoolMagazines& magazines_;
};

}  // namespace

// Without memory for them, a thread goes on with the pool alone.
PoolMagazine* PoolAccess::MakeOwnMagazine(SFixedAlloc& pool) noexcept {
    if (IsSingleThreaded() || ClaimThreadSlot() >= kThreadSlots) return nullptr;
    if (pool.magazines_.load(std::memory_order_acquire) == nullptr) {
        // Enough to make visits to the pool rare, no more than a chunk.
        auto* const made =
            new (std::nothrow) PoolMagazines(std::min<std::uint32_t>(pool.blocksPerChunk_, 64));
        PoolMagazines* none = nullptr;
        if (!pool.magazines_.compare_exchange_strong(none, made, std::memory_order_acq_rel))
            delete made;
    }
    return OwnMagazine(pool);
}

void* PoolAccess::TakeFromPool(SFixedAlloc& pool) noexcept {
    void* const block = pool.free_;
    if (block != nullptr) {
        UnpoisonMemory(block, pool.blockSize_);
        pool.free_ = *static_cast<void**>(block);
    }
    return block;
}

// Takes blocks off the pool's list as they stand there, so that a single thread gets them in the
// order that the list alone would give.
void PoolAccess::Load(SFixedAlloc& pool, PoolMagazine& magazine) noexcept {
    if (magazine.loaded.count != 0 || pool.free_ == nullptr) return;
    void* last = magazine.loaded.first = pool.free_;
    for (;;) {
        UnpoisonMemory(last, sizeof(void*));
        void*& link = *static_cast<void**>(last);
        pool.free_ = link;
        const bool ends = ++magazine.loaded.count == magazine.size || link == nullptr;
        if (ends) link = nullptr;
        void* const next = link;
        PoisonMemory(last, sizeof(void*));
        if (ends) return;
        last = next;
    }
}

// The chain's blocks become the first of the pool's list.
void PoolAccess::GiveToPool(SFixedAlloc& pool, PoolChain& chain) noexcept {
    if (chain.count == 0) return;
    void* last = chain.first;
    for (;;) {
        UnpoisonMemory(last, sizeof(void*));
        void*& link = *static_cast<void**>(last);
        void* const next = link;
        if (next == nullptr) link = pool.free_;
        PoisonMemory(last, sizeof(void*));
        if (next == nullptr) break;
        last = next;
    }
    pool.free_ = chain.first;
    chain = {};
}

void* PoolAccess::AllocFromPool(SFixedAlloc& pool) {
    PoolMagazine* const own = MakeOwnMagazine(pool);
    const auto take = [&pool, own] {
        if (own == nullptr) return TakeFromPool(pool);
        if (own->spare.count == 0) Load(pool, *own);
        void* const block = own->Take();
        if (block != nullptr) UnpoisonMemory(block, pool.blockSize_);
        return block;
    };
    {
        const LightLockGuard guard(pool.lock_);
        if (void* const block = take()) return block;
    }
    // The heap is asked without the lock: it may be slow, and a replaced one may use this pool.
    void* const chunk = NewChunk(pool);
    const LightLockGuard guard(pool.lock_);
    if (chunk != nullptr)
        AddChunk(pool, chunk);
    else
        EmptyMagazines(pool);  // another thread's may hold what the heap refuses
    void* const block = take();
    if (block == nullptr) ThrowOutOfMemory();
    return block;
}

void PoolAccess::FreeToPool(SFixedAlloc& pool, void* block) noexcept {
    PoolMagazine* const own = MakeOwnMagazine(pool);
    const LightLockGuard guard(pool.lock_);
    if (own == nullptr) {
        PutBack(pool, block);
        return;
    }
    if (!own->Put(block)) {
        GiveToPool(pool, own->spare);
        own->Put(block);
    }
    PoisonMemory(block, pool.blockSize_);
}

int PoolAccess::CountFreed(const SFixedAlloc& pool) noexcept {
    auto sum = static_cast<std::size_t>(pool.freed_);
    if (PoolMagazines* const magazines = pool.magazines_.load(std::memory_order_acquire)) {
        for (const PoolMagazine& magazine : magazines->of)
            sum += magazine.freed.load(std::memory_order_relaxed);
    }
    return static_cast<int>(std::min<std::size_t>(sum, std::numeric_limits<int>::max()));
}

void PoolAccess::EmptyMagazines(SFixedAlloc& pool) noexcept {
    PoolMagazines* const magazines = pool.magazines_.load(std::memory_order_acquire);
    if (magazines == nullptr) return;
    const MagazinesStop stop(*magazines);
    pool.freed_ = CountFreed(pool);
    for (PoolMagazine& magazine : magazines->of) {
        magazine.freed.store(0, std::memory_order_relaxed);
        GiveToPool(pool, magazine.spare);
        GiveToPool(pool, magazine.loaded);
    }
}

std::size_t PoolAccess::CountMagazines(const SFixedAlloc& pool) noexcept {
    PoolMagazines* const magazines = pool.magazines_.load(std::memory_order_acquire);
    if (magazines == nullptr) return 0;
    const MagazinesStop stop(*magazines);
    std::size_t count = 0;
    for (const PoolMagazine& magazine : magazines->of)
        count += magazine.loaded.count + std::size_t{magazine.spare.count};
    return count;
}

}  // namespace brcore8
