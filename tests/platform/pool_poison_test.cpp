// AddressSanitizer sees the use of a pool's block that is free, although the heap does not know.
#include <brcore8/core/fixed_alloc.h>
#include <gtest/gtest.h>

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

}  // namespace
