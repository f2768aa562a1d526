// Which handler a window's message has, and how its parameters reach it.

#include <brcore8/graphics/dc.h>
#include <brcore8/window/menu.h>
#include <brcore8/window/wnd.h>

#include "routing/row_cache.h"

#include <atomic>

namespace {

// Counted cheaply: an increment that meets another thread's may be lost.
constinit std::atomic<unsigned long long> g_hits{0};
constinit std::atomic<unsigned long long> g_misses{0};

void Count(std::atomic<unsigned long long>& counter) noexcept {
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

const SMsgEntry* FindRow(const SMsgMap* map, UINT message) {
    const SMsgEntry* row = nullptr;
    if (brcore8::g_messageRows.Find(brcore8::MessagePlace(map, message), map, message, &row))
        [[likely]] {
        Count(g_hits);
        return row;
    }
    Count(g_misses);
    return brcore8::WalkForMessage(map, message);
}

SWnd* WindowOf(std::uintptr_t parameter) {
    return SWnd::FromHandle(reinterpret_cast<HWND>(parameter));
}

SDC* DeviceOf(WPARAM parameter) {
    return SDC::FromHandle(reinterpret_cast<HDC>(parameter));
}

SMenu* MenuOf(std::uintptr_t parameter) {
    return SMenu::FromHandle(reinterpret_cast<HMENU>(parameter));
}

UINT Low(std::uintptr_t parameter) noexcept {
    return LOWORD(parameter);
}

UINT High(std::uintptr_t parameter) noexcept {
    return HIWORD(parameter);
}

int SignedLow(std::uintptr_t parameter) noexcept {
    return static_cast<std::int16_t>(LOWORD(parameter));
}

int SignedHigh(std::uintptr_t parameter) noexcept {
    return static_cast<std::int16_t>(HIWORD(parameter));
}

// A handler that leaves its message to others may have ended the window, and its wrapper, which is
// only compared: then there are no others, and the result is 0.
int EndedMeanwhile(HWND handle, const SWnd* wrapper, LRESULT* result) {
    if (handle == nullptr || SWnd::FromHandlePermanent(handle) == wrapper) return 0;
    if (result != nullptr) *result = 0;
    return 1;
}

}  // namespace

SMessageCacheStats SGetMessageCacheStats() noexcept {
    const unsigned long long hits = g_hits.load(std::memory_order_relaxed);
    return {hits + g_misses.load(std::memory_order_relaxed), hits};
}

int SWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND || message == WM_NOTIFY)
        return OnControlMsg(message, wParam, lParam, result);
    const SMsgEntry* const row = FindRow(GetMessageMap(), message);
    return row != nullptr ? Dispatch(*row, wParam, lParam, result) : 0;
}

int SWnd::OnControlMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const HWND handle = handle_;
    LRESULT answer = 0;
    int handled = 0;
    if (message == WM_COMMAND) {
        handled = OnCommand(wParam, lParam);
        if (handled) answer = 1;
    } else {
        auto* const header = reinterpret_cast<NMHDR*>(lParam);
        if (header == nullptr || header->hwndFrom == nullptr) return 0;
        handled = OnNotify(wParam, header, &answer);
    }
    if (!handled) return EndedMeanwhile(handle, this, result);
    if (result != nullptr) *result = answer;
    return 1;
}

// One line a kind: what each carries stands in message_kinds.h. Whether there was a handler to
// call.
int SWnd::Dispatch(const SMsgEntry& row, WPARAM w, LPARAM lParam, LRESULT* answer) {
    const SMsgHandler& call = row.handler;
    const auto l = static_cast<std::uintptr_t>(lParam);
    const auto kind = row.message == kRegisteredMessage ? 12 : row.signature.kind;
    LRESULT result = 0;
    // clang-format off
    switch (kind) {
        // The result is the handler's; one that returns nothing gives 0.
        case 1: case 7: case 23: result = call.dc(this, DeviceOf(w)); break;
        case 2: case 16: result = call.word(this, w); break;
        case 3: case 10: result = call.windowHit(this, WindowOf(w), SignedLow(l), High(l)); break;
        case 5: result = call.dcWindow(this, DeviceOf(w), WindowOf(l)); break;
        case 8: case 31: result = call.oneWindowOne(this, Low(w), WindowOf(l), High(w)); break;
        case 9: result = call.two(this, Low(w), High(w)); break;
        case 11: case 34: case 39: case 45: result = call.value(this, lParam); break;
        case 12: case 17: case 21: case 36: case 40: result = call.both(this, w, lParam); break;
        case 13: result = call.twoMenu(this, Low(w), High(w), MenuOf(l)); break;
        case 14: case 15: case 38: result = call.none(this); break;
        case 18: result = call.two(this, Low(l), High(l)); break;
        case 19: case 20: result = call.wordTwo(this, w, Low(l), High(l)); break;
        case 22: {
            const int own = handle_ == reinterpret_cast<HWND>(l);
            result = call.windows(this, own, WindowOf(l), WindowOf(w));
            break;
        }
        case 24: result = call.menu(this, MenuOf(w)); break;
        case 25: result = call.menuTwo(this, MenuOf(w), Low(l), High(l)); break;
        case 26: result = call.window(this, WindowOf(w)); break;
        case 27: result = call.windowTwo(this, WindowOf(w), Low(l), High(l)); break;
        case 28: result = call.windowPoint(this, WindowOf(w), SignedLow(l), SignedHigh(l)); break;
        case 29: result = call.windowValue(this, WindowOf(w), lParam); break;
        case 30: result = call.wordWindow(this, w, WindowOf(l)); break;
        case 32: result = call.pointWindow(this, SignedLow(w), SignedHigh(w), WindowOf(l)); break;
        case 33: result = call.point(this, SignedLow(w), SignedHigh(w)); break;
        case 37: result = call.point(this, SignedLow(l), SignedHigh(l)); break;
        case 47: result = call.window(this, WindowOf(l)); break;
        case 51: result = call.twoValue(this, Low(w), High(w), lParam); break;
        case 52: result = call.wordPoint(this, w, SignedLow(l), SignedHigh(l)); break;
        case 35: case 46: call.both(this, w, lParam); result = 1; break;
        case 48: {
            const HWND handle = handle_;
            result = call.four(this, Low(w), High(w), Low(l), High(l));
            if (result == 0) return EndedMeanwhile(handle, this, answer);
            break;
        }
        default: return 0;
    }
    // clang-format on
    if (answer != nullptr) *answer = result;
    return 1;
}
