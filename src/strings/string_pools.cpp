#include "strings/string_pools.h"

#include <brcore8/core/exception.h>
#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/throw.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

#include "core/never_destroyed.h"
#include "core/pool_access.h"

namespace brcore8::string_pools {
namespace {

constexpr std::int32_t kSmallest = 16;
constexpr std::int32_t kLargestPooled = 2048;
// Header, terminator and three bytes that round the element to a word.
constexpr std::uint32_t kOverhead = sizeof(SStringData) + 4;

constexpr std::int32_t Capacity(int index) {
    return kSmallest << index;
}
constexpr int Index(std::int32_t bytes) {
    return std::bit_width(static_cast<std::uint32_t>(std::max(bytes, kSmallest)) - 1) - 4;
}
static_assert(Index(1) == 0 && Index(16) == 0 && Index(17) == 1 && Index(32) == 1);
static_assert(Index(1025) == 7 && Index(2048) == 7 && Capacity(7) == kLargestPooled);
static_assert(Capacity(0) + kOverhead == 36 && Capacity(7) + kOverhead == 2068);

// Strings outlive every static object, so the pools are never destroyed.
constinit NeverDestroyed<SFixedAlloc> pools[] = {
    {36u, 128u, "SString 16", nullptr},    {52u, 128u, "SString 32", nullptr},
    {84u, 64u, "SString 64", nullptr},     {148u, 64u, "SString 128", nullptr},
    {276u, 64u, "SString 256", nullptr},   {532u, 32u, "SString 512", nullptr},
    {1044u, 16u, "SString 1024", nullptr}, {2068u, 4u, "SString 2048", nullptr},
};

struct Unload {
    ~Unload() { FreeUnused(); }
} unload;

// The capacity of a buffer from the heap, and its bytes.
std::int32_t LargeCapacity(std::int64_t bytes) {
    return static_cast<std::int32_t>(
        std::min<std::int64_t>((bytes + 511) & ~std::int64_t{511}, SString::MaxBytes));
}
std::size_t LargeSize(std::int32_t capacity) {
    return static_cast<std::size_t>(capacity) + sizeof(SStringData) + 1;
}

SStringData* Fill(void* block, std::int32_t capacity, std::int64_t bytes) {
    const auto length = static_cast<std::int32_t>(bytes);
    auto* const data = ::new (block) SStringData{1, length, capacity, length};
    reinterpret_cast<char*>(data + 1)[length] = 0;
    return data;
}

// Tries once more with the memory that the pools do not use.
template <class Get>
void* WithUnused(std::int64_t bytes, Get get) {
    if (bytes > SString::MaxBytes) ThrowOutOfMemory();
    try {
        return get();
    } catch (const SEOutOfMemory&) {
        FreeUnused();
    }
    return get();
}

// Takes what cannot be had at once; apart from Take, which so needs no stack.
[[gnu::noinline]] SStringData* TakeSlowly(std::int64_t bytes) {
    if (bytes <= kLargestPooled) {
        const int index = Index(static_cast<std::int32_t>(bytes));
        void* const block =
            WithUnused(bytes, [index] { return PoolAccess::Alloc(pools[index].object); });
        return Fill(block, Capacity(index), bytes);
    }
    const std::int32_t capacity = LargeCapacity(bytes);
    return Fill(WithUnused(bytes, [capacity] { return Allocate(LargeSize(capacity)); }), capacity,
                bytes);
}

}  // namespace

SStringData* Take(std::int64_t bytes) {
    if (bytes > kLargestPooled) return TakeSlowly(bytes);
    const int index = Index(static_cast<std::int32_t>(bytes));
    void* const block = PoolAccess::AllocAtOnce(pools[index].object);
    if (block == nullptr) [[unlikely]] return TakeSlowly(bytes);
    return Fill(block, Capacity(index), bytes);
}

SStringData* Enlarge(SStringData* data, std::int64_t bytes) {
    if (data->capacity <= kLargestPooled) {
        SStringData* const fresh = Take(bytes);
        const std::int32_t capacity = fresh->capacity;
        std::memcpy(fresh, data,
                    sizeof(SStringData) + static_cast<std::size_t>(data->bytes) + 1);
        fresh->capacity = capacity;
        Give(data);
        return fresh;
    }
    // Large blocks the heap mostly makes larger without copying them.
    const std::int32_t capacity = LargeCapacity(bytes);
    auto* const grown = static_cast<SStringData*>(WithUnused(
        bytes, [data, capacity] { return Reallocate(data, LargeSize(capacity)); }));
    grown->capacity = capacity;
    return grown;
}

void Give(SStringData* data) noexcept {
    if (data->capacity > kLargestPooled)
        brcore8::Release(data);
    else
        PoolAccess::Free(pools[Index(data->capacity)].object, data);
}

void FreeUnused() noexcept {
    for (auto& pool : pools)
        pool.object.FreeUnused();
}

}  // namespace brcore8::string_pools
