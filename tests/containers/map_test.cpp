#include <brcore8/containers/map.h>
#include <brcore8/core/exception.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "containers/support.h"
#include "support/failing_allocator.h"

namespace {

template <class Map>
std::string TextOf(const Map& map) {
    EXPECT_TRUE(map.AssertValid());
    std::string text;
    for (const auto& [key, value] : map)
        text += std::to_string(int{key}) + "=" + std::to_string(int{value}) + " ";
    return text;
}

// The same test for both maps: what iteration yields is the one difference.
template <class Map>
class MapTest : public testing::Test {
protected:
    // Pairs in the order in which they came, as this map yields them.
    static std::string Ordered(std::vector<std::pair<int, int>> pairs) {
        if constexpr (std::is_base_of_v<SMap<int, int>, Map>) std::sort(pairs.begin(), pairs.end());
        std::string text;
        for (const auto& [key, value] : pairs)
            text += std::to_string(key) + "=" + std::to_string(value) + " ";
        return text;
    }
};
using BothMaps = testing::Types<SMap<int, int>, SUnsortedMap<int, int>>;
TYPED_TEST_SUITE(MapTest, BothMaps);

TYPED_TEST(MapTest, HoldsOnePairAKey) {
    TypeParam map;
    map.Add(5, 50);
    map.Add(3, 30);
    int* const address = map.Retrieve(5);
    map[8] = 80;
    map.Add(5, 51);
    EXPECT_EQ(address, map.Retrieve(5));
    EXPECT_EQ(this->Ordered({{5, 51}, {3, 30}, {8, 80}}), TextOf(map));
    EXPECT_EQ(0, map[1]);
    const TypeParam& constant = map;
    EXPECT_EQ(0, constant[77]);
    EXPECT_EQ(4, constant.GetCount());
    EXPECT_EQ(30, *constant.Retrieve(3));
    EXPECT_EQ(nullptr, constant.Retrieve(77));
    EXPECT_TRUE(map.Contains(8) && !map.Contains(7));
    EXPECT_TRUE(map.Remove(3));
    EXPECT_FALSE(map.Remove(3));
    map.Clear();
    EXPECT_EQ("", TextOf(map));
    EXPECT_EQ(map.begin(), map.end());
}

TYPED_TEST(MapTest, IteratesBothWaysAndRemovesUnderTheIterator) {
    TypeParam map;
    for (int key = 1; key <= 4; ++key)
        map.Add(key, key * 10);
    std::string walked;
    for (auto at = map.rbegin(); at != map.rend(); ++at)
        walked += std::to_string(at->key);
    typename TypeParam::const_iterator last = map.end();
    EXPECT_FALSE(last++);
    EXPECT_EQ(4, (--last)->key);
    EXPECT_EQ(4, last--->key);
    EXPECT_EQ(3, last->key);
    for (typename TypeParam::iterator at(map); at;) {
        if (at->key % 2 == 0)
            map.Remove(at);
        else
            (at++)->value = 7;
    }
    EXPECT_EQ("4321", walked);
    EXPECT_EQ("1=7 3=7 ", TextOf(map));
    map.Remove(map.Find(1));
    map.Remove(map.Find(9));
    EXPECT_EQ("3=7 ", TextOf(map));
}

TYPED_TEST(MapTest, CopiesMovesAddsAndCompares) {
    TypeParam map;
    for (int key : {5, 1, 4, 2, 3})
        map.Add(key, -key);
    const std::string text = TextOf(map);
    TypeParam copy(map);
    EXPECT_EQ(text, TextOf(copy));
    map += map;
    map = *&map;
    EXPECT_EQ(text, TextOf(map));
    EXPECT_TRUE(copy == map);
    copy[5] = 0;
    EXPECT_FALSE(copy == map);
    TypeParam more;
    more.Add(9, 9);
    more.Add(1, 11);
    copy += more;
    EXPECT_EQ(this->Ordered({{5, 0}, {1, 11}, {4, -4}, {2, -2}, {3, -3}, {9, 9}}), TextOf(copy));
    EXPECT_FALSE(copy == map);
    copy = map;
    TypeParam moved = std::move(map);
    EXPECT_TRUE(moved == copy && map.IsEmpty());
    copy = std::move(moved);
    EXPECT_EQ(text, TextOf(copy));
    EXPECT_EQ("", TextOf(moved));
    copy.Remove(4);
    copy.Add(4, 4);
    moved = copy;
    EXPECT_EQ(this->Ordered({{5, -5}, {1, -1}, {2, -2}, {3, -3}, {4, 4}}), TextOf(moved));
}

// Random operations beside std::map, and a vector that remembers the order of keys.
TYPED_TEST(MapTest, DoesAsTheModelDoes) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        TypeParam map;
        std::vector<std::pair<int, int>> model;
        for (int step = 0; step < 400; ++step) {
            const int key = static_cast<int>(random() % 60);
            const auto at = std::find_if(model.begin(), model.end(),
                                         [key](const auto& pair) { return pair.first == key; });
            if (random() % 3 == 0) {
                EXPECT_EQ(at != model.end(), map.Remove(key) != 0);
                if (at != model.end()) model.erase(at);
            } else {
                random() % 2 ? void(map.Add(key, step)) : void(map[key] = step);
                if (at != model.end())
                    at->second = step;
                else
                    model.emplace_back(key, step);
            }
            ASSERT_EQ(this->Ordered(model), TextOf(map));
        }
        EXPECT_EQ(this->Ordered(model), TextOf(TypeParam(map)));
    }
}

// Keys in the opposite order.
template <class Map>
class Descending : public Map {
    int CompareKey(std::intptr_t left, std::intptr_t right) const override {
        return Map::CompareKey(right, left);
    }
};

TEST(MapOrderTest, EachMapKeepsItsOwnOrder) {
    SMap<int, int> up;
    Descending<SMap<int, int>> down;
    for (int key : {2, 3, 1})
        up.Add(key, key);
    SMap<int, int>& base = down;
    base = up;
    EXPECT_EQ("3=3 2=2 1=1 ", TextOf(base));
    const Descending<SMap<int, int>> copy(down);
    EXPECT_EQ("3=3 2=2 1=1 ", TextOf(copy));
    up = base;
    EXPECT_EQ("1=1 2=2 3=3 ", TextOf(up));
    base.Clear();
    base = std::move(up);
    EXPECT_EQ("3=3 2=2 1=1 ", TextOf(base));
    EXPECT_EQ("", TextOf(up));
    up += base;
    EXPECT_EQ("1=1 2=2 3=3 ", TextOf(up));
}

template <class Key>
class MapKeysTest : public testing::Test {};
using NumberKeys =
    testing::Types<bool, char, signed char, unsigned char, short, unsigned short, int, unsigned,
                   long, unsigned long, long long, unsigned long long>;
TYPED_TEST_SUITE(MapKeysTest, NumberKeys);

// Numbers of every width and sign are compared by a path of their own.
TYPED_TEST(MapKeysTest, OrderAsNumbersDo) {
    using Limits = std::numeric_limits<TypeParam>;
    std::vector<TypeParam> keys = {
        Limits::min(), Limits::max(), TypeParam(0), TypeParam(1), TypeParam(Limits::max() / 2),
        TypeParam(-1)};
    std::mt19937_64 random(5);
    for (int i = 0; i < 200; ++i)
        keys.push_back(static_cast<TypeParam>(random()));
    SMap<TypeParam, int> map;
    std::map<TypeParam, int> model;
    for (const TypeParam key : keys) {
        map.Add(key, int(model.size()));
        model.insert_or_assign(key, int(model.size()));
        ASSERT_TRUE(map.AssertValid());
    }
    ASSERT_EQ(map.GetCount(), int(model.size()));
    auto twin = model.begin();
    for (const auto& [key, value] : map)
        EXPECT_EQ(key, (twin++)->first);
    for (int i = 0; i < 200; ++i) {
        const auto key = static_cast<TypeParam>(random());
        EXPECT_EQ(map.Retrieve(key) != nullptr, model.count(key) == 1);
    }
    for (const auto& [key, value] : model)
        EXPECT_EQ(*map.Retrieve(key), value);
}

TEST(MapLifeTest, ArgumentsMayLiveInTheMap) {
    {
        SMap<int, Counted> counted;
        SUnsortedMap<int, Movable> movable;
        for (int key : {1, 2, 3}) {
            counted.Add(key, key * 10);
            movable.Add(key, key * 10);
        }
        for (int round = 0; round < 2; ++round) {
            counted.Add(2, *counted.Retrieve(3));
            counted.Add(counted.begin()->key, *counted.Retrieve(1));
            movable.Add(2, *movable.Retrieve(3));
            movable.Add(movable.begin()->key, *movable.Retrieve(1));
        }
        EXPECT_EQ("1=10 2=30 3=30 ", TextOf(counted));
        EXPECT_EQ("1=10 2=30 3=30 ", TextOf(movable));
        counted.Remove(counted.begin()->key);
        movable.Remove(movable.begin()->key);
        EXPECT_EQ("2=30 3=30 ", TextOf(counted));
        EXPECT_EQ("2=30 3=30 ", TextOf(movable));
    }
    EXPECT_EQ(0, Counted::live);
}

// Every allocation and every copy fails once; the map is then what it was.
template <class Map>
void StaysAsItWas() {
    struct Row {
        const char* name;
        void (*run)(Map&, const Map&);
    };
    const Row rows[] = {
        {"add", [](Map& map, const Map&) { map.Add(9, 90); }},
        {"replace", [](Map& map, const Map&) { map.Add(2, 21); }},
        {"index", [](Map& map, const Map&) { map[8]; }},
        {"add a map", [](Map& map, const Map& other) { map += other; }},
        {"assign", [](Map& map, const Map& other) { map = other; }},
        {"copy", [](Map&, const Map& other) { Map copy(other); }},
    };
    {
        Map other;
        for (int key = 2; key < 8; ++key)
            other.Add(key, -key);
        for (const Row& row : rows) {
            for (int nth = 1; nth < 100; ++nth) {
                SCOPED_TRACE(std::string(row.name) + ", failure " + std::to_string(nth));
                Map map;
                for (int key : {3, 2, 1})
                    map.Add(key, key * 10);
                const std::string before = TextOf(map);
                FailNthAllocation fail(nth);
                Counted::copiesUntilThrow = nth - 1;
                bool failed = true;
                try {
                    row.run(map, other);
                    failed = fail.Triggered() || Counted::copiesUntilThrow < 0;
                } catch (const SEOutOfMemory&) {
                    EXPECT_EQ(before, TextOf(map));
                } catch (const std::runtime_error&) {
                    EXPECT_EQ(before, TextOf(map));
                }
                Counted::copiesUntilThrow = -1;
                if (!failed) break;
                EXPECT_LT(nth, 99);
            }
        }
    }
    EXPECT_EQ(0, Counted::live);
}

TEST(MapLifeTest, StaysAsItWasWhenSomethingFails) {
    StaysAsItWas<SMap<int, Counted, STreeHeap>>();
    StaysAsItWas<SUnsortedMap<int, Counted, STreeHeap>>();
}

TEST(MapLifeTest, AComparisonThatThrowsChangesNothing) {
    struct Throwing : SUnsortedMap<int, int> {
        mutable int left = 1000;
        int CompareKey(std::intptr_t a, std::intptr_t b) const override {
            if (left-- == 0) throw std::runtime_error("compare");
            return SUnsortedMap::CompareKey(a, b);
        }
    };
    for (int nth = 0; nth < 3; ++nth) {
        SCOPED_TRACE(nth);
        Throwing map;
        for (int key = 0; key < 9; ++key)
            map.Add(key, key);
        const std::string before = TextOf(map);
        for (int operation = 0; operation < 3; ++operation) {
            map.left = nth;
            EXPECT_THROW(operation == 0   ? void(map.Add(99, 1))
                         : operation == 1 ? void(map.Remove(8))
                                          : void(map[99]),
                         std::runtime_error);
            map.left = 1000;
            EXPECT_EQ(before, TextOf(map));
        }
    }
}

// A search of the order for each removal would take minutes.
TEST(MapLifeTest, RemovesManyKeysFromEitherEnd) {
    constexpr int count = 200000;
    for (const bool lastFirst : {false, true}) {
        SUnsortedMap<int, int> map;
        for (int key = 0; key < count; ++key)
            map.Add(key, key);
        const SUnsortedMap<int, int> copy(map);
        for (int key = 0; key < count; ++key)
            EXPECT_TRUE(map.Remove(lastFirst ? count - 1 - key : key));
        EXPECT_TRUE(map.IsEmpty());
        EXPECT_EQ(count - 1, copy.rbegin()->key);
        EXPECT_TRUE(copy.AssertValid());
    }
}

}  // namespace
