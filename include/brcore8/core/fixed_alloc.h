// Pools of fixed-size blocks: carved from chunks, kept on a free list, given back to the heap a
// whole chunk at a time in idle time. Allocation and release are constant-time.
//
// Threads: every pool has its own lock and may be shared. Once a process has several threads, each
// keeps some free blocks of a pool for itself, up to two chunks' worth; reclamation takes them back,
// also those of threads that have ended. Ownership: a pool owns its chunks and gives them all back
// when it is destroyed, also those with blocks in use.
// A pool without an idle list is constant-initialised: it works in any static initialiser.
#ifndef BRCORE8_CORE_FIXED_ALLOC_H
#define BRCORE8_CORE_FIXED_ALLOC_H

#include <brcore8/core/idle.h>
#include <brcore8/platform/export.h>
#include <brcore8/platform/light_lock.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace brcore8 {
struct PoolAccess;
struct PoolMagazines;
}  // namespace brcore8

// How full a pool is, counted on request.
struct SFixedAllocStats {
    std::size_t chunks;  // taken from the heap
    std::size_t live;    // blocks handed out
    std::size_t free;    // blocks waiting to be
};

// A pool.
//
//     SFixedAlloc pool(24, 64, "Nodes", nullptr);
//     void* block = pool.Alloc();     // 24 bytes, aligned for a pointer
//     pool.Free(block);
class BRCORE8_API SFixedAlloc : public SIdleConsumer {
public:
    // Blocks of `blockSize` bytes (raised to a multiple of a pointer's size, so that every block is
    // aligned for one), `blocksPerChunk` at a time (at least 1). `name` is for diagnostics and may
    // be null. Registers with `list` unless that is null; throws SEOutOfMemory when that fails.
    constexpr SFixedAlloc(std::uint32_t blockSize, std::uint32_t blocksPerChunk, const char* name,
                          SIdleConsumerList* list)
        : SIdleConsumer(list),
          blockSize_(RoundUp(blockSize)),
          blocksPerChunk_(blocksPerChunk != 0 ? blocksPerChunk : 1) {
        static_cast<void>(name);
    }

    // Takes the two sizes only: the copy starts empty and is on no list.
    constexpr SFixedAlloc(const SFixedAlloc& other)
        : SIdleConsumer(nullptr),
          blockSize_(other.blockSize_),
          blocksPerChunk_(other.blocksPerChunk_) {}
    SFixedAlloc& operator=(const SFixedAlloc&) = delete;

    ~SFixedAlloc() override;

    // Reclaims unused chunks: with `force` non-zero if anything was freed since the last time, with
    // 0 only after a chunk's worth of Free calls since the first reclamation. Returns 0: a pool
    // never asks for more idle time.
    int OnIdle(int force) override;

    // A block of GetAllocSize() bytes, uninitialised. A fresh chunk hands out its blocks in
    // ascending order. Throws SEOutOfMemory when the heap refuses a chunk.
    [[nodiscard]] void* Alloc();

    // Puts a block of this pool back; it is the next that this thread is handed. Null does nothing.
    // A debug build of the library ends the program when the block is not in use, or none of this
    // pool's.
    void Free(void* block) noexcept;

    // Gives back every chunk, whatever is in use, and returns how many there were. The pool can be
    // used again.
    long FreeAll() noexcept;

    // Gives back the chunks none of whose blocks is in use and returns how many there were.
    // Needs no memory; the cost grows with the number of free blocks.
    long FreeUnused() noexcept;

    // The bytes of a block, after rounding.
    std::uint32_t GetAllocSize() const noexcept { return blockSize_; }

    // Counts under the lock.
    SFixedAllocStats GetStats() const noexcept;

    // The bytes that a chunk of such blocks takes: a link and the blocks.
    static constexpr std::uint64_t ChunkSize(std::uint32_t blockSize,
                                             std::uint32_t blocksPerChunk) {
        return std::uint64_t{RoundUp(blockSize)} * blocksPerChunk + sizeof(void*);
    }

private:
    friend struct brcore8::PoolAccess;

    // A size too near the end of its type stays as it is; no heap has such a chunk.
    static constexpr std::uint32_t RoundUp(std::uint32_t size) {
        constexpr std::uint32_t kMask = sizeof(void*) - 1;
        if (size == 0) return sizeof(void*);
        return size > ~kMask ? ~kMask : (size + kMask) & ~kMask;
    }

    std::uint32_t blockSize_;
    std::uint32_t blocksPerChunk_;
    void* chunks_ = nullptr;  // the newest; the first word of each leads to the next older
    void* free_ = nullptr;    // the first word of each free block leads to the next
    int freed_ = 0;           // Free calls since the last reclamation
    int threshold_ = 0;       // Free calls that make an unforced reclamation worth while
    mutable brcore8::LightLock lock_;
    std::atomic<brcore8::PoolMagazines*> magazines_{nullptr};  // free blocks that threads keep
};
static_assert(sizeof(void*) != 4 || SFixedAlloc::ChunkSize(24, 64) == 24 * 64 + 4);
static_assert(sizeof(void*) != 4 || SFixedAlloc::ChunkSize(52, 128) == 52 * 128 + 4);
static_assert(sizeof(void*) != 8 || SFixedAlloc::ChunkSize(52, 128) == 56 * 128 + 8);

// A pool for the objects of a class, by default on the process-wide idle queue.
class BRCORE8_API SObjectFixedAllocatorBase : public SFixedAlloc {
public:
    // As SFixedAlloc's; a null list stands for IdleQueue().
    SObjectFixedAllocatorBase(std::uint32_t blockSize, std::uint32_t blocksPerChunk,
                              const char* name = nullptr, SIdleConsumerList* list = nullptr);
    SObjectFixedAllocatorBase(const SObjectFixedAllocatorBase&) = default;
    ~SObjectFixedAllocatorBase() override;

    // The process-wide list: made on first request, emptied at the end of the process; pools that
    // come later still find it.
    static SIdleConsumerList* IdleQueue() noexcept;
};
static_assert(sizeof(SObjectFixedAllocatorBase) == sizeof(SFixedAlloc));

#endif
