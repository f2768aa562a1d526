#include <brcore8/containers/dlist.h>
#include <brcore8/core/exception.h>

#include <algorithm>
#include <cstdlib>
#include <list>
#include <random>
#include <string>
#include <vector>

#include "containers/support.h"
#include "support/failing_allocator.h"

namespace {

using Item = Letter<SDListItem>;

char At(SDListItem* item) {
    return LetterOf<SDListItem>(item);
}

std::string TextOf(const SDList& list) {
    EXPECT_TRUE(list.AssertValid());
    std::string text;
    for (SDListItem* item = list.GetHead(); item != nullptr; item = item->GetNext())
        text += At(item);
    return text;
}

// A list of letters that knows them by name.
struct Letters : SXDList {
    explicit Letters(const std::string& text) {
        for (char letter : text)
            AddAtTail(new Item(letter));
    }
    SDListItem* operator[](char letter) {
        SDListItem* item = GetHead();
        while (item != nullptr && At(item) != letter)
            item = item->GetNext();
        return item;
    }
};

SDListItem* X() {
    return new Item('x');
}

class DListTest : public testing::Test {
protected:
    void SetUp() override { Item::deaths.clear(); }
    void TearDown() override { EXPECT_EQ(0, Item::live); }
};

TEST_F(DListTest, ChangesOrderAndOwnership) {
    struct Row {
        const char* name;
        const char* before;
        void (*change)(Letters&);
        const char* after;
        const char* deaths;
    };
    const Row rows[] = {
        {"init-reset", "AB", [](Letters& l) { l.Init(X(), 1); }, "x", "AB"},
        {"init-keep", "AB", [](Letters& l) { l.Init(X(), 0); }, "xAB", ""},
        {"init-reset-null", "AB", [](Letters& l) { l.Init(nullptr, 1); }, "", "AB"},
        {"init-reset-inside", "ABC", [](Letters& l) { l.Init(l['B'], 1); }, "B", "AC"},
        {"init-keep-inside", "ABC", [](Letters& l) { l.Init(l['C'], 0); }, "CAB", ""},
        {"add-null", "A", [](Letters& l) { l.AddAtHead(nullptr), l.AddAt(nullptr, 0); }, "A", ""},
        {"add-at-0-is-second", "AB", [](Letters& l) { l.AddAt(X(), 0); }, "AxB", ""},
        {"add-at-past-end", "AB", [](Letters& l) { l.AddAt(X(), 9); }, "ABx", ""},
        {"add-at-empty", "", [](Letters& l) { l.AddAt(X(), 3); }, "x", ""},
        {"delete-head", "ABC", [](Letters& l) { l.DeleteAtHead(); }, "BC", "A"},
        {"delete-tail", "ABC", [](Letters& l) { l.DeleteAtTail(); }, "AB", "C"},
        {"delete-at-past-end", "ABC", [](Letters& l) { l.DeleteAt(9); }, "AB", "C"},
        {"delete-at-negative", "AB", [](Letters& l) { l.DeleteAt(-1); }, "AB", ""},
        {"add-at-negative", "AB", [](Letters& l) { l.AddAt(X(), -1); }, "AxB", ""},
        {"sort-null", "BA", [](Letters& l) { l.Sort(SDList::Comparison()); }, "BA", ""},
        {"delete-empty", "", [](Letters& l) { l.DeleteAt(0), l.DeleteAtHead(); }, "", ""},
        {"swap-ends", "ABC", [](Letters& l) { l.Swap(0, 2); }, "CBA", ""},
        {"swap-neighbours", "ABCD", [](Letters& l) { l.Swap(1, 2); }, "ACBD", ""},
        {"swap-neighbours-back", "ABCD", [](Letters& l) { l.Swap(2, 1); }, "ACBD", ""},
        {"swap-pair", "AB", [](Letters& l) { l.Swap(l['B'], l['A']); }, "BA", ""},
        {"swap-missing", "AB", [](Letters& l) { l.Swap(0, 2), l.Swap(-1, 0); }, "AB", ""},
        {"swap-self", "AB", [](Letters& l) { l.Swap(1, 1); }, "AB", ""},
        {"add-before", "AB", [](Letters& l) { l.AddBefore(l['A'], X()); }, "xAB", ""},
        {"add-before-null", "AB", [](Letters& l) { l.AddBefore(nullptr, X()); }, "ABx", ""},
        {"add-after", "AB", [](Letters& l) { l.AddAfter(l['B'], X()); }, "ABx", ""},
        {"add-after-null", "AB", [](Letters& l) { l.AddAfter(nullptr, X()); }, "xAB", ""},
        {"delete-before", "ABC", [](Letters& l) { l.DeleteBefore(l['B']); }, "BC", "A"},
        {"delete-before-head", "AB", [](Letters& l) { l.DeleteBefore(l['A']); }, "AB", ""},
        {"delete-after", "ABC", [](Letters& l) { l.DeleteAfter(l['B']); }, "AB", "C"},
        {"delete-middle", "ABC", [](Letters& l) { l.Delete(l['B']); }, "AC", "B"},
        {"delete-last-one", "A", [](Letters& l) { l.Delete(l['A']); }, "", "A"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Item::deaths.clear();
        Letters list(row.before);
        row.change(list);
        EXPECT_EQ(row.after, TextOf(list));
        EXPECT_EQ(row.deaths, Item::deaths);
    }
}

TEST_F(DListTest, DetachedItemsAreTheCallersAndUnlinked) {
    Letters list("ABCDE");
    SDListItem* tail = list.GetTail();
    SDListItem* head = list.GetHead();
    SDListItem* detached[] = {list.DetachAt(9), list.DetachAt(0), list.DetachAfter(list['B'])};
    EXPECT_EQ(tail, detached[0]);
    EXPECT_EQ(head, detached[1]);
    EXPECT_EQ('C', At(detached[2]));
    for (SDListItem* item : detached) {
        EXPECT_EQ(nullptr, item->GetNext());
        EXPECT_EQ(nullptr, item->GetPrevious());
        delete item;
    }
    // With a null reference the item goes, but is not told.
    tail = list.GetTail();
    EXPECT_EQ(nullptr, list.DetachBefore(nullptr));
    delete tail;
    head = list.GetHead();
    EXPECT_EQ(nullptr, list.DetachAfter(nullptr));
    delete head;
    EXPECT_EQ("", TextOf(list));
    EXPECT_EQ(nullptr, list.DetachAtHead());
    EXPECT_EQ(nullptr, list.GetAt(0));
}

// The list stays usable for the destructors of its items.
TEST_F(DListTest, DestructorsMayUseTheList) {
    struct Greedy : Item {
        explicit Greedy(SDList& list) : Item('G'), list_(list) {}
        ~Greedy() override { list_.DeleteAtTail(); }
        SDList& list_;
    };
    SDList list;
    for (int i = 0; i < 5; ++i)
        list.AddAtTail(new Greedy(list));
    list.Done();
    EXPECT_EQ("GGGGG", Item::deaths);
    for (int i = 0; i < 2; ++i)
        list.AddAtTail(new Greedy(list));
    SDListIterator cursor(&list, 0);
    cursor.DeleteCurrent();
    EXPECT_EQ(nullptr, cursor.GetCurrent());
}

// What the function does when it is called with C.
TEST_F(DListTest, ForEachSurvivesWhatItsFunctionDoes) {
    struct Row {
        const char* name;
        int (*act)(Letters&, SDListItem*);
        const char* seen;
        const char* after;
    };
    const Row rows[] = {
        {"stop", [](Letters&, SDListItem*) { return 0; }, "ABC", "ABCDE"},
        {"delete-it", [](Letters& l, SDListItem* i) { return l.Delete(i), 1; }, "ABCDE", "ABDE"},
        {"delete-both-neighbours",
         [](Letters& l, SDListItem* i) { return l.DeleteBefore(i), l.DeleteAfter(i), 1; }, "ABCE",
         "ACE"},
        {"delete-it-and-the-next",
         [](Letters& l, SDListItem* i) { return l.DeleteAfter(i), l.Delete(i), 1; }, "ABCE", "ABE"},
        {"delete-all", [](Letters& l, SDListItem*) { return l.Done(), 1; }, "ABC", ""},
        {"delete-all-behind",
         [](Letters& l, SDListItem*) { return l.DeleteAtTail(), l.DeleteAtTail(), 1; }, "ABC",
         "ABC"},
        {"delete-the-next-of-an-outer-visit",
         [](Letters& l, SDListItem*) {
             l.ForEach([&](SDListItem* i) { return At(i) != 'D' || (l.Delete(i), 1); });
             return 1;
         },
         "ABCE", "ABCE"},
        {"throw", [](Letters&, SDListItem*) -> int { throw std::runtime_error("visit"); }, "ABC",
         "ABCDE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Letters list("ABCDE");
        std::string seen;
        try {
            list.ForEach([&](SDListItem* item) {
                seen += At(item);
                return At(item) == 'C' ? row.act(list, item) : 1;
            });
        } catch (const std::runtime_error&) {
        }
        EXPECT_EQ(row.seen, seen);
        EXPECT_EQ(row.after, TextOf(list));
    }
    Letters list("ABCD");
    static int calls;
    calls = 0;
    SDList::Visitor stopAtSecond = [](SDListItem*) BRCORE8_STDCALL -> int { return ++calls < 2; };
    list.ForEach(stopAtSecond);
    EXPECT_EQ(2, calls);
}

TEST_F(DListTest, SortOrdersAndKeepsEqualItems) {
    for (const char* text : {"", "A", "BA", "ABC", "CBA", "dDcCbBaA", "aAbBcC", "QWERTYUIOPASDF"}) {
        SCOPED_TRACE(text);
        Letters list(text);
        std::string expected = text;
        std::stable_sort(expected.begin(), expected.end(),
                         [](char a, char b) { return toupper(a) < toupper(b); });
        SDList::Comparison compare = [](SDListItem* a, SDListItem* b) BRCORE8_STDCALL -> int {
            return toupper(At(a)) - toupper(At(b));
        };
        list.Sort(compare);
        EXPECT_EQ(expected, TextOf(list));
    }
}

TEST_F(DListTest, SortSurvivesHostileComparisons) {
    struct Row {
        const char* name;
        int (*compare)(SDListItem*, SDListItem*);
    };
    static std::mt19937 random(20);
    const Row rows[] = {
        {"always-less", [](SDListItem*, SDListItem*) { return -1; }},
        {"always-greater", [](SDListItem*, SDListItem*) { return 1; }},
        {"random", [](SDListItem*, SDListItem*) { return static_cast<int>(random() % 3) - 1; }},
        {"throws",
         [](SDListItem*, SDListItem* b) -> int {
             return At(b) == 'F' ? throw std::runtime_error("compare") : 1;
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Letters list("ABCDEFGHIJ");
        int thrown = 0;
        try {
            list.Sort(row.compare);
        } catch (const std::runtime_error&) {
            thrown = 1;
        }
        std::string text = TextOf(list);
        if (thrown) {
            EXPECT_EQ("ABCDEFGHIJ", text);
        }
        std::sort(text.begin(), text.end());
        EXPECT_EQ("ABCDEFGHIJ", text);
    }
}

TEST_F(DListTest, SortingWithoutMemoryLeavesTheOrder) {
    Letters list("CAB");
    const auto order = [](SDListItem* a, SDListItem* b) { return At(a) - At(b); };
    {
        const FailNthAllocation fail(1);
        EXPECT_THROW(list.Sort(order), SEOutOfMemory);
        EXPECT_EQ("CAB", TextOf(list));
    }
    list.Sort(order);
    EXPECT_EQ("ABC", TextOf(list));
}

// What the comparison does when it is called for the fifth time.
TEST_F(DListTest, SortEndsWhenItsComparisonChangesTheList) {
    struct Row {
        const char* name;
        void (*act)(Letters&);
        const char* after;
    };
    const Row rows[] = {
        {"nothing", [](Letters&) {}, "ABCDE"},
        {"uses-another-list", [](Letters&) { Letters("XY").DeleteAtHead(); }, "ABCDE"},
        {"delete", [](Letters& l) { l.DeleteAtHead(), l.DeleteAtTail(); }, "DCB"},
        {"delete-all", [](Letters& l) { l.Done(); }, ""},
        {"delete-and-add", [](Letters& l) { l.DeleteAtHead(), l.AddAtHead(X()); }, "xDCBA"},
        {"add", [](Letters& l) { l.AddAtHead(X()); }, "xEDCBA"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Letters list("EDCBA");
        int calls = 0;
        list.Sort([&](SDListItem* a, SDListItem* b) {
            const int order = At(a) - At(b);
            if (++calls == 5) row.act(list);
            return order;
        });
        EXPECT_EQ(row.after, TextOf(list));
    }
}

TEST_F(DListTest, SortsAMillionOnASmallStackInOrderAndAgainst) {
    OnSmallStack([] {
        struct Number : SDListItem {
            explicit Number(int n) : number(n) {}
            int number;
        };
        SDList list;
        for (int i = 0; i < 1000000; ++i)
            list.AddAtTail(new Number(i));
        long compared = 0;
        int sign = 1;
        const auto order = [&](SDListItem* a, SDListItem* b) {
            ++compared;
            return sign * (static_cast<Number*>(a)->number - static_cast<Number*>(b)->number);
        };
        for (sign = 1; sign >= -1; sign -= 2) {
            compared = 0;
            list.Sort(order);
            EXPECT_GT(20000000 + 1000000, compared);
            EXPECT_EQ(sign > 0 ? 0 : 999999, static_cast<Number*>(list.GetHead())->number);
            EXPECT_TRUE(list.AssertValid());
        }
    });
}

TEST_F(DListTest, IteratorKeepsItsIndexAsStated) {
    struct Row {
        const char* name;
        void (*step)(SDListIterator&);
        char item;
        long index;
        const char* after;
    };
    const Row rows[] = {
        {"next", [](SDListIterator& i) { i.Next(); }, 'C', 2, "ABCD"},
        {"previous", [](SDListIterator& i) { i.Previous(); }, 'A', 0, "ABCD"},
        {"previous-past-head", [](SDListIterator& i) { i.Previous(), i.Previous(); }, '-', -1,
         "ABCD"},
        {"off-stays-off", [](SDListIterator& i) { i.Last(), i.Next(), i.Previous(); }, '-', 4,
         "ABCD"},
        {"first", [](SDListIterator& i) { i.First(); }, 'A', 0, "ABCD"},
        {"last", [](SDListIterator& i) { i.Last(); }, 'D', 3, "ABCD"},
        {"skip-all-taken", [](SDListIterator& i) { i.Skip(2); }, 'D', 2, "ABCD"},
        {"skip-runs-off", [](SDListIterator& i) { i.Skip(9); }, '-', 4, "ABCD"},
        {"delete", [](SDListIterator& i) { i.DeleteCurrent(); }, 'C', 2, "ACD"},
        {"delete-tail", [](SDListIterator& i) { i.Last(), i.DeleteCurrent(); }, '-', 4, "ABC"},
        {"delete-twice-unreset", [](SDListIterator& i) { i.DeleteCurrent(), i.DeleteCurrent(); },
         '-', 3, "AC"},
        {"delete-new-current",
         [](SDListIterator& i) { i.First(), i.DeleteCurrent(), i.DeleteCurrent(); }, 'D', 2, "BD"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Letters list("ABCD");
        SDListIterator iterator(&list, 1);
        row.step(iterator);
        EXPECT_EQ(row.item, At(iterator.GetCurrent()));
        EXPECT_EQ(row.index, iterator.GetIndex());
        EXPECT_EQ(row.after, TextOf(list));
    }
    SDList empty;
    SDListIterator iterator(&empty, 0);
    EXPECT_EQ(nullptr, iterator.Last());
    EXPECT_EQ(-1, iterator.GetIndex());
}

TEST_F(DListTest, AgreesWithAModel) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    SXDList list;
    std::vector<SDListItem*> model;
    for (int step = 0; step < 3000 && !HasFailure(); ++step) {
        const auto size = static_cast<unsigned>(model.size());
        const unsigned at = random() % (size + 1);
        const auto place = model.begin() + at;
        SDListItem* reference = at < size ? *place : nullptr;
        switch (random() % 5) {
            case 0:
                list.AddBefore(reference, *model.insert(place, X()));
                break;
            case 1:
                list.AddAtHead(*model.insert(model.begin(), X()));
                break;
            case 2:
                if (reference == nullptr) break;
                list.DeleteAt(static_cast<long>(at));
                model.erase(place);
                break;
            case 3:
                if (reference == nullptr) break;
                list.Swap(static_cast<long>(at), static_cast<long>(random() % size));
                for (long i = 0; i < list.GetCount(); ++i)
                    model[static_cast<std::size_t>(i)] = list.GetAt(i);
                break;
            default:
                list.Sort([](SDListItem* a, SDListItem* b) { return (a > b) - (a < b); });
                std::sort(model.begin(), model.end());
        }
        ASSERT_TRUE(list.AssertValid());
        ASSERT_EQ(static_cast<long>(model.size()), list.GetCount());
        for (std::size_t i = 0; i < model.size(); ++i)
            ASSERT_EQ(model[i], list.GetAt(static_cast<long>(i)));
    }
}

}  // namespace
