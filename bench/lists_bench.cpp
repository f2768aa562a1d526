// Lists of objects beside the standard library's list of values and Boost's intrusive one.
#include <brcore8/containers/dlist.h>

#include <boost/intrusive/list.hpp>
#include <algorithm>
#include <list>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench.h"

namespace {

using bench::Compete;

constexpr int kCount = 100000;

// The numbers below kCount, in random order or in their own.
std::vector<int> Numbers(bool random) {
    std::vector<int> numbers(kCount);
    std::iota(numbers.begin(), numbers.end(), 0);
    if (random) std::shuffle(numbers.begin(), numbers.end(), std::mt19937(8));
    return numbers;
}

struct Ours {
    struct Item : SDListItem {
        explicit Item(int number) : key(number) {}
        int key;
    };
    SDList list;
    void Add(int number) { list.AddAtTail(new Item(number)); }
    void Sort() {
        list.Sort([](SDListItem* left, SDListItem* right) {
            const int a = static_cast<Item*>(left)->key, b = static_cast<Item*>(right)->key;
            return (a > b) - (a < b);
        });
    }
    void Clear() { list.Done(); }
    int First() { return static_cast<Item*>(list.GetAt(0))->key; }
};

struct Standard {
    std::list<int> list;
    void Add(int number) { list.push_back(number); }
    void Sort() { list.sort(); }
    void Clear() { list.clear(); }
    int First() { return list.front(); }
};

// Objects with a virtual destructor, as an SDList's are.
struct Boost {
    struct Item : boost::intrusive::list_base_hook<> {
        explicit Item(int number) : key(number) {}
        virtual ~Item() = default;
        int key;
        bool operator<(const Item& other) const { return key < other.key; }
    };
    boost::intrusive::list<Item> list;
    ~Boost() { Clear(); }
    void Add(int number) { list.push_back(*new Item(number)); }
    void Sort() { list.sort(); }
    void Clear() {
        list.clear_and_dispose([](Item* item) { delete item; });
    }
    int First() { return list.front().key; }
};

// The filling does not count.
template <class List, bool Random>
void Sort(benchmark::State& state) {
    const std::vector<int> numbers = Numbers(Random);
    for (auto _ : state) {
        state.PauseTiming();
        {
            List list;
            for (const int number : numbers)
                list.Add(number);
            state.ResumeTiming();
            list.Sort();
            state.PauseTiming();
            bench::Expect(list.First() == 0, "order");
        }
        state.ResumeTiming();
    }
}

template <class List>
void FillClear(benchmark::State& state) {
    List list;
    for (auto _ : state) {
        for (int i = 0; i < kCount; ++i)
            list.Add(i);
        benchmark::DoNotOptimize(list);
        list.Clear();
    }
}

[[maybe_unused]] const bool lists[] = {
    Compete("containers/list_sort_random_100k", {{"brcore8", Sort<Ours, true>},
                                                 {"std::list", Sort<Standard, true>},
                                                 {"boost::intrusive::list", Sort<Boost, true>}}),
    Compete("containers/list_sort_sorted_100k", {{"brcore8", Sort<Ours, false>},
                                                 {"std::list", Sort<Standard, false>},
                                                 {"boost::intrusive::list", Sort<Boost, false>}}),
    Compete("containers/list_fill_clear_100k", {{"brcore8", FillClear<Ours>},
                                                {"std::list", FillClear<Standard>},
                                                {"boost::intrusive::list", FillClear<Boost>}}),
};

}  // namespace
