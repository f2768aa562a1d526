// Who has the keyboard and the mouse.

#include <utility>

#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

// Focus and activation are a thread's own affair.
bool IsForeign(HWND handle) noexcept {
    const Window* const window = Find(handle);
    if (window == nullptr || window->thread == &ThisThread()) return false;
    SetLastError(ERROR_ACCESS_DENIED);
    return true;
}

bool CanTake(HWND handle) noexcept {
    const Window* at = Find(handle);
    if (at == nullptr || IsForeign(handle)) return false;
    for (; at != nullptr; at = at->parent)
        if ((at->style & WS_DISABLED) != 0 || at->isDestroyed) return false;
    return true;
}

HWND TopOf(HWND handle) noexcept {
    return GetAncestor(handle, GA_ROOT);
}

POINT g_cursorPoint{};
HCURSOR g_cursor = nullptr;
HWND g_foreground = nullptr;

}  // namespace

namespace brcore8::desktop {

void SetCursorPlace(POINT at) noexcept {
    const std::lock_guard guard(Lock());
    g_cursorPoint = at;
}

}  // namespace brcore8::desktop

namespace {

HWND Activate(HWND handle, bool isClick) {
    Thread& thread = ThisThread();
    const HWND old = thread.active;
    if (handle == old) return old;
    if (handle != nullptr && !CanTake(handle)) return nullptr;
    thread.active = handle;
    {
        const std::lock_guard guard(Lock());
        if (handle != nullptr || g_foreground == old) g_foreground = handle;
    }
    if (old != nullptr) {
        SendMessageA(old, WM_NCACTIVATE, 0, 0);
        SendMessageA(old, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(handle));
    }
    if (handle != nullptr && thread.active == handle) {
        if (Screen* const screen = TheScreen()) screen->Activate(handle);
        SendMessageA(handle, WM_NCACTIVATE, 1, 0);
        SendMessageA(handle, WM_ACTIVATE, isClick ? WA_CLICKACTIVE : WA_ACTIVE,
                     reinterpret_cast<LPARAM>(old));
    }
    return old;
}

}  // namespace

void brcore8::desktop::ActivateTop(HWND handle, bool isClick) {
    SetWindowPos(handle, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Activate(handle, isClick);
}

HWND SetActiveWindow(HWND handle) {
    return Activate(handle, false);
}

HWND GetActiveWindow() noexcept {
    return ThisThread().active;
}

BOOL SetForegroundWindow(HWND handle) {
    if (Find(handle) == nullptr) return 0;
    if (IsForeign(handle)) {
        AddNews({kActivated, handle, {}});
    } else {
        BringWindowToTop(handle);
        SetActiveWindow(handle);
    }
    return 1;
}

HWND GetForegroundWindow() noexcept {
    const std::lock_guard guard(Lock());
    return IsWindow(g_foreground) ? g_foreground : nullptr;
}

HWND SetFocus(HWND handle) {
    Thread& thread = ThisThread();
    const HWND old = thread.focus;
    if (handle == old) return old;
    if (handle != nullptr && !CanTake(handle)) return nullptr;
    if (handle != nullptr && TopOf(handle) != thread.active) {
        SetActiveWindow(TopOf(handle));
        if (thread.focus == handle || Find(handle) == nullptr) return old;
    }
    // Activation may have put it elsewhere meanwhile: that window loses it now.
    const HWND losing = std::exchange(thread.focus, handle);
    if (losing != nullptr) SendMessageA(losing, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    if (handle != nullptr && thread.focus == handle)
        SendMessageA(handle, WM_SETFOCUS, reinterpret_cast<WPARAM>(losing), 0);
    return old;
}

HWND GetFocus() noexcept {
    return ThisThread().focus;
}

HWND SetCapture(HWND handle) {
    Thread& thread = ThisThread();
    if (handle != nullptr && Find(handle) == nullptr) return nullptr;
    HWND old = nullptr;
    {
        // Whoever brings input asks whose the mouse is.
        const std::lock_guard guard(Lock());
        old = std::exchange(thread.capture, handle);
    }
    if (Screen* const screen = TheScreen()) screen->Capture(handle);
    if (old != nullptr && old != handle)
        SendMessageA(old, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(handle));
    return old;
}

BOOL ReleaseCapture() {
    SetCapture(nullptr);
    return 1;
}

HWND GetCapture() noexcept {
    return ThisThread().capture;
}

short GetKeyState(int key) noexcept {
    if (key < 0 || key > 255) return 0;
    const BYTE state = ThisThread().keys[key];
    return static_cast<short>(((state & 0x80) != 0 ? -0x80 : 0) | (state & 1));
}

// --- The mouse -----------------------------------------------------------------------------------

BOOL GetCursorPos(POINT* point) noexcept {
    const std::lock_guard guard(Lock());
    *point = g_cursorPoint;
    return 1;
}

BOOL SetCursorPos(int x, int y) {
    // Whoever lies there learns of it, as of any move.
    Input moved;
    moved.message = WM_MOUSEMOVE;
    moved.at = {x, y};
    AddInput(moved);
    if (Screen* const screen = TheScreen()) screen->SetPointer({x, y});
    return 1;
}

HCURSOR SetCursor(HCURSOR cursor) noexcept {
    const std::lock_guard guard(Lock());
    const HCURSOR old = g_cursor;
    g_cursor = cursor;
    if (old != cursor)
        if (Screen* const screen = TheScreen())
            screen->SetCursor(
                static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(cursor) & 0xFFFF));
    return old;
}

HCURSOR GetCursor() noexcept {
    const std::lock_guard guard(Lock());
    return g_cursor;
}

// The platform's cursors are known by their numbers.
HCURSOR LoadCursorA(HINSTANCE module, const char* name) noexcept {
    const auto number = reinterpret_cast<std::uintptr_t>(name);
    const bool isKnown =
        (number >= 32512 && number <= 32515) || (number >= 32642 && number <= 32649);
    if (module != nullptr || !isKnown) {
        SetLastError(ERROR_INVALID_CURSOR_HANDLE);
        return nullptr;
    }
    return reinterpret_cast<HCURSOR>(0x10000 + number);
}
