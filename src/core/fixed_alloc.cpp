#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/throw.h>

#include "core/memory.h"
#include "core/never_destroyed.h"
#include "core/pool_access.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <limits>
#include <memory>
#include <new>

// A chunk is the link to the next older chunk and the blocks. A free block begins with the link to
// the next free block; all of it is poisoned while it is free.

namespace {

constexpr std::uint64_t kLargestChunk = std::numeric_limits<std::int32_t>::max();

void*& Link(void* node) noexcept {
    return *static_cast<void**>(node);
}

std::size_t BlockBytes(std::uint32_t blockSize, std::uint32_t blocksPerChunk) noexcept {
    return static_cast<std::size_t>(blockSize) * blocksPerChunk;
}

char* FirstBlock(void* chunk) noexcept {
    return static_cast<char*>(chunk) + sizeof(void*);
}

// Sorts a list by address in place. Free blocks lie all over the memory, so that every visit costs
// a cache miss: a radix sort visits each a few times only, where merging would log n times.
void* SortByAddress(void* list) noexcept {
    constexpr int kDigitBits = 11;
    constexpr std::size_t kDigits = std::size_t{1} << kDigitBits;
    const auto first = reinterpret_cast<std::uintptr_t>(list);
    std::uintptr_t differing = 0;
    for (void* node = list; node != nullptr; node = Link(node))
        differing |= reinterpret_cast<std::uintptr_t>(node) ^ first;

    // From the lowest differing bit up, each pass keeping the order of the ones before.
    constexpr int kBits = std::numeric_limits<std::uintptr_t>::digits;
    for (int shift = std::countr_zero(differing); shift < kBits && differing >> shift != 0;
         shift += kDigitBits) {
        void* heads[kDigits] = {};
        void* tails[kDigits];
        for (void *node = list, *next = nullptr; node != nullptr; node = next) {
            next = Link(node);
            const std::size_t digit = (reinterpret_cast<std::uintptr_t>(node) >> shift) % kDigits;
            (heads[digit] != nullptr ? Link(tails[digit]) : heads[digit]) = node;
            tails[digit] = node;
        }
        void** end = &list;
        for (std::size_t digit = 0; digit < kDigits; ++digit) {
            if (heads[digit] == nullptr) continue;
            *end = heads[digit];
            end = &Link(tails[digit]);
        }
        *end = nullptr;
    }
    return list;
}

long ReleaseChunks(void* chunks, std::size_t blockBytes) noexcept {
    long released = 0;
    while (chunks != nullptr) {
        void* const next = Link(chunks);
        if constexpr (brcore8::kChecksPools) brcore8::ForgetChunk(FirstBlock(chunks));
        brcore8::UnpoisonMemory(FirstBlock(chunks), blockBytes);
        ::operator delete(chunks);
        chunks = next;
        ++released;
    }
    return released;
}

// Splits the chunks, sorted by address as the free blocks are, into those to keep and those whose
// blocks are all free, and takes the blocks of the latter off the free list.
struct Reclamation {
    void* kept = nullptr;
    void* unused = nullptr;
    void* free = nullptr;

    Reclamation(void* chunks, void* blocks, std::size_t blockBytes,
                std::uint32_t blocksPerChunk) noexcept {
        void** keptEnd = &kept;
        void** freeEnd = &free;
        while (chunks != nullptr) {
            void* const chunk = chunks;
            chunks = Link(chunk);
            const char* const end = FirstBlock(chunk) + blockBytes;
            void** blocksEnd = freeEnd;
            std::uint32_t count = 0;
            *freeEnd = blocks;
            while (*blocksEnd != nullptr && std::less<const void*>()(*blocksEnd, end)) {
                blocksEnd = &Link(*blocksEnd);
                ++count;
            }
            blocks = *blocksEnd;
            if (count == blocksPerChunk) {
                Link(chunk) = unused;
                unused = chunk;
            } else {
                *keptEnd = chunk;
                keptEnd = &Link(chunk);
                freeEnd = blocksEnd;
            }
        }
        *keptEnd = nullptr;
        *freeEnd = blocks;
    }
};

constinit brcore8::NeverDestroyed<SIdleConsumerList> g_idleQueue;

// Empties the queue at the end of the process; a fresh one stays for pools that come later.
struct IdleQueueEnd {
    ~IdleQueueEnd() {
        std::destroy_at(&g_idleQueue.object);
        std::construct_at(&g_idleQueue.object);
    }
};
const IdleQueueEnd g_idleQueueEnd;

}  // namespace

namespace brcore8 {

void* PoolAccess::NewChunk(const SFixedAlloc& pool) noexcept {
    const std::uint64_t size = SFixedAlloc::ChunkSize(pool.blockSize_, pool.blocksPerChunk_);
    if (size > kLargestChunk || !MayAllocate(static_cast<std::size_t>(size))) return nullptr;
    void* chunk = ::operator new(static_cast<std::size_t>(size), std::nothrow);
    if (kChecksPools && chunk != nullptr &&
        !RememberChunk(pool, FirstBlock(chunk), pool.blockSize_, pool.blocksPerChunk_)) {
        ::operator delete(chunk);
        chunk = nullptr;
    }
    return chunk;
}

void PoolAccess::AddChunk(SFixedAlloc& pool, void* chunk) noexcept {
    Link(chunk) = pool.chunks_;
    pool.chunks_ = chunk;
    char* const first = FirstBlock(chunk);
    const std::size_t bytes = BlockBytes(pool.blockSize_, pool.blocksPerChunk_);
    for (std::size_t offset = bytes; offset != 0;) {
        offset -= pool.blockSize_;
        Link(first + offset) = pool.free_;
        pool.free_ = first + offset;
    }
    PoisonMemory(first, bytes);
}

}  // namespace brcore8

SFixedAlloc::~SFixedAlloc() {
    FreeAll();
    delete magazines_.load(std::memory_order_relaxed);
}

int SFixedAlloc::OnIdle(int force) {
    bool worthWhile = false;
    {
        const brcore8::LightLockGuard guard(lock_);
        const int freed = brcore8::PoolAccess::CountFreed(*this);
        worthWhile = force != 0 ? freed != 0 : threshold_ != 0 && freed >= threshold_;
    }
    if (worthWhile) FreeUnused();
    return 0;
}

void* SFixedAlloc::Alloc() {
    return brcore8::PoolAccess::Alloc(*this);
}

void SFixedAlloc::Free(void* block) noexcept {
    if (block != nullptr) brcore8::PoolAccess::Free(*this, block);
}

long SFixedAlloc::FreeAll() noexcept {
    void* chunks = nullptr;
    {
        const brcore8::LightLockGuard guard(lock_);
        brcore8::PoolAccess::EmptyMagazines(*this);
        chunks = chunks_;
        chunks_ = nullptr;
        free_ = nullptr;
        freed_ = 0;
        threshold_ = 0;
    }
    return ReleaseChunks(chunks, BlockBytes(blockSize_, blocksPerChunk_));
}

long SFixedAlloc::FreeUnused() noexcept {
    const std::size_t bytes = BlockBytes(blockSize_, blocksPerChunk_);
    void* unused = nullptr;
    {
        const brcore8::LightLockGuard guard(lock_);
        brcore8::PoolAccess::EmptyMagazines(*this);
        if (chunks_ == nullptr || freed_ == 0) {
            freed_ = 0;
            threshold_ = 0;
            return 0;
        }
        freed_ = 0;
        threshold_ = static_cast<int>(
            std::min<std::uint32_t>(blocksPerChunk_, std::numeric_limits<std::int32_t>::max()));
        for (void* chunk = chunks_; chunk != nullptr; chunk = Link(chunk))
            brcore8::UnpoisonMemory(FirstBlock(chunk), bytes);
        const Reclamation result(SortByAddress(chunks_), SortByAddress(free_), bytes,
                                 blocksPerChunk_);
        chunks_ = result.kept;
        free_ = result.free;
        unused = result.unused;
        for (void *block = free_, *next = nullptr; block != nullptr; block = next) {
            next = Link(block);
            brcore8::PoisonMemory(block, blockSize_);
        }
    }
    return ReleaseChunks(unused, bytes);
}

SFixedAllocStats SFixedAlloc::GetStats() const noexcept {
    const brcore8::LightLockGuard guard(lock_);
    SFixedAllocStats stats{};
    stats.free = brcore8::PoolAccess::CountMagazines(*this);
    for (void* chunk = chunks_; chunk != nullptr; chunk = Link(chunk))
        ++stats.chunks;
    for (void *block = free_, *next = nullptr; block != nullptr; block = next) {
        brcore8::UnpoisonMemory(block, sizeof(void*));
        next = Link(block);
        brcore8::PoisonMemory(block, sizeof(void*));
        ++stats.free;
    }
    stats.live = stats.chunks * blocksPerChunk_ - stats.free;
    return stats;
}

SObjectFixedAllocatorBase::SObjectFixedAllocatorBase(std::uint32_t blockSize,
                                                     std::uint32_t blocksPerChunk, const char* name,
                                                     SIdleConsumerList* list)
    : SFixedAlloc(blockSize, blocksPerChunk, name, list != nullptr ? list : IdleQueue()) {}

SObjectFixedAllocatorBase::~SObjectFixedAllocatorBase() = default;

SIdleConsumerList* SObjectFixedAllocatorBase::IdleQueue() noexcept {
    return &g_idleQueue.object;
}
