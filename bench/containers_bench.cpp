// The ordered maps, tables and lists beside the standard library, Qt, Abseil and Boost. The maps
// run at three sizes, so that their rows show how costs grow too.
#include <brcore8/containers/dlist.h>
#include <brcore8/containers/map.h>
#include <brcore8/containers/table.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_map.h>
#include <brcore8/strings/string_table.h>

#include <absl/container/btree_map.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <algorithm>
#include <boost/intrusive/set.hpp>
#include <cstdint>
#include <deque>
#include <list>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "bench.h"

namespace {

using bench::Compete;

// Even numbers, so that the odd ones are missing.
int Scattered(int i) {
    return static_cast<int>(static_cast<std::uint32_t>(i) * 2654435761u & 0x7FFFFFFE);
}

template <class Key>
Key KeyOf(int number) {
    if constexpr (std::is_same_v<Key, int>)
        return number;
    else if constexpr (std::is_same_v<Key, QString>)
        return QString::fromStdString("key of the part " + std::to_string(number));
    else
        return Key(std::string_view("key of the part " + std::to_string(number)));
}

// Keys in a random order, another one for each `seed`: what is looked up comes neither in the order
// in which it lies in memory nor in one that the processor could learn.
template <class Key>
const std::vector<Key>& Keys(int count, int offset = 0, unsigned seed = 1) {
    static std::map<std::tuple<int, int, unsigned>, std::vector<Key>> made;
    std::vector<Key>& keys = made[{count, offset, seed}];
    if (keys.empty()) {
        for (int i = 0; i < count; ++i)
            keys.push_back(KeyOf<Key>(Scattered(i) + offset));
        std::shuffle(keys.begin(), keys.end(), std::mt19937(seed));
    }
    return keys;
}

// ---- What each map calls its operations ---------------------------------------------------------

template <class Map, class Key>
struct Ours {
    using KeyType = Key;
    Map map;
    void Add(const Key& key, int value) { map.Add(key, value); }
    bool Has(const Key& key) const { return map.Contains(key); }
    void Remove(const Key& key) { map.Remove(key); }
    int Sum() const {
        int sum = 0;
        for (const auto& [key, value] : map)
            sum += value;
        return sum;
    }
};
using OurInts = Ours<SMap<int, int>, int>;
struct OurStrings : Ours<SStringMap, SString> {
    void Add(const SString& key, int) { map.Add(key, key); }
    int Sum() const {
        int sum = 0;
        for (const auto& [key, value] : map)
            sum += value.LengthByte();
        return sum;
    }
};

template <class Map, class Key>
struct Theirs {
    using KeyType = Key;
    Map map;
    void Add(const Key& key, int value) {
        if constexpr (std::is_same_v<Key, int>)
            map.insert({key, value});
        else
            map.insert({key, key});
    }
    bool Has(const Key& key) const { return map.find(key) != map.end(); }
    void Remove(const Key& key) { map.erase(key); }
    int Sum() const {
        int sum = 0;
        for (const auto& [key, value] : map)
            if constexpr (std::is_same_v<Key, int>)
                sum += value;
            else
                sum += static_cast<int>(value.size());
        return sum;
    }
};
template <class Key, class Value>
struct Qts {
    using KeyType = Key;
    QMap<Key, Value> map;
    void Add(const Key& key, int value) {
        if constexpr (std::is_same_v<Key, int>)
            map.insert(key, value);
        else
            map.insert(key, key);
    }
    bool Has(const Key& key) const { return map.contains(key); }
    void Remove(const Key& key) { map.remove(key); }
    int Sum() const {
        int sum = 0;
        for (auto at = map.begin(); at != map.end(); ++at)
            if constexpr (std::is_same_v<Key, int>)
                sum += at.value();
            else
                sum += at.value().size();
        return sum;
    }
};

// ---- Maps ---------------------------------------------------------------------------------------

template <class Map, int Count>
void Fill(Map& map) {
    for (const auto& key : Keys<typename Map::KeyType>(Count))
        map.Add(key, 1);
}
template <class Map, int Count>
void Insert(benchmark::State& state) {
    Keys<typename Map::KeyType>(Count);
    for (auto _ : state) {
        Map map;
        Fill<Map, Count>(map);
        benchmark::DoNotOptimize(map);
    }
}
template <class Map, int Count, int Offset>
void Find(benchmark::State& state) {
    const auto& keys = Keys<typename Map::KeyType>(Count, Offset, 2);
    Map map;
    Fill<Map, Count>(map);
    for (auto _ : state) {
        int found = 0;
        for (const auto& key : keys)
            found += map.Has(key);
        bench::Expect(found == (Offset == 0 ? Count : 0), "keys");
    }
}
template <class Map, int Count>
void Hit(benchmark::State& state) {
    Find<Map, Count, 0>(state);
}
template <class Map, int Count>
void Miss(benchmark::State& state) {
    Find<Map, Count, 1>(state);
}
template <class Map, int Count>
void Iterate(benchmark::State& state) {
    Map map;
    Fill<Map, Count>(map);
    for (auto _ : state)
        benchmark::DoNotOptimize(map.Sum());
}
// The filling does not count.
template <class Map, int Count>
void Erase(benchmark::State& state) {
    Keys<typename Map::KeyType>(Count, 0, 2);
    for (auto _ : state) {
        state.PauseTiming();
        Map map;
        Fill<Map, Count>(map);
        state.ResumeTiming();
        for (const auto& key : Keys<typename Map::KeyType>(Count, 0, 2))
            map.Remove(key);
        benchmark::DoNotOptimize(map);
    }
}

// Nodes that the program owns: no memory is managed, only links.
struct BoostStrings {
    using KeyType = std::string;
    struct Node : boost::intrusive::set_base_hook<> {
        std::string key, value;
        bool operator<(const Node& other) const { return key < other.key; }
    };
    std::deque<Node> nodes;
    boost::intrusive::set<Node> set;
    void Add(const std::string& key, int) {
        Node& node = nodes.emplace_back();
        node.key = node.value = key;
        set.insert(node);
    }
    int Sum() const {
        int sum = 0;
        for (const Node& node : set)
            sum += static_cast<int>(node.value.size());
        return sum;
    }
    ~BoostStrings() { set.clear(); }
};

template <int Count>
bool CompeteIteration() {
    return Compete("containers/map_iterate_string/" + std::to_string(Count),
                   {{"boost::intrusive::set", Iterate<BoostStrings, Count>}});
}

template <int Count, class Mine, class Standard, class Btree, class Qt>
bool CompeteMaps(const std::string& key) {
    const std::string end = "_" + key + "/" + std::to_string(Count);
    Compete("containers/map_insert" + end, {{"brcore8", Insert<Mine, Count>},
                                            {"std::map", Insert<Standard, Count>},
                                            {"absl::btree_map", Insert<Btree, Count>},
                                            {"QMap", Insert<Qt, Count>}});
    Compete("containers/map_find_hit" + end, {{"brcore8", Hit<Mine, Count>},
                                              {"std::map", Hit<Standard, Count>},
                                              {"absl::btree_map", Hit<Btree, Count>},
                                              {"QMap", Hit<Qt, Count>}});
    Compete("containers/map_find_miss" + end, {{"brcore8", Miss<Mine, Count>},
                                               {"std::map", Miss<Standard, Count>},
                                               {"absl::btree_map", Miss<Btree, Count>},
                                               {"QMap", Miss<Qt, Count>}});
    Compete("containers/map_iterate" + end, {{"brcore8", Iterate<Mine, Count>},
                                             {"std::map", Iterate<Standard, Count>},
                                             {"absl::btree_map", Iterate<Btree, Count>},
                                             {"QMap", Iterate<Qt, Count>}});
    return Compete("containers/map_erase" + end, {{"brcore8", Erase<Mine, Count>},
                                                  {"std::map", Erase<Standard, Count>},
                                                  {"absl::btree_map", Erase<Btree, Count>},
                                                  {"QMap", Erase<Qt, Count>}});
}

template <int Count>
bool CompeteBoth() {
    CompeteIteration<Count>();
    CompeteMaps<Count, OurInts, Theirs<std::map<int, int>, int>,
                Theirs<absl::btree_map<int, int>, int>, Qts<int, int>>("int");
    return CompeteMaps<Count, OurStrings, Theirs<std::map<std::string, std::string>, std::string>,
                       Theirs<absl::btree_map<std::string, std::string>, std::string>,
                       Qts<QString, QString>>("string");
}

[[maybe_unused]] const bool maps[] = {CompeteBoth<1000>(), CompeteBoth<30000>(),
                                      CompeteBoth<1000000>()};

// ---- Tables -------------------------------------------------------------------------------------

struct Triple {
    long a, b, c;
};

template <class Table>
constexpr bool kIsOurs = std::is_base_of_v<__STable, Table>;

template <class Table, class Element>
void AddTo(Table& table, int at, const Element& element) {
    if constexpr (kIsOurs<Table>)
        at < 0 ? table.Add(element) : table.Insert(at, element);
    else if (at < 0)
        table.push_back(element);
    else
        table.insert(table.begin() + at, element);
}
template <class Table>
void RemoveFirst(Table& table) {
    if constexpr (kIsOurs<Table>)
        table.Remove(0);
    else
        table.erase(table.begin());
}

template <class Element>
Element Sample() {
    if constexpr (std::is_same_v<Element, Triple>)
        return {1, 2, 3};
    else
        return Element("a text of twenty-four b.");
}

template <class Table, class Element>
void Append(benchmark::State& state) {
    const Element element = Sample<Element>();
    for (auto _ : state) {
        Table table;
        for (int i = 0; i < 1000000; ++i)
            AddTo(table, -1, element);
        benchmark::DoNotOptimize(table);
    }
}
template <class Table, class Element>
void InsertFront(benchmark::State& state) {
    const Element element = Sample<Element>();
    for (auto _ : state) {
        Table table;
        for (int i = 0; i < 10000; ++i)
            AddTo(table, 0, element);
        benchmark::DoNotOptimize(table);
    }
}
template <class Table, class Element>
void RemoveFront(benchmark::State& state) {
    const Element element = Sample<Element>();
    for (auto _ : state) {
        state.PauseTiming();
        Table table;
        for (int i = 0; i < 10000; ++i)
            AddTo(table, -1, element);
        state.ResumeTiming();
        for (int i = 0; i < 10000; ++i)
            RemoveFirst(table);
        benchmark::DoNotOptimize(table);
    }
}

[[maybe_unused]] const bool tables[] = {
    Compete("containers/table_append_1m_triples",
            {{"brcore8", Append<STable<Triple>, Triple>},
             {"std::vector", Append<std::vector<Triple>, Triple>},
             {"QVector", Append<QVector<Triple>, Triple>}}),
    Compete("containers/table_insert_front_10k_triples",
            {{"brcore8", InsertFront<STable<Triple>, Triple>},
             {"std::vector", InsertFront<std::vector<Triple>, Triple>},
             {"QVector", InsertFront<QVector<Triple>, Triple>}}),
    Compete("containers/table_remove_front_10k_triples",
            {{"brcore8", RemoveFront<STable<Triple>, Triple>},
             {"std::vector", RemoveFront<std::vector<Triple>, Triple>}}),
    Compete("containers/table_append_1m_strings",
            {{"brcore8", Append<SStringTable, SString>},
             {"std::vector", Append<std::vector<std::string>, std::string>},
             {"QVector", Append<QVector<QString>, QString>}}),
    Compete("containers/table_insert_front_10k_strings",
            {{"brcore8", InsertFront<SStringTable, SString>},
             {"std::vector", InsertFront<std::vector<std::string>, std::string>}}),
    Compete("containers/table_remove_front_10k_strings",
            {{"brcore8", RemoveFront<SStringTable, SString>},
             {"std::vector", RemoveFront<std::vector<std::string>, std::string>}}),
};

}  // namespace
