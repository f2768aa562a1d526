#include <brcore8/containers/list.h>
#include <brcore8/core/exception.h>

#include <algorithm>
#include <list>
#include <random>
#include <string>

#include "containers/support.h"
#include "support/failing_allocator.h"

namespace {

template <class List>
std::string TextOf(const List& list) {
    EXPECT_TRUE(list.AssertValid());
    std::string text;
    for (int value : list)
        text += std::to_string(value) + " ";
    return text;
}

SList<Counted> Make(int count) {
    SList<Counted> list;
    for (int i = 1; i <= count; ++i)
        list.PushBack(i);
    return list;
}

TEST(ListTest, MovesAndCopiesLeaveBothListsWhole) {
    for (int mine : {0, 1, 3}) {
        for (int others : {0, 1, 2}) {
            SCOPED_TRACE(std::to_string(mine) + " from " + std::to_string(others));
            SList<Counted> copied = Make(mine), moved = Make(mine), other = Make(others);
            const std::string text = TextOf(other);
            copied = other;
            EXPECT_EQ(text, TextOf(copied));
            copied = *&copied;
            EXPECT_EQ(text, TextOf(copied));
            moved = std::move(other);
            EXPECT_EQ(text, TextOf(moved));
            EXPECT_EQ("", TextOf(other));
            other.PushFront(7);
            EXPECT_EQ("7 ", TextOf(other));
        }
    }
    EXPECT_EQ(0, Counted::live);
}

TEST(ListTest, TakesItsOwnElementsAndRotates) {
    SList<Counted> list = Make(3);
    list.PushBack(*list.GetFront());
    EXPECT_EQ("1 2 3 1 ", TextOf(list));
    EXPECT_TRUE(list.Remove(*list.GetBack()));
    EXPECT_EQ("2 3 1 ", TextOf(list));
    EXPECT_FALSE(list.Remove(9));
    list.MoveToBack(list.begin());
    list.MoveToBack(list.Find(2));
    EXPECT_EQ("3 1 2 ", TextOf(list));
    EXPECT_EQ(1, *list.GetAt(1));
    EXPECT_EQ(nullptr, list.GetAt(3));
    list.PopFront();
    list.PopBack();
    list.PopBack();
    list.PopBack();
    EXPECT_EQ(nullptr, list.GetFront());
    EXPECT_EQ(nullptr, list.GetBack());
}

TEST(ListTest, FailuresLeaveTheListAsItWas) {
    const SList<Counted> source = Make(5);
    for (int nth = 0; nth < 5; ++nth) {
        SCOPED_TRACE(nth);
        SList<Counted> list = Make(3);
        Counted::copiesUntilThrow = nth;
        EXPECT_THROW(list = source, std::runtime_error);
        EXPECT_EQ("1 2 3 ", TextOf(list));
        FailNthAllocation fail(nth + 1);
        EXPECT_THROW(list = source, SEOutOfMemory);
        EXPECT_EQ("1 2 3 ", TextOf(list));
    }
}

TEST(ListTest, AgreesWithAModel) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    SList<Counted> list;
    std::list<int> model;
    for (int step = 0; step < 2000 && !HasFailure(); ++step) {
        const int value = static_cast<int>(random() % 20);
        auto at = list.Find(value);
        const auto place = std::find(model.begin(), model.end(), value);
        ASSERT_EQ(place == model.end(), at == list.end());
        switch (random() % 4) {
            case 0:
                list.Insert(at, step % 20);
                model.insert(place, step % 20);
                break;
            case 1:
                if (place == model.end()) break;
                at = list.Erase(at);
                ASSERT_EQ(model.erase(place) == model.end(), at == list.end());
                break;
            case 2:
                if (place == model.end()) break;
                list.MoveToBack(at);
                model.splice(model.end(), model, place);
                break;
            default:
                list.PushFront(value);
                model.push_front(value);
        }
        ASSERT_TRUE(list.AssertValid());
        ASSERT_TRUE(std::equal(list.begin(), list.end(), model.begin(), model.end()));
        ASSERT_EQ(static_cast<int>(model.size()), list.GetCount());
        ASSERT_EQ(list.GetCount(), Counted::live);
    }
}

}  // namespace
