#include "core/pool_check.h"

#include <brcore8/platform/light_lock.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <map>
#include <new>
#include <vector>

namespace brcore8 {

namespace {

struct Chunk {
    const SFixedAlloc* pool;
    std::uint32_t blockSize;
    std::vector<bool> used;
};
using Chunks = std::map<const char*, Chunk>;

constinit LightLock g_lock;

// Never destroyed: pools work to the very end of the process.
Chunks& KnownChunks() {
    static Chunks& chunks = *new Chunks;
    return chunks;
}

[[noreturn]] void End(const char* what, const void* block) noexcept {
    std::fprintf(stderr, "brcore8: %s: %p\n", what, block);
    std::abort();
}

// Whether a block of the pool is in use.
std::vector<bool>::reference UseOf(const SFixedAlloc& pool, const void* block) noexcept {
    const char* const address = static_cast<const char*>(block);
    const auto behind = KnownChunks().upper_bound(address);
    if (behind != KnownChunks().begin()) {
        auto& [first, chunk] = *std::prev(behind);
        const auto offset = static_cast<std::size_t>(address - first);
        const std::size_t index = offset / chunk.blockSize;
        if (chunk.pool == &pool && offset % chunk.blockSize == 0 && index < chunk.used.size())
            return chunk.used[index];
    }
    End("a pool is given what is no block of it", block);
}

}  // namespace

bool RememberChunk(const SFixedAlloc& pool, const void* first, std::uint32_t blockSize,
                   std::uint32_t blocks) noexcept {
    const LightLockGuard guard(g_lock);
    try {
        KnownChunks().insert_or_assign(static_cast<const char*>(first),
                                       Chunk{&pool, blockSize, std::vector<bool>(blocks, false)});
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void ForgetChunk(const void* first) noexcept {
    const LightLockGuard guard(g_lock);
    KnownChunks().erase(static_cast<const char*>(first));
}

void CheckTaken(const SFixedAlloc& pool, const void* block) noexcept {
    const LightLockGuard guard(g_lock);
    UseOf(pool, block) = true;
}

void CheckGivenBack(const SFixedAlloc& pool, const void* block) noexcept {
    const LightLockGuard guard(g_lock);
    auto used = UseOf(pool, block);
    if (!used) End("a pool is given a block twice", block);
    used = false;
}

}  // namespace brcore8
