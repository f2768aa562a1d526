// Values whose end changes the very container that they leave.
#include <brcore8/containers/list.h>
#include <brcore8/containers/map.h>
#include <brcore8/containers/rb_tree.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "containers/support.h"

namespace {

// Acts when the last copy ends.
using Meddler = std::shared_ptr<void>;

Meddler Meddling(std::function<void()> act) {
    return Meddler(nullptr, [act = std::move(act)](std::nullptr_t) { act(); });
}

template <class Map>
class MeddlingTest : public testing::Test {};
using Maps = testing::Types<SMap<int, Meddler>, SUnsortedMap<int, Meddler>,
                            STreeMap<int, Meddler, STreeCompare, STreePool>>;
TYPED_TEST_SUITE(MeddlingTest, Maps);

TYPED_TEST(MeddlingTest, MapsAreWholeWhenAValueEnds) {
    using Map = TypeParam;
    const struct {
        const char* name;
        void (*change)(Map&);
        void (*act)(Map&);
        const char* keys;
    } rows[] = {
        {"removed, adds", [](Map& m) { m.Remove(2); }, [](Map& m) { m.Add(9, nullptr); }, "139"},
        {"removed, adds itself again", [](Map& m) { m.Remove(2); },
         [](Map& m) { m.Add(2, nullptr); }, "123"},
        {"removed, removes the others", [](Map& m) { m.Remove(2); },
         [](Map& m) { m.Remove(1), m.Remove(3); }, ""},
        {"removed, clears", [](Map& m) { m.Remove(2); }, [](Map& m) { m.Clear(); }, ""},
        {"replaced, adds", [](Map& m) { m.Add(2, nullptr); }, [](Map& m) { m.Add(9, nullptr); },
         "1239"},
        {"replaced, replaces", [](Map& m) { m.Add(2, nullptr); }, [](Map& m) { m.Add(2, nullptr); },
         "123"},
        {"replaced, removes", [](Map& m) { m.Add(2, nullptr); }, [](Map& m) { m.Remove(2); }, "13"},
        {"replaced, clears", [](Map& m) { m.Add(2, nullptr); }, [](Map& m) { m.Clear(); }, ""},
        {"cleared, adds", [](Map& m) { m.Clear(); }, [](Map& m) { m.Add(9, nullptr); }, "9"},
        {"cleared, removes", [](Map& m) { m.Clear(); }, [](Map& m) { m.Remove(1), m.Remove(3); },
         ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Map map;
        int ended = 0;
        for (const int key : {1, 2, 3}) {
            map.Add(key, key != 2 ? nullptr : Meddling([&] {
                        ++ended;
                        row.act(map);
                        EXPECT_TRUE(map.AssertValid());
                    }));
        }
        row.change(map);
        std::string keys;
        for (const auto& pair : map)
            keys += std::to_string(pair.key);
        std::sort(keys.begin(), keys.end());
        EXPECT_EQ(keys, row.keys);
        EXPECT_EQ(ended, 1);
        EXPECT_TRUE(map.AssertValid());
    }
}

TEST(MeddlingListTest, ListsAreWholeWhenAValueEnds) {
    using List = SList<Meddler>;
    const struct {
        const char* name;
        void (*change)(List&);
        void (*act)(List&);
        int left;
    } rows[] = {
        {"popped, adds", [](List& l) { l.PopFront(); }, [](List& l) { l.PushFront(nullptr); }, 3},
        {"popped, pops", [](List& l) { l.PopFront(); }, [](List& l) { l.PopFront(); }, 1},
        {"popped, clears", [](List& l) { l.PopFront(); }, [](List& l) { l.Clear(); }, 0},
        {"cleared, adds", [](List& l) { l.Clear(); }, [](List& l) { l.PushBack(nullptr); }, 0},
        {"cleared, clears", [](List& l) { l.Clear(); }, [](List& l) { l.Clear(); }, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        List list;
        int ended = 0;
        list.PushBack(Meddling([&] {
            ++ended;
            row.act(list);
            EXPECT_TRUE(list.AssertValid());
        }));
        list.PushBack(nullptr);
        list.PushBack(nullptr);
        row.change(list);
        EXPECT_EQ(list.GetCount(), row.left);
        EXPECT_EQ(ended, 1);
        EXPECT_TRUE(list.AssertValid());
    }
}

}  // namespace
