// Pools and containers beside the heap and the standard library.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <map>
#include <vector>

namespace {

void PoolPair(benchmark::State& state) {
    SFixedAlloc pool(static_cast<unsigned>(state.range(0)), 64, "bench", nullptr);
    for (auto _ : state) {
        void* block = pool.Alloc();
        benchmark::DoNotOptimize(block);
        pool.Free(block);
    }
}
BENCHMARK(PoolPair)->Name("pools/pair/SFixedAlloc")->Arg(36)->Arg(532);

void HeapPair(benchmark::State& state) {
    for (auto _ : state) {
        void* block = std::malloc(static_cast<std::size_t>(state.range(0)));
        benchmark::DoNotOptimize(block);
        std::free(block);
    }
}
BENCHMARK(HeapPair)->Name("pools/pair/malloc")->Arg(36)->Arg(532);

// Keys in an order that is neither sorted nor random to the cache alone.
long Scattered(std::int64_t i) {
    return static_cast<long>(static_cast<std::uint32_t>(i) * 2654435761u);
}

void MapInsertFind(benchmark::State& state) {
    for (auto _ : state) {
        STreeMap<long, long> map;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            map.Add(Scattered(i), static_cast<long>(i));
        for (std::int64_t i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(map.Find(Scattered(i)));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(MapInsertFind)->Name("containers/map_insert_find/STreeMap")->Range(1000, 100000);

void MapInsertFindStd(benchmark::State& state) {
    for (auto _ : state) {
        std::map<long, long> map;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            map.insert_or_assign(Scattered(i), static_cast<long>(i));
        for (std::int64_t i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(map.find(Scattered(i)));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(MapInsertFindStd)->Name("containers/map_insert_find/std")->Range(1000, 100000);

struct Triple {
    long a, b, c;
};

void TableAppend(benchmark::State& state) {
    for (auto _ : state) {
        STable<Triple> table;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            table.Add(Triple{1, 2, 3});
        benchmark::DoNotOptimize(table);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(TableAppend)->Name("containers/table_append_triples/STable")->Range(1000, 1000000);

void TableAppendStd(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<Triple> table;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            table.push_back(Triple{1, 2, 3});
        benchmark::DoNotOptimize(table);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(TableAppendStd)->Name("containers/table_append_triples/std")->Range(1000, 1000000);

}  // namespace
