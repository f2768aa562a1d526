// Windows by the thousand: from handles to wrappers, and the idle passes.
#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "dispatch.h"

namespace {

using namespace bench;

constexpr int kWindows = 1000;

class SBenchChild : public SWnd {
    SDECLARE_MESSAGE_MAP(SBenchChild);

public:
    long updates = 0;

private:
    void OnIdleUpdate(BOOL) { ++updates; }
};
SIMPLEMENT_MESSAGE_MAP(SBenchChild, SWnd, SOnIdleUpdate<&SBenchChild::OnIdleUpdate>());

// A main window that shows a thousand children, in memory.
struct Program {
    Program() {
        setenv("BRCORE8_DISPLAY", "memory", 1);
        Expect(frame.CreateFrame("Bench"), "a frame");
        app.SetMainWnd(&frame);
        for (SBenchChild& child : children) {
            Expect(child.Create("S_CtrlWnd", nullptr, WS_VISIBLE, RECT{0, 0, 9, 9}, &frame, 1),
                   "a child");
            handles.push_back(child.GetHandle());
        }
        frame.ShowWindow(SW_SHOWNOACTIVATE);
    }
    SWinApp app;
    SFrameWnd frame;
    std::vector<SBenchChild> children{kWindows};
    std::vector<HWND> handles;
};

// --- Handles ------------------------------------------------------------------------------------

template <class Find>
void FindMixed(benchmark::State& state, const Program& program, Find find) {
    Mixed<kWindows> mixed;
    bool isWrong = false;
    for (auto _ : state) {
        const unsigned which = mixed.Next();
        isWrong |= find(program.handles[which]) != &program.children[which];
    }
    Expect(!isWrong, "each handle leads to its wrapper");
}

void Permanent(benchmark::State& state) {
    const Program program;
    FindMixed(state, program, [](HWND handle) { return SWnd::FromHandlePermanent(handle); });
}

template <class Map>
void PermanentIn(benchmark::State& state) {
    const Program program;
    Map map;
    for (const SBenchChild& child : program.children)
        map[child.GetHandle()] = &child;
    FindMixed(state, program, [&](HWND handle) { return map.find(handle)->second; });
}

// A thousand handles that nobody has wrapped, and what the idle pass does with their wrappers.
void Temporary(benchmark::State& state) {
    SWinApp app;
    for (auto _ : state) {
        for (std::uintptr_t i = 1; i <= kWindows; ++i)
            benchmark::DoNotOptimize(SWnd::FromHandle(reinterpret_cast<HWND>(i << 8)));
        app.OnIdle(1);
    }
    Expect(SWnd::GetHandleMap().GetTemporaryCount() == 0, "none is left");
}

template <class Map>
void TemporaryIn(benchmark::State& state) {
    Map map;
    for (auto _ : state) {
        for (std::uintptr_t i = 1; i <= kWindows; ++i) {
            const HWND handle = reinterpret_cast<HWND>(i << 8);
            if (map.find(handle) == map.end()) map.emplace(handle, std::make_unique<SWnd>());
        }
        benchmark::DoNotOptimize(map);
        map.clear();
    }
}

// --- Idle updates -------------------------------------------------------------------------------

void IdleUpdate(benchmark::State& state) {
    Program program;
    for (auto _ : state)
        program.app.OnIdle(0);
    Expect(program.children[7].updates == static_cast<long>(state.iterations()), "each is told");
}

using Permanents = std::unordered_map<HWND, const SWnd*>;
using OrderedPermanents = std::map<HWND, const SWnd*>;
using Temporaries = std::unordered_map<HWND, std::unique_ptr<SWnd>>;
using OrderedTemporaries = std::map<HWND, std::unique_ptr<SWnd>>;

const bool registered[] = {
    Compete("windows/from_handle_permanent_1k", {{"brcore8", &Permanent},
                                                 {"std::unordered_map", &PermanentIn<Permanents>},
                                                 {"std::map", &PermanentIn<OrderedPermanents>}}),
    Compete("windows/from_handle_temporary_1k", {{"brcore8", &Temporary},
                                                 {"std::unordered_map", &TemporaryIn<Temporaries>},
                                                 {"std::map", &TemporaryIn<OrderedTemporaries>}}),
    Compete("windows/idle_update_1k",
            {{"brcore8", &IdleUpdate}, {"Qt sendEvent", &qt::Update1000}}),
};

}  // namespace
