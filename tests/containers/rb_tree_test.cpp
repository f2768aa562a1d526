#include <brcore8/containers/list.h>
#include <brcore8/containers/rb_tree.h>
#include <brcore8/containers/table.h>
#include <brcore8/core/exception.h>

#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "containers/support.h"
#include "support/failing_allocator.h"

namespace {

// The core alone: elements are counted numbers, their own keys.
class Numbers : public __STree {
public:
    Numbers() = default;
    Numbers(const Numbers&) = delete;
    Numbers& operator=(const Numbers& other) {
        __STree::operator=(other);
        return *this;
    }
    ~Numbers() override { Clear(); }
    std::string Text() const {
        EXPECT_TRUE(AssertValid());
        std::string text;
        for (Entry* entry = GetLastEntry(); entry != nullptr; entry = Predecessor(entry))
            text = std::to_string(GetKey(entry->Element())) + " " + text;
        return text;
    }
    using __STree::Abandon;
    using __STree::AddCopy;
    using __STree::AddVoid;
    using __STree::Clear;
    using __STree::Contains;
    using __STree::Find;
    using __STree::Remove;

private:
    std::intptr_t GetKey(const void* element) const override {
        return *static_cast<const Counted*>(element);
    }
    int CompareKey(std::intptr_t a, std::intptr_t b) const override { return (a > b) - (a < b); }
    void Destroy(void* element) override { static_cast<Counted*>(element)->~Counted(); }
    void CopyTo(void* element, const void* source) override {
        ::new (element) Counted(*static_cast<const Counted*>(source));
    }
    void* AllocateEntry() override { return brcore8::Allocate(sizeof(Entry) + sizeof(Counted)); }
    void FreeEntry(Entry* entry) override { brcore8::Release(entry); }
};

TEST(RbTreeCoreTest, OneElementAKey) {
    {
        Numbers numbers;
        for (int n : {5, 3, 8, 3, 5, 5}) {
            const Counted value(n);
            EXPECT_EQ(n, *static_cast<Counted*>(numbers.AddCopy(&value)));
        }
        EXPECT_EQ("3 5 8 ", numbers.Text());
        // The value copied may be the very element that it replaces.
        numbers.AddCopy(8, numbers.Find(8));
        ::new (numbers.AddVoid(5)) Counted(5);
        ::new (numbers.AddVoid(4)) Counted(4);
        EXPECT_EQ("3 4 5 8 ", numbers.Text());
        // A refill that fails is given back: the key is gone, the tree whole.
        numbers.Abandon(numbers.AddVoid(5));
        numbers.Abandon(numbers.AddVoid(9));
        EXPECT_EQ("3 4 8 ", numbers.Text());
        EXPECT_FALSE(numbers.Contains(5));
        EXPECT_FALSE(numbers.Remove(5));
        EXPECT_EQ(3, Counted::live);
    }
    EXPECT_EQ(0, Counted::live);
}

TEST(RbTreeCoreTest, FailuresLeaveTheTreeAsItWas) {
    Numbers source;
    for (int n = 0; n < 20; ++n)
        ::new (source.AddVoid(n)) Counted(n);
    Numbers target;
    ::new (target.AddVoid(1)) Counted(1);
    const Counted one(1), two(2);
    for (int nth = 0; nth < 20; ++nth) {
        SCOPED_TRACE(nth);
        Counted::copiesUntilThrow = nth;
        EXPECT_THROW(target = source, std::runtime_error);
        FailNthAllocation fail(nth + 1);
        EXPECT_THROW(target = source, SEOutOfMemory);
        EXPECT_EQ("1 ", target.Text());
    }
    for (const Counted* value : {&one, &two}) {
        Counted::copiesUntilThrow = 0;
        EXPECT_THROW(target.AddCopy(value), std::runtime_error);
        EXPECT_EQ("1 ", target.Text());
    }
    target = source;
    EXPECT_EQ(source.Text(), target.Text());
}

// Ascending, descending and random runs reach every way of balancing, adding and removing.
TEST(RbTreeTest, AgreesWithAModel) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int kind = 0; kind < 4; ++kind) {
        STreeMap<int, Movable> map;
        std::map<int, int> model;
        for (int step = 0; step < 1500; ++step) {
            const int near = static_cast<int>(random() % 300);
            const int key = kind == 0 ? step : kind == 1 ? -step : near;
            if (random() % 5 < (kind < 2 || step < 750 ? 3u : 1u)) {
                EXPECT_EQ(step, map.Add(key, step));
                model.insert_or_assign(key, step);
            } else if (kind == 3) {
                auto at = map.FindElement(key);
                const auto place = model.find(key);
                ASSERT_EQ(place == model.end(), at == map.end());
                if (place == model.end()) continue;
                at = map.Remove(at);
                const auto after = model.erase(place);
                ASSERT_EQ(after == model.end(), at == map.end());
                if (at) {
                    ASSERT_EQ(after->first, at->key);
                }
            } else {
                const int gone = kind < 2 ? key / 2 : key;
                ASSERT_EQ(static_cast<int>(model.erase(gone)), map.Remove(gone));
            }
            ASSERT_TRUE(map.AssertValid()) << step;
            ASSERT_EQ(static_cast<int>(model.size()), map.GetCount());
        }
        const STreeMap<int, Movable> copy = map;
        map.Clear();
        ASSERT_TRUE(copy.AssertValid());
        auto at = copy.begin();
        for (const auto& [key, value] : model) {
            ASSERT_EQ(key, at->key);
            ASSERT_EQ(value, at++->value);
            ASSERT_EQ(value, *copy.Find(key));
        }
        ASSERT_EQ(copy.end(), at);
        for (auto place = model.rbegin(); place != model.rend(); ++place)
            ASSERT_EQ(place->first, (--at)->key);
    }
    EXPECT_EQ(0, Counted::live);
}

// Ten million steps: what goes wrong once in a million shows too.
TEST(RbTreeTest, KeepsItsRulesForLong) {
    constexpr unsigned kSteps = 10'000'000, kKeys = 512;
    std::mt19937 random(5);
    STreeMap<unsigned, unsigned> map;
    std::vector<bool> model(kKeys);
    for (unsigned step = 0; step < kSteps; ++step) {
        const unsigned key = random() % kKeys;
        if (random() % 2 == 0) {
            map.Add(key, step);
            model[key] = true;
        } else {
            ASSERT_EQ(map.Remove(key), int{model[key]}) << step;
            model[key] = false;
        }
        if (step % 1000 != 0) continue;
        ASSERT_TRUE(map.AssertValid()) << step;
    }
    for (unsigned key = 0; key < kKeys; ++key)
        ASSERT_EQ(map.Contains(key), int{model[key]}) << key;
}

// A comparison that is no order ends every operation and spoils no link or colour.
TEST(RbTreeTest, SurvivesComparisonsThatAreNoOrder) {
    class Hostile : public Numbers {
    public:
        explicit Hostile(int kind) : kind_(kind) {}
        // The order is all that may be wrong.
        long Walked() const {
            long steps = 0;
            for (Entry* entry = GetLastEntry(); entry != nullptr; entry = Predecessor(entry))
                if (++steps > GetCount()) break;
            return steps;
        }

    private:
        int CompareKey(std::intptr_t a, std::intptr_t b) const override {
            switch (kind_) {
                case 0:
                    return -1;
                case 1:
                    return 1;
                case 2:
                    return static_cast<int>(random_() % 3) - 1;
                default:
                    return static_cast<int>((a - b + 300) % 3) - 1;  // stone, scissors, paper
            }
        }
        int kind_;
        mutable std::mt19937 random_{21};
    };
    for (int kind = 0; kind < 4; ++kind) {
        SCOPED_TRACE(kind);
        std::mt19937 random(4);
        Hostile numbers(kind);
        for (int step = 0; step < 5000; ++step) {
            const int key = static_cast<int>(random() % 100);
            if (random() % 3 != 0)
                ::new (numbers.AddVoid(key)) Counted(key);
            else
                numbers.Remove(key);
            ASSERT_EQ(numbers.GetCount(), numbers.Walked());
            ASSERT_EQ(numbers.GetCount(), Counted::live);
        }
    }
    EXPECT_EQ(0, Counted::live);
}

struct NoCase {
    int operator()(std::string_view a, std::string_view b) const {
        const auto lower = [](std::string_view text) {
            std::string folded;
            for (char c : text)
                folded += static_cast<char>(tolower(c));
            return folded;
        };
        return lower(a).compare(lower(b));
    }
};

TEST(TreeMapTest, FindsByAnyComparableKeyAndReplacesPairs) {
    STreeMap<std::string, std::string, NoCase> map;
    map.Add("Key", "one");
    EXPECT_EQ("two", map.Add("KEY", "two"));
    EXPECT_EQ(1, map.GetCount());
    EXPECT_EQ("KEY", map.begin()->key);
    EXPECT_EQ("two", *map.Find("key"));
    EXPECT_EQ(nullptr, map.Find(std::string_view("other")));
    // Both arguments live in the pair that is replaced.
    map.Add(map.begin()->key, map.begin()->value);
    EXPECT_EQ("two", *map.Find("key"));
    map.FindOrAdd("a") += "x";
    map.FindOrAdd("A") += "y";
    std::string text;
    for (auto& [key, value] : map)
        text += key + "=" + value + " ";
    EXPECT_EQ("a=xy KEY=two ", text);
    EXPECT_TRUE(map.Remove("KEY"));
    EXPECT_FALSE(map.Contains("key"));

    STreeMap<int, int> numbers;
    const int* const kept = &numbers.Add(1, 1);
    EXPECT_EQ(kept, &numbers.Add(1, 2));
    EXPECT_EQ(2, *kept);
}

TEST(TreeMapTest, AThrowingValueNeverEndsThePairItWouldReplace) {
    {
        STreeMap<int, Counted> map;
        const Counted value(7);
        map.Add(1, Counted(5));
        for (int key : {1, 2}) {
            Counted::copiesUntilThrow = 0;
            EXPECT_THROW(map.Add(key, value), std::runtime_error);
            FailNthAllocation fail(1);
            EXPECT_THROW(map.Add(key, value), SEOutOfMemory);
            EXPECT_EQ(5, *map.Find(1));
            EXPECT_EQ(1, map.GetCount());
        }
        map.Add(1, *map.Find(1));
        EXPECT_EQ(5, *map.Find(1));
    }
    EXPECT_EQ(0, Counted::live);
}

// A type may hold containers of itself.
struct Family {
    STreeMap<int, Family> byAge;
    STable<Family> inOrder;
    SList<Family> listed;
};

TEST(TreeMapTest, MovesAndNests) {
    Family family;
    family.byAge.FindOrAdd(3).inOrder.Add(Family()).listed.PushBack(Family());
    const Family copy = family;
    family = Family();
    EXPECT_EQ(1, copy.byAge.Find(3)->inOrder[0].listed.GetCount());
    STreeMap<long, STreeMap<std::string, int>> outer;
    for (long category = 0; category < 100; ++category)
        outer.FindOrAdd(category).Add("name", category);
    auto moved = std::move(outer);
    EXPECT_EQ(0, outer.GetCount());
    EXPECT_TRUE(outer.AssertValid());
    outer = moved;
    outer = *&outer;
    moved.Clear();
    EXPECT_EQ(99, *outer.rbegin()->value.Find("name"));
    moved = std::move(outer);
    moved = std::move(moved);
    EXPECT_EQ(100, moved.GetCount());
}

}  // namespace
