// The work of the dispatch workloads, the same for every contestant: a class with two ancestors
// each of which has handlers, and what is sent to an object of it. A handler adds what came with
// its message to the object's sum.
//
// Limits stand in parentheses: they do less than the task, such as calling what is known
// beforehand.
#ifndef BRCORE8_BENCH_DISPATCH_H
#define BRCORE8_BENCH_DISPATCH_H

#include <array>
#include <cstdint>

#include "bench.h"

namespace bench {

constexpr unsigned kMessages =
    16;  // 0 to 5 are the root's, to 10 the middle's, the rest the leaf's
constexpr unsigned kCommands = 90;  // thirty each, the root's first
constexpr unsigned kUnhandled = 77;

// Which comes next; the same for everybody, and in no order that is easily foretold.
template <unsigned Kinds>
class Mixed {
public:
    Mixed() {
        std::uint32_t random = 1;
        for (unsigned& kind : kinds_) {
            random = random * 1664525 + 1013904223;
            kind = (random >> 8) % Kinds;
        }
    }
    unsigned Next() noexcept { return kinds_[next_++ % kinds_.size()]; }

private:
    std::array<unsigned, 1024> kinds_;
    std::size_t next_ = 0;
};

// Runs `send` for each iteration with a message; every one adds 1 to `sum`.
template <unsigned Kinds, class Send>
void SendMixed(benchmark::State& state, const long& sum, Send send) {
    Mixed<Kinds> mixed;
    const long before = sum;
    for (auto _ : state)
        send(mixed.Next());
    Expect(sum - before == static_cast<long>(state.iterations()), "every message handled once");
}

template <class Send>
void SendOne(benchmark::State& state, const long& sum, Send send) {
    const long before = sum;
    for (auto _ : state)
        send();
    Expect(sum - before == static_cast<long>(state.iterations()), "every message handled once");
}

template <class Send>
void SendUnhandled(benchmark::State& state, Send send) {
    bool isHandled = false;
    for (auto _ : state)
        isHandled |= send();
    Expect(!isHandled, "nobody handles it");
}

namespace qt {
void RootMessage(benchmark::State& state);
void MixedMessages(benchmark::State& state);
void Unhandled(benchmark::State& state);
void MixedCommands(benchmark::State& state);
void SignalRootMessage(benchmark::State& state);
void SignalMixedMessages(benchmark::State& state);
void SignalUnhandled(benchmark::State& state);
void SignalMixedCommands(benchmark::State& state);
void Update1000(benchmark::State& state);
}  // namespace qt

namespace wx {
void RootMessage(benchmark::State& state);
void MixedMessages(benchmark::State& state);
void Unhandled(benchmark::State& state);
void MixedCommands(benchmark::State& state);
}  // namespace wx

}  // namespace bench

// Lists of numbers for the tables: M(0) to M(5) and so on.
#define BENCH_ROOT_MESSAGES(M) M(0), M(1), M(2), M(3), M(4), M(5)
#define BENCH_MIDDLE_MESSAGES(M) M(6), M(7), M(8), M(9), M(10)
#define BENCH_LEAF_MESSAGES(M) M(11), M(12), M(13), M(14), M(15)
#define BENCH_TEN(M, T) \
    M(T##0), M(T##1), M(T##2), M(T##3), M(T##4), M(T##5), M(T##6), M(T##7), M(T##8), M(T##9)
#define BENCH_ROOT_COMMANDS(M) BENCH_TEN(M, ), BENCH_TEN(M, 1), BENCH_TEN(M, 2)
#define BENCH_MIDDLE_COMMANDS(M) BENCH_TEN(M, 3), BENCH_TEN(M, 4), BENCH_TEN(M, 5)
#define BENCH_LEAF_COMMANDS(M) BENCH_TEN(M, 6), BENCH_TEN(M, 7), BENCH_TEN(M, 8)

#endif
