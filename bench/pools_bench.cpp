// SFixedAlloc beside other heaps that several threads may share: pairs, batches in several orders,
// two threads.
#include <brcore8/core/fixed_alloc.h>

#include <dlfcn.h>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <memory_resource>
#include <random>
#include <thread>
#include <vector>

#include "bench.h"

namespace {

using bench::Compete;
using bench::Expect;

// A heap of another library, loaded apart so that it does not take the place of the C library's.
template <class Function>
Function Load(const char* library, const char* name) {
    void* const handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    Expect(handle != nullptr, library);
    void* const function = dlsym(handle, name);
    Expect(function != nullptr, name);
    return reinterpret_cast<Function>(function);
}

class Pool {
public:
    explicit Pool(std::size_t size)
        : pool_(static_cast<std::uint32_t>(size), 64, "bench", nullptr) {}
    void* Take() { return pool_.Alloc(); }
    void Give(void* block) { pool_.Free(block); }

private:
    SFixedAlloc pool_;
};

class Malloc {
public:
    explicit Malloc(std::size_t size) : size_(size) {}
    void* Take() { return std::malloc(size_); }
    void Give(void* block) { std::free(block); }

private:
    std::size_t size_;
};

class Mimalloc {
public:
    explicit Mimalloc(std::size_t size) : size_(size) {}
    void* Take() { return take_(size_); }
    void Give(void* block) { give_(block); }

private:
    static constexpr const char* kLibrary = "libmimalloc.so.2";
    void* (*take_)(std::size_t) = Load<void* (*)(std::size_t)>(kLibrary, "mi_malloc");
    void (*give_)(void*) = Load<void (*)(void*)>(kLibrary, "mi_free");
    std::size_t size_;
};

class Jemalloc {
public:
    explicit Jemalloc(std::size_t size) : size_(size) {}
    void* Take() { return take_(size_, 0); }
    void Give(void* block) { give_(block, size_, 0); }

private:
    static constexpr const char* kLibrary = "libjemalloc.so.2";
    void* (*take_)(std::size_t, int) = Load<void* (*)(std::size_t, int)>(kLibrary, "mallocx");
    void (*give_)(void*, std::size_t, int) = Load<void (*)(void*, std::size_t, int)>(kLibrary,
                                                                                     "sdallocx");
    std::size_t size_;
};

class PmrPool {
public:
    explicit PmrPool(std::size_t size) : size_(size) {}
    void* Take() { return pool_.allocate(size_); }
    void Give(void* block) { pool_.deallocate(block, size_); }

private:
    std::pmr::synchronized_pool_resource pool_;
    std::size_t size_;
};

// ---- One thread ---------------------------------------------------------------------------------

template <class Heap, std::size_t Size>
void Pair(benchmark::State& state) {
    Heap heap(Size);
    for (auto _ : state) {
        void* block = heap.Take();
        benchmark::DoNotOptimize(block);
        heap.Give(block);
    }
}

enum class Order { LastFirst, FirstFirst, Random };

// A thousand blocks taken, then given back in an order.
template <class Heap, std::size_t Size, Order Back>
void Batch(benchmark::State& state) {
    Heap heap(Size);
    std::vector<void*> blocks(1000);
    std::vector<std::size_t> order(blocks.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = Back == Order::LastFirst ? order.size() - 1 - i : i;
    if (Back == Order::Random) std::shuffle(order.begin(), order.end(), std::mt19937(8));
    for (auto _ : state) {
        for (void*& block : blocks) {
            block = heap.Take();
            benchmark::DoNotOptimize(block);
        }
        for (const std::size_t i : order)
            heap.Give(blocks[i]);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(blocks.size()));
}

template <std::size_t Size, Order Back>
bool CompeteBatch(const std::string& name) {
    return Compete("pools/batch_" + name + "/" + std::to_string(Size),
                   {{"brcore8", Batch<Pool, Size, Back>},
                    {"malloc", Batch<Malloc, Size, Back>},
                    {"mimalloc", Batch<Mimalloc, Size, Back>},
                    {"jemalloc", Batch<Jemalloc, Size, Back>},
                    {"pmr", Batch<PmrPool, Size, Back>}});
}

// ---- Two threads --------------------------------------------------------------------------------

// What both threads read, far from what either writes on its stack.
template <class Heap>
struct alignas(128) Shared {
    explicit Shared(std::size_t size) : heap(size) {}
    Heap heap;
};

template <class Heap, std::size_t Blocks>
void Round(Heap& heap) {
    void* blocks[Blocks];
    for (void*& block : blocks) {
        block = heap.Take();
        benchmark::DoNotOptimize(block);
    }
    for (void* block : blocks)
        heap.Give(block);
}

// The other thread does the same on the same heap all the while.
template <class Heap, std::size_t Size, std::size_t Blocks>
void TwoThreads(benchmark::State& state) {
    const auto shared = std::make_unique<Shared<Heap>>(Size);
    std::jthread other([&heap = shared->heap](std::stop_token stop) {
        while (!stop.stop_requested())
            Round<Heap, Blocks>(heap);
    });
    for (auto _ : state)
        Round<Heap, Blocks>(shared->heap);
}

template <std::size_t Size, std::size_t Blocks>
bool CompeteThreads(const std::string& name) {
    return Compete("pools/two_threads_" + name + "/" + std::to_string(Size),
                   {{"brcore8", TwoThreads<Pool, Size, Blocks>},
                    {"malloc", TwoThreads<Malloc, Size, Blocks>},
                    {"mimalloc", TwoThreads<Mimalloc, Size, Blocks>},
                    {"jemalloc", TwoThreads<Jemalloc, Size, Blocks>}});
}

template <std::size_t Size>
bool CompeteAll() {
    Compete("pools/pair/" + std::to_string(Size), {{"brcore8", Pair<Pool, Size>},
                                                   {"malloc", Pair<Malloc, Size>},
                                                   {"mimalloc", Pair<Mimalloc, Size>},
                                                   {"jemalloc", Pair<Jemalloc, Size>},
                                                   {"pmr", Pair<PmrPool, Size>}});
    CompeteBatch<Size, Order::LastFirst>("lifo");
    CompeteBatch<Size, Order::FirstFirst>("fifo");
    CompeteBatch<Size, Order::Random>("random");
    CompeteThreads<Size, 1>("pair");
    return CompeteThreads<Size, 100>("100");
}

[[maybe_unused]] const bool registered[] = {CompeteAll<36>(), CompeteAll<532>()};

}  // namespace
