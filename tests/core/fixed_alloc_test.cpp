#include <brcore8/core/exception.h>
#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/pool_resource.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <future>
#include <list>
#include <memory>
#include <memory_resource>
#include <new>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include "support/failing_allocator.h"

namespace {

std::vector<void*> Take(SFixedAlloc& pool, std::size_t count) {
    std::vector<void*> blocks(count);
    for (void*& block : blocks)
        block = pool.Alloc();
    return blocks;
}

void Give(SFixedAlloc& pool, const std::vector<void*>& blocks) {
    for (void* block : blocks)
        pool.Free(block);
}

void ExpectStats(const SFixedAlloc& pool, std::size_t chunks, std::size_t live, std::size_t free) {
    const SFixedAllocStats stats = pool.GetStats();
    EXPECT_EQ(stats.chunks, chunks);
    EXPECT_EQ(stats.live, live);
    EXPECT_EQ(stats.free, free);
}

TEST(FixedAlloc, TakesAChunkWhenTheLastIsUsedUp) {
    SFixedAlloc pool(24, 32, nullptr, nullptr);
    ExpectStats(pool, 0, 0, 0);
    std::vector<void*> blocks = Take(pool, 1);
    ExpectStats(pool, 1, 1, 31);
    for (void* block : Take(pool, 31))
        blocks.push_back(block);
    ExpectStats(pool, 1, 32, 0);
    for (std::size_t i = 1; i < blocks.size(); ++i)
        EXPECT_EQ(static_cast<char*>(blocks[i]) - static_cast<char*>(blocks[i - 1]), 24) << i;
    blocks.push_back(pool.Alloc());
    ExpectStats(pool, 2, 33, 31);
    pool.Free(blocks[3]);
    pool.Free(blocks[7]);
    EXPECT_EQ(pool.Alloc(), blocks[7]);
    EXPECT_EQ(pool.Alloc(), blocks[3]);
    pool.Free(nullptr);
    ExpectStats(pool, 2, 33, 31);
}

TEST(FixedAlloc, RoundsBlocksUp) {
    constexpr std::uint32_t kWord = sizeof(void*);
    const struct {
        const char* name;
        std::uint32_t asked, got;
    } rows[] = {
        {"nothing", 0, kWord},
        {"less than a pointer", 1, kWord},
        {"a pointer", kWord, kWord},
        {"not a multiple", 7, 8},
        {"a multiple", 24, 24},
        {"string blocks of 16", 36, kWord == 8 ? 40 : 36},
        {"string blocks of 2048", 2068, kWord == 8 ? 2072 : 2068},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SFixedAlloc pool(row.asked, 3, "rounded", nullptr);
        EXPECT_EQ(pool.GetAllocSize(), row.got);
        for (void* block : Take(pool, 7)) {
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % kWord, 0u);
            std::memset(block, 0xAA, row.got);
        }
        EXPECT_EQ(pool.FreeAll(), 3);
    }
}

TEST(FixedAlloc, RefusesWhatNoHeapHas) {
    const struct {
        const char* name;
        std::uint32_t size, count;
    } rows[] = {
        {"product beyond 32 bits", 0x10000, 0x10001},
        {"product that wraps to a small chunk", 0x80000000, 2},
        {"largest size", 0xFFFFFFFF, 1},
        {"both largest", 0xFFFFFFFF, 0xFFFFFFFF},
        {"just beyond a signed size", 0x10000, 0x8000},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SFixedAlloc pool(row.size, row.count, nullptr, nullptr);
        EXPECT_THROW((void)pool.Alloc(), SEOutOfMemory);
        EXPECT_THROW((void)pool.Alloc(), SEOutOfMemory);  // the lock was given back
        ExpectStats(pool, 0, 0, 0);
    }
    SFixedAlloc countless(24, 0, nullptr, nullptr);
    Give(countless, Take(countless, 2));
    ExpectStats(countless, 2, 0, 2);
}

TEST(FixedAlloc, StaysWholeWhenAChunkIsRefused) {
    SFixedAlloc pool(24, 4, nullptr, nullptr);
    const std::vector<void*> blocks = Take(pool, 4);
    {
        FailNthAllocation fail(1);
        EXPECT_THROW((void)pool.Alloc(), SEOutOfMemory);
        pool.Free(blocks[0]);
        EXPECT_EQ(pool.Alloc(), blocks[0]);
        ExpectStats(pool, 1, 4, 0);
    }
    (void)pool.Alloc();
    ExpectStats(pool, 2, 5, 3);
}

TEST(FixedAlloc, FreeUnusedGivesBackWholeChunksOnly) {
    const struct {
        const char* name;
        std::vector<int> kept;  // of blocks 0 to 11 in three chunks of four
        long released;
    } rows[] = {
        {"none in use", {}, 3},
        {"one in the oldest chunk", {0}, 2},
        {"one in the middle chunk", {7}, 2},
        {"one in the newest chunk", {11}, 2},
        {"one in each chunk", {3, 4, 9}, 0},
        {"one chunk full", {4, 5, 6, 7}, 2},
    };
    std::mt19937 random(20);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SFixedAlloc pool(24, 4, nullptr, nullptr);
        const std::vector<void*> blocks = Take(pool, 12);
        std::vector<void*> freed;
        for (int i = 0; i < 12; ++i) {
            if (std::find(row.kept.begin(), row.kept.end(), i) == row.kept.end())
                freed.push_back(blocks[static_cast<std::size_t>(i)]);
        }
        std::shuffle(freed.begin(), freed.end(), random);
        Give(pool, freed);
        const FailNthAllocation noMemory(1, true);
        EXPECT_EQ(pool.FreeUnused(), row.released);
        const auto chunks = static_cast<std::size_t>(3 - row.released);
        ExpectStats(pool, chunks, row.kept.size(), chunks * 4 - row.kept.size());
        EXPECT_EQ(pool.FreeUnused(), 0);
        std::vector<void*> rest = Take(pool, chunks * 4 - row.kept.size());
        std::sort(rest.begin(), rest.end());
        EXPECT_EQ(std::unique(rest.begin(), rest.end()), rest.end());
        for (const int i : row.kept)
            EXPECT_FALSE(
                std::binary_search(rest.begin(), rest.end(), blocks[static_cast<std::size_t>(i)]));
        EXPECT_THROW((void)pool.Alloc(), SEOutOfMemory);
    }
}

// Seeking each block's chunk takes minutes here.
TEST(FixedAlloc, ReclaimsAMillionBlocksOfTenThousandChunks) {
    SFixedAlloc pool(16, 100, nullptr, nullptr);
    std::vector<void*> blocks = Take(pool, 1000000);
    std::shuffle(blocks.begin(), blocks.end(), std::mt19937(7));
    void* const kept = blocks.back();
    blocks.pop_back();
    Give(pool, blocks);
    EXPECT_EQ(pool.FreeUnused(), 9999);
    ExpectStats(pool, 1, 1, 99);
    pool.Free(kept);
    EXPECT_EQ(pool.FreeUnused(), 1);
}

TEST(FixedAlloc, IdleReclaimsWhenItPays) {
    SFixedAlloc pool(24, 4, nullptr, nullptr);
    EXPECT_EQ(pool.OnIdle(1), 0);
    Give(pool, Take(pool, 8));
    EXPECT_EQ(pool.OnIdle(0), 0);
    ExpectStats(pool, 2, 0, 8);  // the first reclamation must be forced
    EXPECT_EQ(pool.OnIdle(1), 0);
    ExpectStats(pool, 0, 0, 0);

    // From now on a chunk's worth of frees is enough.
    const std::vector<void*> blocks = Take(pool, 8);
    Give(pool, {blocks[0], blocks[1], blocks[2]});
    pool.OnIdle(0);
    ExpectStats(pool, 2, 5, 3);
    pool.Free(blocks[3]);
    pool.OnIdle(0);
    ExpectStats(pool, 1, 4, 0);
    pool.OnIdle(1);  // nothing freed since
    pool.Free(blocks[4]);
    pool.OnIdle(1);
    ExpectStats(pool, 1, 3, 1);

    // FreeUnused with nothing freed forgets the threshold.
    EXPECT_EQ(pool.FreeUnused(), 0);
    Give(pool, {blocks[5], blocks[6], blocks[7]});
    (void)pool.Alloc();
    pool.OnIdle(0);
    ExpectStats(pool, 1, 1, 3);
}

TEST(FixedAlloc, FreeAllLeavesItUsable) {
    SFixedAlloc pool(24, 4, nullptr, nullptr);
    EXPECT_EQ(pool.FreeAll(), 0);
    (void)Take(pool, 9);
    EXPECT_EQ(pool.FreeAll(), 3);
    ExpectStats(pool, 0, 0, 0);
    Give(pool, Take(pool, 2));
    EXPECT_EQ(pool.FreeAll(), 1);
}

TEST(FixedAlloc, CopiesTakeTheSizesOnly) {
    SIdleConsumerList list;
    SFixedAlloc pool(24, 4, "original", &list);
    (void)pool.Alloc();
    const SFixedAlloc copy(pool);
    EXPECT_EQ(copy.GetAllocSize(), 24u);
    ExpectStats(copy, 0, 0, 0);
    EXPECT_EQ(list.GetCount(), 1);
}

TEST(FixedAlloc, ObjectPoolsShareOneIdleQueue) {
    SIdleConsumerList& queue = *SObjectFixedAllocatorBase::IdleQueue();
    const int before = queue.GetCount();
    {
        SIdleConsumerList own;
        SObjectFixedAllocatorBase pool(24, 4), other(24, 4, "other", &own);
        EXPECT_EQ(queue.GetCount(), before + 1);
        EXPECT_EQ(own.GetCount(), 1);
        Give(pool, Take(pool, 4));
        EXPECT_EQ(queue.OnIdleAll(1), 0);
        ExpectStats(pool, 0, 0, 0);
        const SObjectFixedAllocatorBase copy(pool);
        EXPECT_EQ(queue.GetCount(), before + 1);
    }
    EXPECT_EQ(queue.GetCount(), before);
}

// Every block keeps the pattern of its owner while others come, go and are reclaimed.
void Churn(SFixedAlloc& pool, unsigned seed, int rounds) {
    std::mt19937 random(seed);
    std::vector<std::pair<unsigned char*, unsigned char>> mine;
    const std::size_t size = pool.GetAllocSize();
    for (int round = 0; round < rounds; ++round) {
        if (mine.empty() || random() % 100 < (round / 500 % 2 == 0 ? 60u : 40u)) {
            auto* block = static_cast<unsigned char*>(pool.Alloc());
            const auto pattern = static_cast<unsigned char>(random());
            std::memset(block, pattern, size);
            mine.emplace_back(block, pattern);
        } else {
            std::swap(mine[random() % mine.size()], mine.back());
            const auto [block, pattern] = mine.back();
            mine.pop_back();
            ASSERT_EQ(std::count(block, block + size, pattern), static_cast<long>(size));
            pool.Free(block);
        }
        if (random() % 64 == 0) pool.OnIdle(static_cast<int>(random() % 2));
    }
    for (const auto& [block, pattern] : mine) {
        ASSERT_EQ(std::count(block, block + size, pattern), static_cast<long>(size));
        pool.Free(block);
    }
}

TEST(FixedAlloc, KeepsContentThroughRandomUse) {
    for (const unsigned seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        SFixedAlloc pool(20, 7, nullptr, nullptr);
        Churn(pool, seed, 20000);
        EXPECT_EQ(pool.GetStats().live, 0u);
        pool.OnIdle(1);
        pool.FreeUnused();
        ExpectStats(pool, 0, 0, 0);
    }
}

TEST(PoolResource, ServesWhatFitsABlock) {
    SFixedAlloc pool(48, 16, nullptr, nullptr), second(48, 16, nullptr, nullptr);
    std::pmr::monotonic_buffer_resource upstream;
    SPoolResource resource(pool, &upstream), same(pool, &upstream), other(second, &upstream);
    EXPECT_TRUE(resource == same);
    EXPECT_FALSE(resource == other);
    {
        std::pmr::list<int> numbers(100, 7, &resource);
        EXPECT_EQ(pool.GetStats().live, 100u);
        numbers.resize(40);
        EXPECT_EQ(pool.GetStats().live, 40u);
        const std::pmr::vector<char> large(49, 'x', &resource);
        void* const aligned = resource.allocate(16, 32);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(aligned) % 32, 0u);
        resource.deallocate(aligned, 16, 32);
        EXPECT_EQ(pool.GetStats().live, 40u) << "too large or too aligned for a block";
    }
    EXPECT_EQ(pool.GetStats().live, 0u);
    pool.FreeAll();
    const FailNthAllocation refused(1);
    EXPECT_THROW(static_cast<void>(resource.allocate(48, alignof(void*))), std::bad_alloc);
}

// A thread that takes blocks and gives them back, then waits, keeping some for itself.
class Keeper {
public:
    Keeper(SFixedAlloc& pool, std::size_t blocks)
        : thread_([this, &pool, blocks] {
              Give(pool, Take(pool, blocks));
              ready_.set_value();
              end_.get_future().wait();
          }) {
        ready_.get_future().wait();
    }
    ~Keeper() {
        end_.set_value();
        thread_.join();
    }

private:
    // An atomic's wait may miss its notification with the run-time of MinGW-w64.
    std::promise<void> ready_, end_;
    std::thread thread_;
};

TEST(FixedAllocThreads, TakeBackWhatOthersKeep) {
    SFixedAlloc pool(24, 16, nullptr, nullptr);
    for (const bool ended : {false, true}) {
        SCOPED_TRACE(ended);
        auto keeper = std::make_unique<Keeper>(pool, 100);
        if (ended) keeper.reset();
        ExpectStats(pool, 7, 0, 112);
        // Each thread is handed first what it gave back last.
        const std::vector<void*> mine = Take(pool, 3);
        Give(pool, mine);
        EXPECT_EQ(pool.Alloc(), mine[2]);
        EXPECT_EQ(pool.Alloc(), mine[1]);
        pool.Free(mine[1]);
        pool.OnIdle(1);
        EXPECT_EQ(pool.GetStats().live, 1u);
        EXPECT_EQ(pool.GetStats().chunks, 1u);
        pool.Free(mine[2]);
        EXPECT_EQ(pool.FreeUnused(), 1);
        const Keeper another(pool, 40);
        EXPECT_EQ(pool.FreeAll(), 3);
        ExpectStats(pool, 0, 0, 0);
    }
}

TEST(FixedAllocThreads, ServeFromWhatOthersKeepWithoutMemory) {
    SFixedAlloc pool(24, 4, nullptr, nullptr);
    const Keeper keeper(pool, 4);
    const FailNthAllocation refused(1, true);
    (void)Take(pool, 4);
    EXPECT_THROW((void)pool.Alloc(), SEOutOfMemory);
    ExpectStats(pool, 1, 4, 0);
}

TEST(FixedAllocThreads, ShareAPool) {
    SFixedAlloc pool(24, 16, nullptr, nullptr);
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < 16; ++seed)
        threads.emplace_back([&pool, seed] { Churn(pool, seed, 3000); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(pool.GetStats().live, 0u);
}

}  // namespace
