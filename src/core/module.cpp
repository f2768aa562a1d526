#include <brcore8/core/module.h>
#include <brcore8/platform/resources.h>

#include <atomic>
#include <utility>

namespace {

// Null stands for the library's own state.
constinit std::atomic<SModuleState*> g_currentState{nullptr};

}  // namespace

void SModuleState::Init(HINSTANCE instance) noexcept {
    if (initialized_ != 0) return;
    instance_ = instance;
    resInstance_ = instance;
    initialized_ = 1;
}

HINSTANCE SModuleState::SetResInstance(HINSTANCE instance) noexcept {
    return instance != nullptr ? std::exchange(resInstance_, instance) : nullptr;
}

HINSTANCE SModuleState::SetLangResInstance(HINSTANCE instance) noexcept {
    return instance != nullptr ? std::exchange(langResInstance_, instance) : nullptr;
}

SModuleState* SCoreGetModuleState() {
    // Made on first request, since static initialisers may be the first to load a string.
    static SModuleState state = [] {
        SModuleState own;
        own.Init(SThisModule());
        return own;
    }();
    return &state;
}

SModuleState* SGetModuleState() {
    SModuleState* const state = g_currentState.load(std::memory_order_acquire);
    return state != nullptr ? state : SCoreGetModuleState();
}

SModuleState* SSetModuleState(SModuleState* state) {
    SModuleState* const previous = g_currentState.exchange(state, std::memory_order_acq_rel);
    return previous != nullptr ? previous : SCoreGetModuleState();
}

HINSTANCE brcore8::ResourceInstance() {
    const HINSTANCE instance = SGetModuleState()->GetResInstance();
    return instance != nullptr ? instance : SThisModule();
}
