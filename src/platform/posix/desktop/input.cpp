#include "platform/posix/desktop/input.h"

#include <brcore8/platform/posix/input_calls.h>

#include <algorithm>
#include <utility>

#include "platform/posix/desktop/recording.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/sums.h"
#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

constexpr std::size_t kMostInput = 10000;

struct AsyncKeys {
    bool isDown[256] = {};
    bool wasPressed[256] = {};
};

// Under the lock.
AsyncKeys& TheKeys() noexcept {
    static constinit AsyncKeys keys;
    return keys;
}

// The key that stands for both of a pair.
BYTE PairOf(BYTE key) noexcept {
    switch (key) {
        case VK_LSHIFT:
        case VK_RSHIFT:
            return VK_SHIFT;
        case VK_LCONTROL:
        case VK_RCONTROL:
            return VK_CONTROL;
        case VK_LMENU:
        case VK_RMENU:
            return VK_MENU;
        default:
            return key;
    }
}

void Press(BYTE key, bool isDown) noexcept {
    AsyncKeys& keys = TheKeys();
    for (const BYTE each : {key, PairOf(key)}) {
        keys.wasPressed[each] = keys.wasPressed[each] || isDown;
        keys.isDown[each] = isDown;
    }
}

bool IsButtonDown() noexcept {
    const AsyncKeys& keys = TheKeys();
    return keys.isDown[VK_LBUTTON] || keys.isDown[VK_RBUTTON] || keys.isDown[VK_MBUTTON];
}

// The thread of the window below the mouse when a button went down, until all are up.
constinit DWORD g_pressed = 0;

// The thread that the mouse belongs to: that of a window which captured it, else that in which a
// button went down and which may capture it yet, else of the window below.
Thread* MouseThread(const Input& input) {
    for (const HWND handle : AllWindows()) {
        const Window* const window = Find(handle);
        if (window != nullptr && window->thread != nullptr && window->thread->capture == handle)
            return window->thread;
    }
    if (Thread* const pressed = g_pressed != 0 ? FindThread(g_pressed) : nullptr) return pressed;
    const Window* window = input.window != nullptr ? Find(input.window) : nullptr;
    for (const Window* at = Root().firstChild; window == nullptr && at != nullptr; at = at->below)
        if ((at->style & (WS_VISIBLE | WS_MINIMIZE)) == WS_VISIBLE && PtInRect(&at->rect, input.at))
            window = at;
    return window != nullptr ? window->thread : nullptr;
}

Thread* KeyThread() {
    const HWND foreground = GetForegroundWindow();
    const Window* const window = foreground != nullptr ? Find(foreground) : nullptr;
    return window != nullptr ? window->thread : nullptr;
}

bool IsKey(const Input& input) noexcept {
    return input.message == WM_KEYDOWN || input.message == WM_KEYUP;
}

}  // namespace

void AddInput(Input input) {
    const std::lock_guard guard(Lock());
    if (input.time == 0) input.time = GetTickCount();
    if (!IsKey(input)) SetCursorPlace(input.at);
    if (input.key != 0)
        Press(input.key, input.message == WM_KEYDOWN || input.message == WM_LBUTTONDOWN ||
                             input.message == WM_RBUTTONDOWN || input.message == WM_MBUTTONDOWN);
    RecordInput(input);
    Thread* const thread = IsKey(input) ? KeyThread() : MouseThread(input);
    if (!IsKey(input)) g_pressed = IsButtonDown() && thread != nullptr ? thread->id : 0;
    if (thread == nullptr || thread->input.size() >= kMostInput) return;
    input.number = ++thread->lastInput;
    // Moves that nobody looked at yet are one.
    if (input.message == WM_MOUSEMOVE && !thread->input.empty() &&
        thread->input.back().message == WM_MOUSEMOVE)
        thread->input.back() = input;
    else
        thread->input.push_back(input);
    Wake(*thread);
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

// --- Input by program ---------------------------------------------------------------------------

namespace {

// From 65,536ths of the screen to its pixels.
LONG PixelOf(LONG part, int metric) noexcept {
    return static_cast<LONG>(std::int64_t{part} * GetSystemMetrics(metric) >> 16);
}

void AddMouse(const MOUSEINPUT& mouse) {
    POINT at{};
    GetCursorPos(&at);
    if ((mouse.dwFlags & MOUSEEVENTF_MOVE) != 0) {
        if ((mouse.dwFlags & MOUSEEVENTF_ABSOLUTE) != 0)
            at = {PixelOf(mouse.dx, SM_CXSCREEN), PixelOf(mouse.dy, SM_CYSCREEN)};
        else
            at = {Sum(at.x, mouse.dx), Sum(at.y, mouse.dy)};
        at.x = std::clamp<LONG>(at.x, 0, GetSystemMetrics(SM_CXSCREEN) - 1);
        at.y = std::clamp<LONG>(at.y, 0, GetSystemMetrics(SM_CYSCREEN) - 1);
    }
    Input input;
    input.at = at;
    input.time = mouse.time;
    struct Row {
        DWORD flag;
        UINT message;
        int key;
    };
    static constexpr Row kRows[] = {{MOUSEEVENTF_MOVE, WM_MOUSEMOVE, 0},
                                    {MOUSEEVENTF_LEFTDOWN, WM_LBUTTONDOWN, VK_LBUTTON},
                                    {MOUSEEVENTF_LEFTUP, WM_LBUTTONUP, VK_LBUTTON},
                                    {MOUSEEVENTF_RIGHTDOWN, WM_RBUTTONDOWN, VK_RBUTTON},
                                    {MOUSEEVENTF_RIGHTUP, WM_RBUTTONUP, VK_RBUTTON},
                                    {MOUSEEVENTF_MIDDLEDOWN, WM_MBUTTONDOWN, VK_MBUTTON},
                                    {MOUSEEVENTF_MIDDLEUP, WM_MBUTTONUP, VK_MBUTTON},
                                    {MOUSEEVENTF_WHEEL, WM_MOUSEWHEEL, 0}};
    for (const Row& row : kRows) {
        if ((mouse.dwFlags & row.flag) == 0) continue;
        input.message = row.message;
        input.key = static_cast<BYTE>(row.key);
        input.wheel = row.flag == MOUSEEVENTF_WHEEL ? static_cast<int>(mouse.mouseData) : 0;
        AddInput(input);
    }
}

void AddKey(const KEYBDINPUT& key) {
    Input input;
    input.message = (key.dwFlags & KEYEVENTF_KEYUP) != 0 ? WM_KEYUP : WM_KEYDOWN;
    input.isExtended = (key.dwFlags & KEYEVENTF_EXTENDEDKEY) != 0;
    input.scan = key.wScan;
    input.time = key.time;
    UINT code = key.wVk;
    if ((key.dwFlags & KEYEVENTF_UNICODE) != 0) {
        code = VK_PACKET;
        input.text = key.wScan;
        input.knowsText = true;
        input.scan = 0;
    } else if ((key.dwFlags & KEYEVENTF_SCANCODE) != 0) {
        code = MapVirtualKeyA(key.wScan, MAPVK_VSC_TO_VK);
    }
    if (code == VK_SHIFT) code = VK_LSHIFT;
    if (code == VK_CONTROL) code = input.isExtended ? VK_RCONTROL : VK_LCONTROL;
    if (code == VK_MENU) code = input.isExtended ? VK_RMENU : VK_LMENU;
    input.key = static_cast<BYTE>(code);
    if (input.key != 0) AddInput(input);
}

}  // namespace

UINT SendInput(UINT count, const INPUT* inputs, int size) {
    if (size != static_cast<int>(sizeof(INPUT)) || (inputs == nullptr && count > 0)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    for (UINT i = 0; i < count; ++i) {
        if (inputs[i].type == INPUT_MOUSE) AddMouse(inputs[i].mi);
        if (inputs[i].type == INPUT_KEYBOARD) AddKey(inputs[i].ki);
    }
    return count;
}

void keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR extra) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki = {key, scan, flags, 0, extra};
    SendInput(1, &input, sizeof input);
}

void mouse_event(DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR extra) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi = {static_cast<LONG>(x), static_cast<LONG>(y), data, flags, 0, extra};
    SendInput(1, &input, sizeof input);
}

short GetAsyncKeyState(int key) noexcept {
    if (key < 0 || key > 255) return 0;
    const std::lock_guard guard(Lock());
    AsyncKeys& keys = TheKeys();
    const bool wasPressed = std::exchange(keys.wasPressed[key], false);
    return static_cast<short>((keys.isDown[key] ? -0x8000 : 0) | (wasPressed ? 1 : 0));
}
