// Messages and commands on their way to a handler, beside what does that elsewhere.
#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>

#include <memory>

#include "dispatch.h"

namespace {

using namespace bench;

constexpr UINT kFirstMessage = WM_APP;
constexpr UINT kFirstCommand = 32000;

class SBenchRoot : public SWnd {
    SDECLARE_MESSAGE_MAP(SBenchRoot);

public:
    using SWnd::OnWndMsg;
    const SMsgMap* Map() const { return GetMessageMap(); }
    long sum = 0;

protected:
    // One function for each number, as programs have.
    template <int N>
    LRESULT OnMessage(WPARAM w, LPARAM) {
        sum += static_cast<long>(w);
        return N;
    }
    template <int N>
    void OnCommand() {
        benchmark::DoNotOptimize(N);
        ++sum;
    }
};
class SBenchMiddle : public SBenchRoot {
    SDECLARE_MESSAGE_MAP(SBenchMiddle);
};
class SBenchLeaf : public SBenchMiddle {
    SDECLARE_MESSAGE_MAP(SBenchLeaf);
};

// clang-format off
#define MESSAGE(N) SOnMessage<&SBenchRoot::OnMessage<N>>(kFirstMessage + N)
#define COMMAND(N) SOnCommand<&SBenchRoot::OnCommand<N>>(kFirstCommand + N)
SIMPLEMENT_MESSAGE_MAP(SBenchRoot, SWnd, BENCH_ROOT_MESSAGES(MESSAGE), BENCH_ROOT_COMMANDS(COMMAND));
#undef MESSAGE
#undef COMMAND
#define MESSAGE(N) SOnMessage<&SBenchMiddle::OnMessage<N>>(kFirstMessage + N)
#define COMMAND(N) SOnCommand<&SBenchMiddle::OnCommand<N>>(kFirstCommand + N)
SIMPLEMENT_MESSAGE_MAP(SBenchMiddle, SBenchRoot, BENCH_MIDDLE_MESSAGES(MESSAGE), BENCH_MIDDLE_COMMANDS(COMMAND));
#undef MESSAGE
#undef COMMAND
#define MESSAGE(N) SOnMessage<&SBenchLeaf::OnMessage<N>>(kFirstMessage + N)
#define COMMAND(N) SOnCommand<&SBenchLeaf::OnCommand<N>>(kFirstCommand + N)
SIMPLEMENT_MESSAGE_MAP(SBenchLeaf, SBenchMiddle, BENCH_LEAF_MESSAGES(MESSAGE), BENCH_LEAF_COMMANDS(COMMAND));
// clang-format on

// The address is not known to the compiler: it makes the calls as a program's.
template <class T>
T* Hidden(T& object) {
    T* pointer = &object;
    benchmark::DoNotOptimize(pointer);
    return pointer;
}

void RootMessage(benchmark::State& state) {
    SBenchLeaf leaf;
    SBenchRoot* const target = Hidden<SBenchRoot>(leaf);
    LRESULT result = 0;
    SendOne(state, leaf.sum, [&] { target->OnWndMsg(kFirstMessage + 3, 1, 2, &result); });
}

void MixedMessages(benchmark::State& state) {
    SBenchLeaf leaf;
    SBenchRoot* const target = Hidden<SBenchRoot>(leaf);
    LRESULT result = 0;
    SendMixed<kMessages>(state, leaf.sum, [&](unsigned kind) {
        target->OnWndMsg(kFirstMessage + kind, 1, 2, &result);
    });
}

void Unhandled(benchmark::State& state) {
    SBenchLeaf leaf;
    SBenchRoot* const target = Hidden<SBenchRoot>(leaf);
    LRESULT result = 0;
    SendUnhandled(state,
                  [&] { return target->OnWndMsg(kFirstMessage + kUnhandled, 1, 2, &result) != 0; });
}

void MixedCommands(benchmark::State& state) {
    SBenchLeaf leaf;
    SCmdTarget* const target = Hidden<SCmdTarget>(leaf);
    SendMixed<kCommands>(state, leaf.sum, [&](unsigned kind) {
        target->OnCmdMsg(kFirstCommand + kind, 0, nullptr, nullptr);
    });
}

// --- Limits -------------------------------------------------------------------------------------

struct Receiver {
    virtual ~Receiver() = default;
    virtual long Hit(long w, long l) = 0;
    long sum = 0;
};
struct Called : Receiver {
    [[gnu::noinline]] long Hit(long w, long) override { return sum += w; }
};
// A second one, without which the compiler knows whose function is called.
struct AlsoCalled : Receiver {
    [[gnu::noinline]] long Hit(long, long l) override { return sum += l; }
};

// Which of the two is known to nobody but us.
Receiver* MakeReceiver() {
    int which = 0;
    benchmark::DoNotOptimize(which);
    if (which == 0) return new Called;
    return new AlsoCalled;
}

void VirtualCall(benchmark::State& state) {
    const std::unique_ptr<Receiver> target(MakeReceiver());
    SendOne(state, target->sum, [&] { target->Hit(1, 2); });
}

template <int N>
[[gnu::noinline]] long Handle(Called& called, long w) {
    benchmark::DoNotOptimize(N);
    return called.sum += w;
}

// clang-format off
#define CASE(N) [](Called& called, long w) { return Handle<N>(called, w); }
using Handler = long (*)(Called& called, long w);
constexpr Handler kMessageTable[] = {BENCH_ROOT_MESSAGES(CASE), BENCH_MIDDLE_MESSAGES(CASE), BENCH_LEAF_MESSAGES(CASE)};
constexpr Handler kCommandTable[] = {BENCH_ROOT_COMMANDS(CASE), BENCH_MIDDLE_COMMANDS(CASE), BENCH_LEAF_COMMANDS(CASE)};
#undef CASE
// clang-format on

// As a switch over numbers that follow one another.
template <unsigned Count>
void TableCalls(benchmark::State& state) {
    Called called;
    const Handler* const table =
        Hidden<const Handler>(Count == kMessages ? kMessageTable[0] : kCommandTable[0]);
    SendMixed<Count>(state, called.sum, [&](unsigned kind) { table[kind](called, 1); });
}

// --- Not from the cache -------------------------------------------------------------------------

constexpr UINT kSameSlot = kFirstMessage + 3 + 0x100;

// Each drives the other out of its slot.
void UncachedMessage(benchmark::State& state) {
    SBenchLeaf leaf;
    SBenchRoot* const target = Hidden<SBenchRoot>(leaf);
    LRESULT result = 0;
    for (auto _ : state) {
        target->OnWndMsg(kFirstMessage + 3, 1, 2, &result);
        target->OnWndMsg(kSameSlot, 1, 2, &result);
    }
    Expect(leaf.sum == static_cast<long>(state.iterations()), "one of two is handled");
}

void Walk(benchmark::State& state) {
    SBenchLeaf leaf;
    const SMsgMap* const map = Hidden<SBenchRoot>(leaf)->Map();
    const auto find = [map](UINT message) {
        const SMsgEntry* row = nullptr;
        for (const SMsgMap* at = map; at != nullptr && row == nullptr; at = at->base())
            row = SFindMessageEntry(at->entries, message, 0, 0);
        return row;
    };
    for (auto _ : state) {
        if (const SMsgEntry* const row = find(kFirstMessage + 3)) row->handler.both(&leaf, 1, 2);
        if (const SMsgEntry* const row = find(kSameSlot)) row->handler.both(&leaf, 1, 2);
    }
    Expect(leaf.sum == static_cast<long>(state.iterations()), "one of two is handled");
}

// --- Along the routing --------------------------------------------------------------------------

constexpr UINT kRouted = kFirstCommand + 200;

class SBenchApp : public SWinApp {
    SDECLARE_MESSAGE_MAP(SBenchApp);

public:
    long sum = 0;

private:
    void OnRouted() { ++sum; }
};
SIMPLEMENT_MESSAGE_MAP(SBenchApp, SWinApp, SOnCommand<&SBenchApp::OnRouted>(kRouted));

// A frame with a view, in memory.
struct Program {
    Program() {
        setenv("BRCORE8_DISPLAY", "memory", 1);
        Expect(frame.CreateFrame("Bench"), "a frame");
        Expect(view.Create("S_CliDrawWnd", nullptr, WS_VISIBLE, RECT{}, &frame, SFrameWnd::ViewId),
               "a view");
    }
    SBenchApp app;
    SFrameWnd frame;
    SBenchLeaf view;
};

// The frame and the view are asked before the application, which handles it.
void RoutedCommand(benchmark::State& state) {
    Program program;
    SCmdTarget* const target = Hidden<SCmdTarget>(program.frame);
    SendOne(state, program.app.sum, [&] { target->OnCmdMsg(kRouted, 0, nullptr, nullptr); });
}

void ThreeVirtualCalls(benchmark::State& state) {
    const std::unique_ptr<Receiver> targets[] = {std::unique_ptr<Receiver>(MakeReceiver()),
                                                 std::unique_ptr<Receiver>(MakeReceiver()),
                                                 std::unique_ptr<Receiver>(MakeReceiver())};
    SendOne(state, targets[2]->sum, [&] {
        for (const std::unique_ptr<Receiver>& target : targets)
            target->Hit(1, 2);
    });
}

// From the platform's call to the handler: the wrapper is found by its handle.
void SentMessage(benchmark::State& state) {
    Program program;
    const HWND window = program.view.GetHandle();
    SendOne(state, program.view.sum, [&] { ::SendMessageA(window, kFirstMessage + 3, 1, 2); });
}

const bool registered[] = {
    Compete("dispatch/root_message", {{"brcore8", &RootMessage},
                                      {"Qt sendEvent", &qt::RootMessage},
                                      {"Qt signal", &qt::SignalRootMessage},
                                      {"wx event table", &wx::RootMessage},
                                      {"(virtual call)", &VirtualCall}}),
    Compete("dispatch/mixed_16_messages", {{"brcore8", &MixedMessages},
                                           {"Qt sendEvent", &qt::MixedMessages},
                                           {"Qt signals", &qt::SignalMixedMessages},
                                           {"wx event table", &wx::MixedMessages},
                                           {"(array of functions)", &TableCalls<kMessages>}}),
    Compete("dispatch/unhandled_message", {{"brcore8", &Unhandled},
                                           {"Qt sendEvent", &qt::Unhandled},
                                           {"wx event table", &wx::Unhandled},
                                           {"(Qt signal of nobody)", &qt::SignalUnhandled}}),
    Compete("dispatch/mixed_90_commands", {{"brcore8", &MixedCommands},
                                           {"Qt sendEvent", &qt::MixedCommands},
                                           {"Qt actions", &qt::SignalMixedCommands},
                                           {"wx event table", &wx::MixedCommands},
                                           {"(array of functions)", &TableCalls<kCommands>}}),
    Compete("dispatch/uncached_pair", {{"brcore8", &UncachedMessage}, {"(walk)", &Walk}}),
    Compete("dispatch/routed_command",
            {{"brcore8", &RoutedCommand}, {"(three virtual calls)", &ThreeVirtualCalls}}),
    Compete("dispatch/sent_message", {{"brcore8", &SentMessage},
                                      {"Qt sendEvent", &qt::RootMessage},
                                      {"wx event table", &wx::RootMessage}}),
};

}  // namespace
