// AddressSanitizer sees the use of a pool's block that is free, although the heap does not know;
// debug builds see what is given back wrongly.
#include <brcore8/core/fixed_alloc.h>
#include <gtest/gtest.h>

#include "core/pool_check.h"
#include "platform/sanitizer.h"

namespace {

using brcore8::IsPoisoned;
using brcore8::kPoisons;

void ExpectPoisoned(const void* block, bool poisoned) {
    const char* const bytes = static_cast<const char*>(block);
    EXPECT_EQ(IsPoisoned(bytes), poisoned);
    EXPECT_EQ(IsPoisoned(bytes + 23), poisoned);
}

TEST(PoolPoison, CoversFreeBlocksOnly) {
    SFixedAlloc pool(24, 4, nullptr, nullptr);
    char* const first = static_cast<char*>(pool.Alloc());
    void* const second = pool.Alloc();
    ExpectPoisoned(first, false);
    ExpectPoisoned(second, false);
    ExpectPoisoned(first + 2 * 24, kPoisons);
    pool.Free(second);
    ExpectPoisoned(second, kPoisons);
    pool.OnIdle(1);
    (void)pool.GetStats();
    ExpectPoisoned(first, false);
    ExpectPoisoned(second, kPoisons);
    ExpectPoisoned(first + 3 * 24, kPoisons);
    pool.Free(first);
    pool.OnIdle(1);
    // The heap has the chunk back and may have it used already; a new one is usable.
    ExpectPoisoned(pool.Alloc(), false);
}

#ifndef NDEBUG
TEST(PoolCheckDeathTest, EndsTheProgramThatGivesBackWrongly) {
    SFixedAlloc pool(24, 4, nullptr, nullptr), other(24, 4, nullptr, nullptr);
    char* const block = static_cast<char*>(pool.Alloc());
    void* const freed = pool.Alloc();
    pool.Free(freed);
    other.Free(other.Alloc());
    char local[24];
    const struct {
        const char* name;
        SFixedAlloc& pool;
        void* block;
        const char* said;
    } rows[] = {
        {"twice", pool, freed, "brcore8: a pool is given a block twice"},
        {"never handed out", pool, block + 72, "brcore8: a pool is given a block twice"},
        {"to another pool", other, block, "brcore8: a pool is given what is no block of it"},
        {"its middle", pool, block + 8, "brcore8: a pool is given what is no block of it"},
        {"behind the chunk", pool, block + 96, "brcore8: a pool is given what is no block of it"},
        {"of the stack", pool, local, "brcore8: a pool is given what is no block of it"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_DEATH(row.pool.Free(row.block), row.said);
    }
    other.FreeUnused();
    pool.Free(block);
    ASSERT_EQ(pool.FreeUnused(), 1);
    EXPECT_DEATH(pool.Free(block), "no block of it") << "its chunk is gone";
}
#endif

}  // namespace
