#include <brcore8/containers/tree.h>

#include <map>
#include <random>
#include <string>

#include "containers/support.h"

namespace {

using Item = Letter<STreeItem>;

char At(SDListItem* item) {
    return LetterOf<STreeItem>(item);
}

// The tree of a text: every letter an item, its children in brackets behind it.
struct Letters : STree {
    explicit Letters(const char* text) {
        STreeItem* parent = nullptr;
        STreeItem* last = nullptr;
        for (; *text != '\0'; ++text) {
            if (*text == '(') {
                parent = last;
            } else if (*text == ')') {
                parent = parent->GetParent();
            } else {
                last = new Item(*text);
                byName[*text] = last;
                if (parent == nullptr)
                    Init(last, 1);
                else
                    InsertChildAtTail(parent, last);
            }
        }
    }
    STreeItem* operator[](char name) { return byName[name]; }
    std::map<char, STreeItem*> byName;
};

std::string TextOf(STreeItem* item) {
    if (item == nullptr) return "";
    std::string text(1, At(item));
    if (item->GetChildren().IsEmpty()) return text;
    text += '(';
    for (SDListItem* child = item->GetChildren().GetHead(); child; child = child->GetNext())
        text += TextOf(static_cast<STreeItem*>(child));
    return text + ')';
}

STreeItem* X() {
    return new Item('x');
}

class TreeTest : public testing::Test {
protected:
    void SetUp() override { Item::deaths.clear(); }
    void TearDown() override { EXPECT_EQ(0, Item::live); }
};

TEST_F(TreeTest, InsertsByNameAndFlag) {
    struct Row {
        const char* name;
        STreeItem* (*insert)(Letters&);
        const char* after;
    };
    const Row rows[] = {
        {"child-head", [](Letters& t) { return t.InsertChildAtHead(t['A'], X()); }, "R(A(xCD)B)"},
        {"child-at-0", [](Letters& t) { return t.InsertChildAt(t['A'], X(), 0); }, "R(A(CxD)B)"},
        {"first-child", [](Letters& t) { return t.InsertItem(t['B'], X(), STree::FirstChild); },
         "R(A(CD)B(x))"},
        {"last-child", [](Letters& t) { return t.InsertItem(t['A'], X(), STree::LastChild); },
         "R(A(CDx)B)"},
        {"first-sibling", [](Letters& t) { return t.InsertItem(t['D'], X(), STree::FirstSibling); },
         "R(A(xCD)B)"},
        {"last-sibling", [](Letters& t) { return t.InsertItem(t['A'], X(), STree::LastSibling); },
         "R(A(CD)Bx)"},
        {"before", [](Letters& t) { return t.InsertItem(t['B'], X(), STree::PreviousSibling); },
         "R(A(CD)xB)"},
        {"after", [](Letters& t) { return t.InsertItem(t['A'], X(), STree::NextSibling); },
         "R(A(CD)xB)"},
        {"sibling-at", [](Letters& t) { return t.InsertAt(t['B'], X(), 1); }, "R(A(CD)Bx)"},
        {"move", [](Letters& t) { return t.InsertChildAtTail(t['B'], t['A']); }, "R(B(A(CD)))"},
        {"move-within", [](Letters& t) { return t.InsertBefore(t['A'], t['B']); }, "R(BA(CD))"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Letters tree("R(A(CD)B)");
        EXPECT_NE(nullptr, row.insert(tree));
        EXPECT_EQ(row.after, TextOf(tree.GetRoot()));
        EXPECT_TRUE(tree.AssertValid());
    }
}

TEST_F(TreeTest, RefusesWhatHasNoPlaceOrClosesACircle) {
    struct Row {
        const char* name;
        STreeItem* (*insert)(Letters&, STreeItem*);
    };
    const Row rows[] = {
        {"sibling-of-root", [](Letters& t, STreeItem* x) { return t.InsertAtHead(t['R'], x); }},
        {"before-root", [](Letters& t, STreeItem* x) { return t.InsertBefore(t['R'], x); }},
        {"below-null", [](Letters& t, STreeItem* x) { return t.InsertChildAtTail(nullptr, x); }},
        {"unknown-flag",
         [](Letters& t, STreeItem* x) {
             return t.InsertItem(t['A'], x, static_cast<STree::FLAGS>(7));
         }},
        {"null-item", [](Letters& t, STreeItem*) { return t.InsertAfter(t['A'], nullptr); }},
        {"below-itself",
         [](Letters& t, STreeItem*) { return t.InsertChildAtHead(t['A'], t['A']); }},
        {"below-own-child",
         [](Letters& t, STreeItem*) { return t.InsertChildAt(t['C'], t['A'], 0); }},
        {"beside-itself", [](Letters& t, STreeItem*) { return t.InsertAfter(t['A'], t['A']); }},
        {"root-below", [](Letters& t, STreeItem*) { return t.InsertAfter(t['C'], t['R']); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Letters tree("R(A(CD)B)");
        Item x('x');
        EXPECT_EQ(nullptr, row.insert(tree, &x));
        EXPECT_EQ("R(A(CD)B)", TextOf(tree.GetRoot()));
        EXPECT_EQ(nullptr, x.GetParent());
    }
}

TEST_F(TreeTest, DeletesEachItemOnceInTheStatedOrder) {
    struct Row {
        const char* name;
        void (*change)(Letters&);
        const char* after;
        const char* deaths;
    };
    const Row rows[] = {
        {"child", [](Letters& t) { t.DeleteChildAtHead(t['R']); }, "R(B(F))", "ACED"},
        {"child-subtree", [](Letters& t) { t.DeleteChildSubTreeAtHead(t['R']); }, "R(B(F))",
         "ECDA"},
        {"at-past-end", [](Letters& t) { t.DeleteAt(t['C'], 9); }, "R(A(C(E))B(F))", "D"},
        {"first-sibling-is-itself", [](Letters& t) { t.DeleteAtHead(t['C']); }, "R(A(D)B(F))",
         "CE"},
        {"before", [](Letters& t) { t.DeleteItem(t['B'], STree::PreviousSibling); }, "R(B(F))",
         "ACED"},
        {"after-subtree", [](Letters& t) { t.DeleteSubTree(t['A'], STree::NextSibling); },
         "R(A(C(E)D))", "FB"},
        {"before-first", [](Letters& t) { t.DeleteBefore(t['A']); }, "R(A(C(E)D)B(F))", ""},
        {"beside-root", [](Letters& t) { t.DeleteSubTreeAtTail(t['R']); }, "R(A(C(E)D)B(F))", ""},
        {"root", [](Letters& t) { t.DeleteItem(nullptr, STree::Root); }, "", "RACEDBF"},
        {"done", [](Letters& t) { t.Done(); }, "", "ECDAFBR"},
        {"init", [](Letters& t) { t.Init(X(), 1); }, "x", "ECDAFBR"},
        {"init-from-inside", [](Letters& t) { t.Init(t['C'], 1); }, "C(E)", "DAFBR"},
        {"linked-item", [](Letters& t) { delete t['A']; }, "R(B(F))", "ACED"},
        {"iterator",
         [](Letters& t) {
             STreeIterator i(&t);
             i.Next(), i.DeleteCurrent();
         },
         "R(B(F))", "ACED"},
        {"iterator-subtree-of-root", [](Letters& t) { STreeIterator(&t).DeleteCurrentSubTree(); },
         "", "ECDAFBR"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Item::deaths.clear();
        Letters tree("R(A(C(E)D)B(F))");
        row.change(tree);
        EXPECT_EQ(row.after, TextOf(tree.GetRoot()));
        EXPECT_EQ(row.deaths, Item::deaths);
        EXPECT_TRUE(tree.AssertValid());
    }
}

// A destructor finds its item linked among those yet to go, and may end some of them.
TEST_F(TreeTest, DestructorsMayUseTheTree) {
    struct Greedy : Item {
        Greedy(STree& tree, char letter) : Item(letter), tree_(tree) {}
        ~Greedy() override {
            SDListItem* previous = GetPrevious();
            SDListItem* next = GetNext();
            EXPECT_TRUE(previous == nullptr || previous->GetNext() == this);
            EXPECT_TRUE(next == nullptr || next->GetPrevious() == this);
            if (Get() == 'A') tree_.DeleteAfter(this);
            if (Get() == 'C') delete GetParent()->GetChildren().GetTail();
        }
        STree& tree_;
    };
    STree tree;
    tree.Init(new Greedy(tree, 'R'), 1);
    for (char letter : {'A', 'B', 'E'})
        tree.InsertChildAtTail(tree.GetRoot(), new Greedy(tree, letter));
    for (char letter : {'C', 'D'})
        tree.InsertChildAtTail(tree.GetChildAtHead(tree.GetRoot()), new Greedy(tree, letter));
    tree.DeleteItem(nullptr, STree::Root);
    EXPECT_EQ("RBAECD", Item::deaths);
}

TEST_F(TreeTest, FlagZeroLeavesTheOldRootToTheCaller) {
    Letters tree("R(AB)");
    STreeItem* oldRoot = tree.GetRoot();
    EXPECT_EQ(tree['B'], tree.InsertItem(nullptr, tree['B'], STree::Root));
    EXPECT_EQ("B", TextOf(tree.GetRoot()));
    EXPECT_EQ("R(A)", TextOf(oldRoot));
    delete oldRoot;
    EXPECT_EQ(tree['B'], tree.DetachItem(nullptr, STree::Root));
    EXPECT_EQ(nullptr, tree.GetRoot());
    delete tree['B'];
}

TEST_F(TreeTest, DetachesWithWhatIsBelow) {
    Letters tree("R(A(CD)B)");
    STreeItem* item = tree.DetachItem(tree['B'], STree::PreviousSibling);
    EXPECT_EQ("A(CD)", TextOf(item));
    EXPECT_EQ(nullptr, item->GetParent());
    EXPECT_EQ(nullptr, tree.DetachAtHead(item));
    EXPECT_EQ("R(B)", TextOf(tree.GetRoot()));
    delete item;
}

TEST_F(TreeTest, LooksUpCountsAndWalks) {
    Letters tree("R(A(C)B)");
    EXPECT_EQ(tree['B'], tree.GetChildAtTail(tree['R']));
    EXPECT_EQ(nullptr, tree.GetItem(tree['R'], STree::LastChild));
    EXPECT_EQ(tree['R'], tree.GetItem(nullptr, STree::Root));
    EXPECT_EQ(tree['B'], tree.GetAt(tree['A'], 1));
    EXPECT_EQ(nullptr, tree.GetAfter(tree['R']));
    EXPECT_EQ(nullptr, tree.GetBefore(tree['A']));
    EXPECT_EQ(3, tree.GetCount());
    EXPECT_EQ(0, Letters("R").GetCount());
    EXPECT_EQ(0, STree().GetCount());
    std::string walked;
    for (STreeIterator i(&tree); i.GetCurrent() != nullptr; i.Next())
        walked += At(i.GetCurrent());
    EXPECT_EQ("RACB", walked);
    EXPECT_EQ('B', At(STreeIterator(&tree).Skip(3)));
    EXPECT_EQ(nullptr, STreeIterator(&tree).Skip(9));
}

TEST_F(TreeTest, ForEachVisitsChildrenFirstAndSurvivesItsItems) {
    struct Row {
        const char* name;
        STree::Visitor visit;
        const char* seen;
        const char* after;
    };
    static std::string seen;
    const Row rows[] = {
        {"all",
         [](STree*, STreeItem* i, std::intptr_t) BRCORE8_STDCALL -> int {
             seen += At(i);
             return 1;
         },
         "CDABR", "R(A(CD)B)"},
        {"stop-at-leaf",
         [](STree*, STreeItem* i, std::intptr_t) BRCORE8_STDCALL -> int {
             seen += At(i);
             return 0;
         },
         "C", "R(A(CD)B)"},
        {"delete",
         [](STree*, STreeItem* i, std::intptr_t) BRCORE8_STDCALL -> int {
             seen += At(i);
             if (At(i) != 'R') delete i;
             return 1;
         },
         "CDABR", "R"},
        {"delete-sibling",
         [](STree* t, STreeItem* i, std::intptr_t) BRCORE8_STDCALL -> int {
             seen += At(i);
             if (At(i) == 'C') t->DeleteAfter(i);
             return 1;
         },
         "CABR", "R(A(C)B)"},
        {"delete-parent",
         [](STree* t, STreeItem* i, std::intptr_t) BRCORE8_STDCALL -> int {
             seen += At(i);
             if (At(i) == 'C') t->DeleteChildAtHead(t->GetRoot());
             return 1;
         },
         "C", "R(B)"},
        {"insert-at-both-ends",
         [](STree* t, STreeItem* i, std::intptr_t) BRCORE8_STDCALL -> int {
             seen += At(i);
             if (At(i) == 'D') t->InsertAtHead(i, X()), t->InsertAtTail(i, X());
             return 1;
         },
         "CDABR", "R(A(xCDx)B)"},
        {"delete-root",
         [](STree* t, STreeItem* i, std::intptr_t) BRCORE8_STDCALL -> int {
             seen += At(i);
             if (At(i) == 'D') t->Done();
             return 1;
         },
         "CD", ""},
        {"data-and-nesting",
         [](STree* t, STreeItem*, std::intptr_t data) BRCORE8_STDCALL -> int {
             *reinterpret_cast<std::string*>(data) += '.';
             t->ForEach([](STree*, STreeItem*, std::intptr_t) BRCORE8_STDCALL -> int { return 0; },
                        0);
             return 1;
         },
         ".....", "R(A(CD)B)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        seen.clear();
        Letters tree("R(A(CD)B)");
        tree.ForEach(row.visit, reinterpret_cast<std::intptr_t>(&seen));
        EXPECT_EQ(row.seen, seen);
        EXPECT_EQ(row.after, TextOf(tree.GetRoot()));
    }
}

// Any item may come to any place of any other; nothing is lost, and no circle is closed.
TEST_F(TreeTest, RandomOperationsKeepItWhole) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Letters tree("R");
    const auto pick = [&] {
        return STreeIterator(&tree).Skip(static_cast<long>(random() % (tree.GetCount() + 2)));
    };
    for (int step = 0; step < 3000; ++step) {
        const auto place = static_cast<STree::FLAGS>(1 + random() % 6);
        STreeItem* const reference = pick();
        switch (Item::live > 60 ? 2 + random() % 4 : random() % 4) {
            case 0:
            case 1:
                if (STreeItem* item = X(); tree.InsertItem(reference, item, place) == nullptr)
                    delete item;
                break;
            case 2:
                tree.InsertItem(reference, pick(), place);
                break;
            case 3:
                if (STreeItem* item = tree.DetachItem(reference, place)) {
                    ASSERT_EQ(item, tree.InsertChildAt(tree.GetRoot(), item, 2));
                }
                break;
            case 4:
                tree.DeleteItem(reference, place);
                break;
            default:
                tree.DeleteSubTree(reference, place);
        }
        ASSERT_TRUE(tree.AssertValid());
        ASSERT_EQ(Item::live, tree.GetCount() + 1);
    }
}

// Depth costs neither stack nor time: a chain built from pieces at its deep end, walked every way
// and deleted every way.
TEST_F(TreeTest, AMillionDeepOnASmallStack) {
    OnSmallStack([] {
        for (int way = 0; way < 3; ++way) {
            STree tree;
            tree.Init(new STreeItem, 1);
            STreeItem* deepest = tree.GetRoot();
            for (int i = 0; i < 500000; ++i) {
                auto* piece = new STreeItem;
                STreeItem* below = tree.InsertChildAtTail(piece, new STreeItem);
                ASSERT_NE(nullptr, tree.InsertChildAtTail(deepest, piece));
                deepest = below;
            }
            EXPECT_EQ(1000000, tree.GetCount());
            static long visited;
            visited = 0;
            tree.ForEach([](STree*, STreeItem*, std::intptr_t)
                             BRCORE8_STDCALL -> int { return ++visited > 0; },
                         0);
            EXPECT_EQ(1000001, visited);
            EXPECT_EQ(nullptr,
                      tree.InsertChildAtTail(deepest, tree.GetChildAtHead(tree.GetRoot())));
            if (way == 0) tree.DeleteItem(nullptr, STree::Root);
            if (way == 1) tree.DeleteChildSubTreeAtHead(tree.GetRoot());
        }
    });
}

}  // namespace
