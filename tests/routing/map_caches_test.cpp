// What is found in message maps is remembered: the answers are those of a walk over the rows, for
// whichever maps, in every order, from several threads, and when modules come and go.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "plugin.h"

namespace {

constexpr int kHandlers = 24;
constexpr std::uintptr_t kReturning = 12, kCommandReturning = 38;

// Its map is any; its handlers answer with their number.
class STestAnyMap : public SWnd {
public:
    using SWnd::OnWndMsg;
    explicit STestAnyMap(const SMsgMap* map) : map_(map) {}
    const SMsgMap* GetMessageMap() const override { return map_; }

    template <int N>
    static LRESULT Message(SCmdTarget*, WPARAM, LPARAM) {
        return N + 1;
    }
    template <int N>
    static LRESULT Command(SCmdTarget*) {
        return N + 1;
    }

private:
    const SMsgMap* map_;
};

template <int... N>
SMsgHandler MessageHandler(int number, std::integer_sequence<int, N...>) {
    static constexpr SMsgHandler all[] = {SMsgHandler(&STestAnyMap::Message<N>)...};
    return all[number];
}
template <int... N>
SMsgHandler CommandHandler(int number, std::integer_sequence<int, N...>) {
    static constexpr SMsgHandler all[] = {SMsgHandler(&STestAnyMap::Command<N>)...};
    return all[number];
}
constexpr auto kNumbers = std::make_integer_sequence<int, kHandlers>();

UINT g_registered[4] = {0xC001, 0xC002, 0xC101, 0xFFFF};

// Three maps, each on the one before, of random rows that overlap. They stay where they are.
class Chain {
public:
    explicit Chain(std::mt19937& random) : random_(random) {
        for (std::size_t level = 0; level < rows_.size(); ++level) {
            for (int i = Below(40); i > 0; --i)
                rows_[level].push_back(Below(2) ? CommandRow() : MessageRow());
            rows_[level].emplace_back();
        }
        maps_[0] = {[]() -> const SMsgMap* { return nullptr; }, rows_[0].data()};
        for (std::size_t level = 1; level < rows_.size(); ++level)
            maps_[level] = {BaseOf(level), rows_[level].data()};
    }
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;

    const SMsgMap* Leaf() const { return &maps_[2]; }

    // By a walk: the answer of the first row's handler, 0 without a row.
    LRESULT Message(UINT message) const {
        for (std::size_t level = rows_.size(); level-- > 0;)
            for (const SMsgEntry& row : rows_[level]) {
                if (row.signature.kind == 0) break;
                const bool isIt =
                    message < kRegisteredMessage
                        ? row.message == message && row.code == 0 && row.firstId == 0
                        : row.message == kRegisteredMessage && *row.signature.registered == message;
                if (isIt) return row.handler.both(nullptr, 0, 0);
            }
        return 0;
    }
    LRESULT Command(UINT message, UINT code, UINT id) const {
        for (std::size_t level = rows_.size(); level-- > 0;)
            if (const SMsgEntry* const row =
                    SFindMessageEntry(rows_[level].data(), message, code, id))
                return row->handler.none(nullptr);
        return 0;
    }

private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    SMsgEntry MessageRow() {
        SMsgEntry row;
        row.handler = MessageHandler(Below(kHandlers), kNumbers);
        if (Below(5) == 0) {
            row.message = kRegisteredMessage;
            row.signature = SMsgSignature(&g_registered[Below(4)]);
        } else {
            row.message = static_cast<UINT>(0x400 + Below(8) + 0x100 * Below(2));
            row.signature = SMsgSignature(kReturning);
        }
        return row;
    }
    SMsgEntry CommandRow() {
        constexpr UINT codes[] = {0, 0, 0, 1, 0xFFFF, kUpdateCode};
        SMsgEntry row;
        row.message = Below(4) ? UINT{WM_COMMAND} : UINT{WM_NOTIFY};
        row.code = codes[Below(6)];
        row.firstId = static_cast<UINT>(Below(60));
        row.lastId = row.firstId + static_cast<UINT>(Below(3) ? 0 : Below(30));
        row.signature = SMsgSignature(kCommandReturning);
        row.handler = CommandHandler(Below(kHandlers), kNumbers);
        return row;
    }

    // The function of a map takes no argument: there is one for each place in the row of chains.
    static constexpr std::size_t kMaps = 64;
    static inline std::array<const SMsgMap*, kMaps> s_maps{};
    static inline std::size_t s_count = 0;
    template <std::size_t N>
    static const SMsgMap* Base() {
        return s_maps[N];
    }
    template <std::size_t... N>
    static auto BaseFunction(std::size_t number, std::index_sequence<N...>) {
        static constexpr const SMsgMap* (*all[])() = {&Chain::Base<N>...};
        return all[number];
    }
    const SMsgMap* (*BaseOf(std::size_t level))() {
        const std::size_t number = s_count++ % kMaps;
        s_maps[number] = &maps_[level - 1];
        return BaseFunction(number, std::make_index_sequence<kMaps>());
    }

    std::mt19937& random_;
    std::array<std::vector<SMsgEntry>, 3> rows_;
    std::array<SMsgMap, 3> maps_{};
};

LRESULT AskMessage(STestAnyMap& target, UINT message) {
    LRESULT result = 0;
    return target.OnWndMsg(message, 0, 0, &result) ? result : 0;
}

LRESULT AskCommand(SCmdTarget& target, UINT message, UINT code, UINT id) {
    const bool isUpdate = code == kUpdateCode;
    const int packed = isUpdate ? kUpdateRequest : static_cast<int>(message << 16 | code);
    S_CMDHANDLERINFO info{};
    return target.OnCmdMsg(id, packed, nullptr, &info) ? info.handler.none(nullptr) : 0;
}

// One question at random: what is answered, and what a walk says.
struct Answer {
    std::string question;
    LRESULT got, walked;
};
Answer AskSomething(const Chain& chain, std::mt19937& random) {
    STestAnyMap target(chain.Leaf());
    const unsigned number = static_cast<unsigned>(random());
    if (number % 3 == 0) {
        const UINT message = number % 2 ? g_registered[number / 8 % 4]
                                        : 0x400 + number / 8 % 10 + 0x100 * (number / 256 % 2);
        return {"message " + std::to_string(message), AskMessage(target, message),
                chain.Message(message)};
    }
    constexpr UINT codes[] = {0, 0, 1, 0xFFFF, kUpdateCode, kUpdateCode};
    const UINT code = codes[number / 8 % 6];
    const UINT message =
        code == kUpdateCode || number / 64 % 2 ? UINT{WM_COMMAND} : UINT{WM_NOTIFY};
    const UINT id = number / 128 % 16 == 0 ? 0xFFFFFFFF : number / 2048 % 95;
    return {"command " + std::to_string(message) + ' ' + std::to_string(code) + ' ' +
                std::to_string(id),
            AskCommand(target, message, code, id), chain.Command(message, code, id)};
}

TEST(MapCaches, AnswerAsAWalkOverTheRowsDoes) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int handled = 0;
    for (int round = 0; round < 20; ++round) {
        SFlushMessageCache();
        std::vector<std::unique_ptr<Chain>> chains;
        for (int i = 0; i < 12; ++i)
            chains.push_back(std::make_unique<Chain>(random));
        for (int i = 0; i < 4000; ++i) {
            const Answer answer = AskSomething(*chains[random() % chains.size()], random);
            ASSERT_EQ(answer.got, answer.walked) << answer.question;
            handled += answer.got != 0;
        }
    }
    EXPECT_GT(handled, 8000);
    SFlushMessageCache();
}

TEST(MapCachesThreads, ServeSeveralAtOnce) {
    SFlushMessageCache();
    std::mt19937 random(4);
    std::vector<std::unique_ptr<Chain>> chains;
    for (int i = 0; i < 12; ++i)
        chains.push_back(std::make_unique<Chain>(random));
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (unsigned t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            std::mt19937 own(t);
            for (int i = 0; i < 20000; ++i) {
                const Answer answer = AskSomething(*chains[own() % chains.size()], own);
                wrong += answer.got != answer.walked;
                if (i % 1000 == 0) SFlushMessageCache();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    SFlushMessageCache();
}

// --- Modules ------------------------------------------------------------------------------------

struct Guest {
    const char* path;
    int answer;
};
constexpr Guest kGuests[] = {{BRCORE8_GUEST_1, 1}, {BRCORE8_GUEST_2, 2}};

TEST(MapCaches, AModuleThatComesWhereAnotherWasHasItsOwnAnswers) {
    for (int round = 0; round < 4; ++round) {
        const Guest& guest = kGuests[round % 2];
        SCOPED_TRACE(round);
        const Plugin module(guest.path);
        for (const char* const name : {"AskMessage", "AskCommand"}) {
            auto* const ask = module.Find<int(unsigned)>(name);
            ASSERT_NE(ask, nullptr);
            for (int again = 0; again < 2; ++again) {
                EXPECT_EQ(ask(0), guest.answer) << name;
                EXPECT_EQ(ask(1), guest.answer == 1 ? 1 : 0) << name;
                EXPECT_EQ(ask(2), guest.answer == 2 ? 2 : 0) << name;
            }
        }
    }
}

// Wherever the system puts modules: nothing that was known before one came or went is known after.
TEST(MapCaches, EveryModuleThatComesAndGoesMakesThemForget) {
    class STestHost : public SWnd {
    public:
        using SWnd::OnWndMsg;
    } host;
    const auto isKnown = [&] {
        const auto before = SGetMessageCacheStats().hits;
        host.OnWndMsg(0x499, 0, 0, nullptr);
        return SGetMessageCacheStats().hits != before;
    };
    isKnown();
    EXPECT_TRUE(isKnown());
    {
        const Plugin module(kGuests[0].path);
        ASSERT_NE(module.Find<int(unsigned)>("AskMessage"), nullptr);
        EXPECT_FALSE(isKnown());
        EXPECT_TRUE(isKnown());
    }
    EXPECT_FALSE(isKnown());
    EXPECT_TRUE(isKnown());
}

}  // namespace
