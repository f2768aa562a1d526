#include <brcore8/core/exception.h>
#include <brcore8/core/idle.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/failing_allocator.h"

namespace {

std::string g_calls;

// Notes its letter in g_calls, then does what the test says.
struct Consumer : SIdleConsumer {
    explicit Consumer(SIdleConsumerList* list, char letter, int result = 0)
        : SIdleConsumer(list), letter_(letter), result_(result) {}
    int OnIdle(int) override {
        g_calls += letter_;
        const int result = result_;
        const std::function<void()> action = std::exchange(action_, nullptr);
        if (action) action();
        return result;
    }
    // Done at the next call only.
    void Then(std::function<void()> action) { action_ = std::move(action); }

private:
    char letter_;
    int result_;
    std::function<void()> action_;
};

std::string Calls() {
    return std::exchange(g_calls, "");
}

// The order of the list, which a full turn leaves as it was.
std::string All(SIdleConsumerList& list) {
    Calls();
    list.OnIdleAll(1);
    return Calls();
}

class Idle : public testing::Test {
public:
    Idle() { Calls(); }
    Consumer& Add(char letter, int result = 0) {
        consumers_.push_back(std::make_unique<Consumer>(&*list, letter, result));
        return *consumers_.back();
    }
    void Delete(const Consumer& consumer) {
        std::erase_if(consumers_, [&](const auto& owned) { return owned.get() == &consumer; });
    }
    std::optional<SIdleConsumerList> list{std::in_place};

private:
    std::vector<std::unique_ptr<Consumer>> consumers_;
};

TEST_F(Idle, EmptyListDoesNothing) {
    EXPECT_EQ(list->GetCount(), 0);
    EXPECT_EQ(list->GetNext(), nullptr);
    EXPECT_EQ(list->OnIdleAll(1), 0);
    EXPECT_EQ(list->OnIdleNext(0), 0);
    EXPECT_EQ(list->OnIdleNext(1), 0);
    list->Register(nullptr);
    list->Unregister(nullptr);
    EXPECT_EQ(list->GetCount(), 0);
    EXPECT_EQ(SIdleConsumer(nullptr).OnIdle(1), 0);
}

TEST_F(Idle, AllCallsFrontToBack) {
    Add('a');
    Add('b', 5);
    Add('c');
    EXPECT_EQ(list->OnIdleAll(0), 0);
    EXPECT_EQ(Calls(), "");
    EXPECT_EQ(list->OnIdleAll(-1), 1);
    EXPECT_EQ(Calls(), "abc");
}

TEST_F(Idle, NextGoesRound) {
    const struct {
        const char* name;
        std::vector<int> wants;  // what the consumers a, b, ... return
        std::vector<int> arguments, results;
        const char* calls;
    } rows[] = {
        {"one consumer", {0}, {0, 0, 0}, {1, 1, 1}, "aaa"},
        {"two consumers", {0, 0}, {0, 0, 0, 0}, {0, 1, 0, 1}, "abab"},
        {"each call a new round", {0, 0}, {1, 1, 1, 1}, {0, 0, 0, 0}, "abab"},
        {"new round in the middle", {0, 0, 0}, {0, 0, 7, 0, 0}, {0, 0, 0, 0, 1}, "abcab"},
        {"first wants more", {1, 0}, {0, 0, 0}, {1, 1, 1}, "aaa"},
        {"second wants more", {0, 1}, {0, 0, 0}, {0, 1, 1}, "abb"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        list.emplace();
        for (std::size_t i = 0; i < row.wants.size(); ++i)
            Add(static_cast<char>('a' + i), row.wants[i]);
        Calls();
        for (std::size_t i = 0; i < row.arguments.size(); ++i)
            EXPECT_EQ(list->OnIdleNext(row.arguments[i]), row.results[i]) << i;
        EXPECT_EQ(Calls(), row.calls);
    }
}

TEST_F(Idle, NextSurvivesARoundThatShrinks) {
    Consumer& a = Add('a');
    Consumer& b = Add('b');
    Consumer& c = Add('c');
    EXPECT_EQ(list->OnIdleNext(0), 0);
    Delete(b);
    Delete(c);
    EXPECT_EQ(list->OnIdleNext(0), 0);
    EXPECT_EQ(list->OnIdleNext(0), 1);
    Delete(a);
    EXPECT_EQ(list->OnIdleNext(0), 0);
    EXPECT_EQ(Calls(), "aaa");
}

TEST_F(Idle, GetNextMovesToTheBack) {
    Consumer& a = Add('a');
    Consumer& b = Add('b');
    EXPECT_EQ(list->GetNext(), &a);
    EXPECT_EQ(list->GetNext(), &b);
    EXPECT_EQ(list->GetNext(), &a);
    EXPECT_EQ(All(*list), "ba");
}

TEST_F(Idle, ConsumersBelongToOneListAtMost) {
    Consumer& a = Add('a');
    Add('b');
    list->Register(&a);
    EXPECT_EQ(All(*list), "ab");
    {
        Consumer& c = Add('c');
        Add('d');
        Add('e');
        Delete(c);  // from the middle
        EXPECT_EQ(All(*list), "abde");
    }
    SIdleConsumerList other;
    other.Register(&a);
    EXPECT_EQ(All(*list), "bde");
    EXPECT_EQ(All(other), "a");
    list->Unregister(&a);  // not here
    EXPECT_EQ(All(other), "a");
    Delete(a);
    EXPECT_EQ(other.GetCount(), 0);
    {
        Consumer late(nullptr, 'c');
        list->Register(&late);
        EXPECT_EQ(list->GetCount(), 4);
    }
    EXPECT_EQ(list->GetCount(), 3);
}

// As quickly as they came: searching from one end alone takes minutes here.
TEST_F(Idle, ManyConsumersLeaveInEitherOrder) {
    constexpr std::size_t kMany = 200000;
    for (const bool lastFirst : {false, true}) {
        SCOPED_TRACE(lastFirst);
        std::vector<std::unique_ptr<SIdleConsumer>> many(kMany);
        for (auto& consumer : many)
            consumer = std::make_unique<SIdleConsumer>(&*list);
        for (std::size_t i = 0; i < kMany; ++i)
            many[lastFirst ? kMany - 1 - i : i].reset();
        EXPECT_EQ(list->GetCount(), 0);
    }
}

TEST_F(Idle, ListMayDieFirst) {
    Consumer& a = Add('a');
    list.reset();
    list.emplace();
    list->Register(&a);
    EXPECT_EQ(All(*list), "a");
}

TEST_F(Idle, RegistrationWithoutMemoryChangesNothing) {
    Consumer& a = Add('a');
    SIdleConsumerList other;
    for (int nth = 1; nth <= 2; ++nth) {
        FailNthAllocation fail(nth, true);
        EXPECT_THROW(other.Register(&a), SEOutOfMemory);
        EXPECT_THROW(Consumer(&other, 'x'), SEOutOfMemory);
    }
    EXPECT_EQ(other.GetCount(), 0);
    EXPECT_EQ(All(*list), "a");
}

// What OnIdle of b does among a, b, c, d; who is called in that pass, and in the next.
TEST_F(Idle, AllSurvivesWhatConsumersDo) {
    struct Scene {
        Idle& test;
        SIdleConsumerList& list;
        Consumer &a, &b, &c, &d;
    };
    const struct {
        const char* name;
        void (*action)(Scene&);
        const char* calls;
        const char* afterwards;
    } rows[] = {
        {"unregisters itself", [](Scene& s) { s.list.Unregister(&s.b); }, "abcd", "acd"},
        {"unregisters the one before", [](Scene& s) { s.list.Unregister(&s.a); }, "abcd", "bcd"},
        {"unregisters the next", [](Scene& s) { s.list.Unregister(&s.c); }, "abd", "abd"},
        {"unregisters the last", [](Scene& s) { s.list.Unregister(&s.d); }, "abc", "abc"},
        {"unregisters all",
         [](Scene& s) {
             for (Consumer* consumer : {&s.a, &s.b, &s.c, &s.d})
                 s.list.Unregister(consumer);
         },
         "ab", ""},
        {"deletes itself", [](Scene& s) { s.test.Delete(s.b); }, "abcd", "acd"},
        {"deletes the next two", [](Scene& s) { s.test.Delete(s.c), s.test.Delete(s.d); }, "ab",
         "ab"},
        {"registers another", [](Scene& s) { s.test.Add('e'); }, "abcd", "abcde"},
        {"leaves and returns", [](Scene& s) { s.list.Unregister(&s.b), s.list.Register(&s.b); },
         "abcd", "acdb"},
        {"the last leaves and returns",
         [](Scene& s) { s.list.Unregister(&s.d), s.list.Register(&s.d); }, "abc", "abcd"},
        {"replaces all others",
         [](Scene& s) {
             for (Consumer* consumer : {&s.a, &s.c, &s.d})
                 s.test.Delete(*consumer);
             s.test.Add('e');
         },
         "ab", "be"},
        {"takes the front", [](Scene& s) { s.list.GetNext(); }, "abcd", "bcda"},
        {"takes three from the front",
         [](Scene& s) { s.list.GetNext(), s.list.GetNext(), s.list.GetNext(); }, "abd", "dabc"},
        {"calls all again", [](Scene& s) { s.list.OnIdleAll(1); }, "ab(abcd)cd", "abcd"},
        {"calls the next one", [](Scene& s) { s.list.OnIdleNext(1); }, "ab(a)cd", "bcda"},
        {"deletes the list", [](Scene& s) { s.test.list.reset(); }, "ab", ""},
        {"deletes list and consumers",
         [](Scene& s) {
             s.test.list.reset();
             for (Consumer* consumer : {&s.a, &s.b, &s.c, &s.d})
                 s.test.Delete(*consumer);
         },
         "ab", ""},
        {"throws", [](Scene&) { throw SEConstructor(); }, "ab", "abcd"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        list.emplace();
        Scene scene{*this, *list, Add('a'), Add('b'), Add('c'), Add('d')};
        scene.b.Then([&] {
            const std::string before = g_calls;
            row.action(scene);
            const std::string inner = g_calls.substr(before.size());
            g_calls = inner.empty() ? before : before + "(" + inner + ")";
        });
        Calls();
        try {
            list->OnIdleAll(1);
        } catch (const SEConstructor&) {
        }
        EXPECT_EQ(Calls(), row.calls);
        EXPECT_EQ(list ? All(*list) : "", row.afterwards);
    }
}

// The same for the one consumer that OnIdleNext calls, b behind it.
TEST_F(Idle, NextSurvivesWhatTheConsumerDoes) {
    const struct {
        const char* name;
        void (*action)(Idle_NextSurvivesWhatTheConsumerDoes_Test&, Consumer&);
        const char* afterwards;
    } rows[] = {
        {"unregisters itself", [](auto& test, Consumer& a) { test.list->Unregister(&a); }, "b"},
        {"deletes itself", [](auto& test, Consumer& a) { test.Delete(a); }, "b"},
        {"deletes the list", [](auto& test, Consumer&) { test.list.reset(); }, ""},
        {"calls all", [](auto& test, Consumer&) { test.list->OnIdleAll(1); }, "ba"},
        {"registers another", [](auto& test, Consumer&) { test.Add('c'); }, "bca"},
        {"throws", [](auto&, Consumer&) { throw SEConstructor(); }, "ab"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        list.emplace();
        Consumer& a = Add('a');
        Add('b');
        a.Then([&] { row.action(*this, a); });
        try {
            EXPECT_EQ(list->OnIdleNext(0), 0);
        } catch (const SEConstructor&) {
        }
        EXPECT_EQ(list ? All(*list) : "", row.afterwards);
    }
}

}  // namespace
