#include <brcore8/containers/rb_tree.h>
#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/throw.h>

#include <cstdint>

#include "core/never_destroyed.h"
#include "core/pool_access.h"

namespace {

// Of two integers in a sorted map up to two texts in a map in insertion order, by words.
constexpr std::size_t kWord = sizeof(void*);
constexpr std::uint32_t kSmallest = 5 * kWord;

// Maps may be static objects, so the pools are never destroyed.
constinit brcore8::NeverDestroyed<SFixedAlloc> pools[] = {
    {kSmallest, 128u, "STreePool", nullptr},
    {std::uint32_t{6 * kWord}, 128u, "STreePool", nullptr},
    {std::uint32_t{7 * kWord}, 128u, "STreePool", nullptr},
    {std::uint32_t{8 * kWord}, 128u, "STreePool", nullptr},
};

struct Unload {
    ~Unload() {
        for (auto& pool : pools)
            pool.object.FreeUnused();
    }
} unload;

SFixedAlloc* PoolOf(std::size_t size) noexcept {
    const std::size_t words = (size + kWord - 1) / kWord;
    if (words > 8) return nullptr;
    return &pools[words > 5 ? words - 5 : 0].object;
}

}  // namespace

void* STreePool::Allocate(std::size_t size) {
    SFixedAlloc* const pool = PoolOf(size);
    return pool != nullptr ? brcore8::PoolAccess::Alloc(*pool) : brcore8::Allocate(size);
}

void STreePool::Free(void* block, std::size_t size) noexcept {
    if (SFixedAlloc* const pool = PoolOf(size))
        brcore8::PoolAccess::Free(*pool, block);
    else
        brcore8::Release(block);
}
