#include <brcore8/containers/table.h>
#include <brcore8/core/exception.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <vector>

#include "containers/support.h"
#include "support/failing_allocator.h"

namespace {

template <class Table>
std::string TextOf(const Table& table) {
    EXPECT_TRUE(table.AssertValid());
    std::string text;
    for (int value : table)
        text += static_cast<char>('A' + value);
    return text;
}

template <class T>
STable<T> Make(int count) {
    STable<T> table;
    for (int i = 0; i < count; ++i)
        table.Add(T(i));
    return table;
}

// Elements that are copied, that are moved, and that are bytes.
template <class T>
class TableTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(0, Counted::live); }
};
using Elements = testing::Types<Counted, Movable, int>;
TYPED_TEST_SUITE(TableTest, Elements);

TYPED_TEST(TableTest, ChangesOrder) {
    using Table = STable<TypeParam>;
    struct Row {
        const char* name;
        int count;
        void (*change)(Table&);
        const char* after;
    };
    const Row rows[] = {
        {"insert-front", 2, [](Table& t) { t.Insert(0, 9); }, "JAB"},
        {"insert-front-grows", 4, [](Table& t) { t.Insert(0, 9); }, "JABCD"},
        {"insert-own-behind", 5, [](Table& t) { t.Insert(1, t[3]); }, "ADBCDE"},
        {"insert-own-before-grows", 4, [](Table& t) { t.Insert(3, t[0]); }, "ABCAD"},
        {"add-own-grows", 7, [](Table& t) { t.Add(t[1]); }, "ABCDEFGB"},
        {"remove-first", 3, [](Table& t) { t.Remove(0); }, "BC"},
        {"remove-last", 3, [](Table& t) { t.Remove(2); }, "AB"},
        {"move-up", 3, [](Table& t) { t.MoveTo(0, 2); }, "BCA"},
        {"move-down", 3, [](Table& t) { t.MoveTo(2, 0); }, "CAB"},
        {"move-within", 5, [](Table& t) { t.MoveTo(1, 3); }, "ACDBE"},
        {"move-nowhere", 3, [](Table& t) { t.MoveTo(1, 1); }, "ABC"},
        {"swap", 3, [](Table& t) { t.Swap(0, 2); }, "CBA"},
        {"swap-self", 3, [](Table& t) { t.Swap(1, 1); }, "ABC"},
        {"reverse-even", 4, [](Table& t) { t.Reverse(); }, "DCBA"},
        {"reverse-odd", 5, [](Table& t) { t.Reverse(); }, "EDCBA"},
        {"reverse-empty", 0, [](Table& t) { t.Reverse(); }, ""},
        {"clear", 3, [](Table& t) { t.Clear(); }, ""},
        {"assign", 3, [](Table& t) { t = Make<TypeParam>(2); }, "AB"},
        {"assign-self", 3, [](Table& t) { t = *&t; }, "ABC"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Table table = Make<TypeParam>(row.count);
        row.change(table);
        EXPECT_EQ(row.after, TextOf(table));
    }
}

TYPED_TEST(TableTest, GrowsAsStated) {
    STable<TypeParam> table;
    table.Clear();
    EXPECT_EQ(0, table.GetCapacity());
    for (const auto& [count, capacity] :
         {std::pair(1, 4), {4, 4}, {5, 7}, {8, 11}, {12, 17}, {18, 26}, {27, 40}}) {
        while (table.GetCount() < count)
            table.Add(TypeParam(0));
        EXPECT_EQ(capacity, table.GetCapacity());
    }
    const auto copy = table;
    EXPECT_EQ(27, copy.GetCapacity());
    // Exactly what is asked, more or less, but never less than is in use.
    for (const auto& [asked, capacity] :
         {std::pair(100, 100), {30, 30}, {27, 27}, {26, 27}, {0, 27}}) {
        table.GrowTo(asked);
        EXPECT_EQ(capacity, table.GetCapacity());
        EXPECT_EQ(27, table.GetCount());
    }
    for (int bad : {-1, INT_MIN, INT_MAX}) {
        EXPECT_THROW(table.GrowTo(bad), SEOutOfMemory);
    }
    EXPECT_EQ(27, table.GetCount());
}

TYPED_TEST(TableTest, RefusesToInsertBeyondItsEnds) {
    STable<TypeParam> table = Make<TypeParam>(4);
    for (int index : {-1, 5, INT_MIN, INT_MAX}) {
        SCOPED_TRACE(index);
        try {
            table.Insert(index, table[0]);
            FAIL() << "nothing was thrown";
        } catch (const SException& error) {
            EXPECT_STREQ("Table index out of range", error.GetText());
        }
    }
    EXPECT_EQ("ABCD", TextOf(table));
    EXPECT_EQ(4, table.GetCapacity());
}

TYPED_TEST(TableTest, NoMemoryLeavesTheTableAsItWas) {
    const STable<TypeParam> source = Make<TypeParam>(4);
    STable<TypeParam> table = source;
    FailNthAllocation fail(1, true);
    EXPECT_THROW(table.Insert(1, table[2]), SEOutOfMemory);
    EXPECT_THROW(table.GrowTo(9), SEOutOfMemory);
    EXPECT_THROW(table = source, SEOutOfMemory);
    EXPECT_EQ("ABCD", TextOf(table));
}

TYPED_TEST(TableTest, AgreesWithAModel) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    STable<TypeParam> table;
    std::vector<int> model;
    for (int step = 0; step < 2000; ++step) {
        const auto size = static_cast<int>(model.size());
        const int at = static_cast<int>(random() % static_cast<unsigned>(size + 1));
        const int to = size > 0 ? static_cast<int>(random() % static_cast<unsigned>(size)) : 0;
        const int what = static_cast<int>(random() % 6);
        if (what < 2 || at == size) {
            const int value = size > 0 && what == 0 ? model[static_cast<std::size_t>(to)] : step;
            if (size > 0 && what == 0)
                table.Insert(at, table[to]);
            else
                table.Insert(at, value);
            model.insert(model.begin() + at, value);
        } else if (what == 2 || size > 60) {
            table.Remove(at);
            model.erase(model.begin() + at);
        } else if (what == 3) {
            table.Swap(at, to);
            std::swap(model[static_cast<std::size_t>(at)], model[static_cast<std::size_t>(to)]);
        } else if (what == 4) {
            table.MoveTo(at, to);
            const int moved = model[static_cast<std::size_t>(at)];
            model.erase(model.begin() + at);
            model.insert(model.begin() + to, moved);
        } else {
            table.Reverse();
            std::reverse(model.begin(), model.end());
        }
        ASSERT_TRUE(table.AssertValid());
        ASSERT_TRUE(std::equal(table.begin(), table.end(), model.begin(), model.end())) << step;
    }
}

// Whatever copy fails, once or from then on: no element is lost twice or kept, and what adds or
// grows changes nothing when one failure is all there is.
TEST(TableFailureTest, ThrowingCopiesLeaveAWholeTable) {
    struct Row {
        const char* name;
        void (*change)(STable<Counted>&);
        bool strong;  // after a single failure the elements are also in their order
    };
    const Row rows[] = {
        {"grow", [](STable<Counted>& t) { t.GrowTo(20); }, true},
        {"insert", [](STable<Counted>& t) { t.Insert(1, 9); }, true},
        {"insert-own", [](STable<Counted>& t) { t.GrowTo(20), t.Insert(0, t[4]); }, true},
        {"assign",
         [](STable<Counted>& t) {
             t = STable<Counted>{7, 8};
         },
         true},
        {"remove", [](STable<Counted>& t) { t.Remove(1); }, false},
        {"move-up", [](STable<Counted>& t) { t.MoveTo(1, 4); }, false},
        {"move-down", [](STable<Counted>& t) { t.MoveTo(4, 1); }, false},
        {"swap", [](STable<Counted>& t) { t.Swap(0, 4); }, false},
    };
    for (const Row& row : rows) {
        for (int nth = 0; nth < 60; ++nth) {
            SCOPED_TRACE(std::string(row.name) + " " + std::to_string(nth));
            Counted::throwForever = nth % 2 != 0;
            STable<Counted> table = Make<Counted>(5);
            Counted::copiesUntilThrow = nth / 2;
            bool thrown = false;
            try {
                row.change(table);
            } catch (const std::runtime_error&) {
                thrown = true;
            }
            Counted::copiesUntilThrow = -1;
            EXPECT_EQ(table.GetCount(), Counted::live);
            std::string text = TextOf(table);
            if (thrown && !Counted::throwForever) {
                if (!row.strong) std::sort(text.begin(), text.end());
                if (std::string(row.name) != "remove") {
                    EXPECT_EQ("ABCDE", text);
                }
            }
        }
        Counted::throwForever = false;
    }
}

TEST(TableMemTest, RelocatesLargeElementsAsBytes) {
    struct Large {
        int value;
        char rest[300];
    };
    __STableMem table(sizeof(Large));
    for (int i = 0; i < 6; ++i) {
        const Large element{i, {}};
        table.Insert(0, &element);
    }
    table.Insert(2, table.GetAt(5));
    table.MoveTo(0, 6);
    table.Reverse();
    table.Remove(1);
    __STableMem copy = table;
    __STableMem other(1);
    other = copy;
    std::string text;
    for (int i = 0; i < other.GetCount(); ++i)
        text += static_cast<char>('0' + static_cast<Large*>(other.GetAt(i))->value);
    EXPECT_EQ("512304", text);
    EXPECT_EQ(static_cast<int>(sizeof(Large)), other.GetElementSize());
    EXPECT_THROW(other.GrowTo(INT_MAX / static_cast<int>(sizeof(Large)) + 1), SEOutOfMemory);
}

// Shifting bytes is one move of memory: not one call an element.
TEST(TableMemTest, FrontInsertionMakesNoCallAnElement) {
    struct Relocated : __STableMem {
        Relocated() : __STableMem(sizeof(void*)) {}
        ~Relocated() override { Clear(); }
        void Destroy(void*) override { ++calls; }
        void CopyTo(void* destination, const void* source) override {
            ++calls;
            __STableMem::CopyTo(destination, source);
        }
        long calls = 0;
    } table;
    void* const value = nullptr;
    for (int i = 0; i < 20000; ++i)
        table.Insert(0, &value);
    EXPECT_EQ(20000, table.calls);
}

}  // namespace
