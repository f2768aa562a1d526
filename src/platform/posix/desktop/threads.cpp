// The threads of the desktop, their hooks and timers.

#include <strings.h>

#include <algorithm>
#include <map>
#include <utility>

#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

std::vector<Thread*>& Threads() {
    static std::vector<Thread*>& threads = *new std::vector<Thread*>;
    return threads;
}

// Leaves the desktop when its thread ends; what was sent to it is answered with 0.
struct Membership {
    Thread* thread = nullptr;

    ~Membership() {
        if (thread == nullptr) return;
        for (const HWND handle : AllWindows()) {
            const Window* const window = Find(handle);
            if (window != nullptr && window->thread == thread) DestroyWindow(handle);
        }
        const std::lock_guard guard(Lock());
        // What was in the midst of its end has none to come.
        for (const HWND handle : AllWindows())
            if (Window* const window = Find(handle); window->thread == thread)
                RemoveWindow(*window);
        LeaveClipboard(*thread);
        for (const auto& sent : thread->sent)
            sent->isDone = true;
        thread->sent.clear();
        std::erase(Threads(), thread);
        thread->changed->notify_all();
        delete std::exchange(thread, nullptr);
    }
};

}  // namespace

Thread& ThisThread() {
    static thread_local Membership membership;
    if (membership.thread == nullptr) {
        auto thread = std::make_unique<Thread>();
        thread->id = GetCurrentThreadId();
        const std::lock_guard guard(Lock());
        Threads().push_back(thread.get());
        membership.thread = thread.release();
    }
    return *membership.thread;
}

Thread* FindThread(DWORD id) noexcept {
    for (Thread* const thread : Threads())
        if (thread->id == id) return thread;
    return nullptr;
}

void Wake(Thread& thread) noexcept {
    const std::lock_guard guard(Lock());
    ++thread.changes;
    thread.changed->notify_all();
}

void WakeAll() noexcept {
    const std::lock_guard guard(Lock());
    for (Thread* const thread : Threads())
        Wake(*thread);
}

LRESULT CallHooks(int code, WPARAM wParam, LPARAM lParam) {
    const std::vector<Hook>& hooks = ThisThread().hooks;
    return hooks.empty() ? 0 : hooks.back().procedure(code, wParam, lParam);
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

// --- Hooks ---------------------------------------------------------------------------------------

HHOOK SetWindowsHookExA(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    if (procedure == nullptr || kind != WH_CBT || module != nullptr ||
        thread != GetCurrentThreadId()) {
        SetLastError(ERROR_INVALID_HOOK_FILTER);
        return nullptr;
    }
    static constinit std::uintptr_t last = 0;
    const std::lock_guard guard(Lock());
    const auto handle = reinterpret_cast<HHOOK>(++last);
    ThisThread().hooks.push_back({handle, procedure});
    return handle;
}

BOOL UnhookWindowsHookEx(HHOOK hook) noexcept {
    if (std::erase_if(ThisThread().hooks, [=](const Hook& each) { return each.handle == hook; }) >
        0)
        return 1;
    SetLastError(ERROR_INVALID_HOOK_HANDLE);
    return 0;
}

LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam) {
    const std::vector<Hook>& hooks = ThisThread().hooks;
    for (std::size_t i = 1; i < hooks.size(); ++i)
        if (hooks[i].handle == hook) return hooks[i - 1].procedure(code, wParam, lParam);
    return 0;
}

// --- Timers --------------------------------------------------------------------------------------

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    if (window != nullptr && Find(window) == nullptr) return 0;
    Thread& thread = ThisThread();
    const std::lock_guard guard(Lock());
    if (window == nullptr) id = ++thread.lastTimer;
    const DWORD interval = std::clamp<DWORD>(milliseconds, 10, 0x7FFFFFFF);
    const Timer timer{window, id, interval, Milliseconds() + interval, procedure};
    for (Timer& each : thread.timers) {
        if (each.window == window && each.id == id && each.message == WM_TIMER) {
            each = timer;
            return id != 0 ? id : 1;
        }
    }
    thread.timers.push_back(timer);
    return id != 0 ? id : 1;
}

BOOL KillTimer(HWND window, UINT_PTR id) {
    Thread& thread = ThisThread();
    const std::lock_guard guard(Lock());
    return std::erase_if(thread.timers, [=](const Timer& each) {
               return each.window == window && each.id == id && each.message == WM_TIMER;
           }) > 0;
}

DWORD GetTickCount() noexcept {
    return static_cast<DWORD>(Milliseconds());
}

UINT RegisterWindowMessageA(const char* name) noexcept {
    struct Less {
        bool operator()(const std::string& a, const std::string& b) const {
            return strcasecmp(a.c_str(), b.c_str()) < 0;
        }
    };
    static auto& numbers = *new std::map<std::string, UINT, Less>;
    if (name == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::lock_guard guard(Lock());
    try {
        if (const auto known = numbers.find(name); known != numbers.end()) return known->second;
        const UINT next = 0xC000 + static_cast<UINT>(numbers.size());
        return next <= 0xFFFF ? numbers.try_emplace(name, next).first->second : 0;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
}
