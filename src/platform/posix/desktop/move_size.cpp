// What the mouse does to frames: moving, sizing, and the boxes of the caption.

#include <algorithm>

#include "platform/posix/desktop/frame.h"
#include "platform/posix/desktop/input.h"
#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

// The next message of the mouse or the keyboard while the window holds the capture; others are
// dispatched. False when the capture was lost, or the program is to end.
bool NextHeld(HWND window, MSG& message) {
    while (GetCapture() == window && IsWindow(window)) {
        if (!GetMessageA(&message, nullptr, 0, 0)) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        const bool isMouse = message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST;
        if (isMouse || message.message == WM_KEYDOWN) return true;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return false;
}

// The sides that a size command moves.
struct Sides {
    bool left, top, right, bottom;
};

Sides SidesOf(UINT direction) noexcept {
    const UINT part = direction + HTLEFT - 1;
    return {part == HTLEFT || part == HTTOPLEFT || part == HTBOTTOMLEFT,
            part == HTTOP || part == HTTOPLEFT || part == HTTOPRIGHT,
            part == HTRIGHT || part == HTTOPRIGHT || part == HTBOTTOMRIGHT,
            part == HTBOTTOM || part == HTBOTTOMLEFT || part == HTBOTTOMRIGHT};
}

MINMAXINFO LimitsOf(HWND window) {
    MINMAXINFO limits{};
    limits.ptMaxSize = {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    limits.ptMinTrackSize = {GetSystemMetrics(SM_CXMIN), GetSystemMetrics(SM_CYMIN)};
    limits.ptMaxTrackSize = {limits.ptMaxSize.x + 12, limits.ptMaxSize.y + 12};
    SendMessageA(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    return limits;
}

// Where the window goes when the mouse is `dx`, `dy` from where it began.
RECT Dragged(const RECT& began, UINT direction, int dx, int dy, const MINMAXINFO& limits) noexcept {
    RECT rect = began;
    if (direction == 0) {
        OffsetRect(&rect, dx, dy);
        return rect;
    }
    const auto width = [&](LONG wanted) {
        return std::max(limits.ptMinTrackSize.x, std::min(wanted, limits.ptMaxTrackSize.x));
    };
    const auto height = [&](LONG wanted) {
        return std::max(limits.ptMinTrackSize.y, std::min(wanted, limits.ptMaxTrackSize.y));
    };
    const Sides sides = SidesOf(direction);
    if (sides.left) rect.left = rect.right - width(rect.right - rect.left - dx);
    if (sides.right) rect.right = rect.left + width(rect.right + dx - rect.left);
    if (sides.top) rect.top = rect.bottom - height(rect.bottom - rect.top - dy);
    if (sides.bottom) rect.bottom = rect.top + height(rect.bottom + dy - rect.top);
    return rect;
}

void PlaceDragged(HWND window, UINT direction, RECT rect) {
    SendMessageA(window, direction == 0 ? WM_MOVING : WM_SIZING, direction,
                 reinterpret_cast<LPARAM>(&rect));
    SetWindowPos(window, nullptr, rect.left, rect.top, Width(rect), Height(rect),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

void RunMoveSize(HWND handle, UINT command, POINT from) {
    const Window* const window = Find(handle);
    const UINT direction = (command & 0xFFF0) == SC_SIZE ? command & 0xF : 0;
    // Without a mouse that is down there is nothing to follow: the keyboard moves no windows here.
    if (window == nullptr || (GetKeyState(VK_LBUTTON) >= 0) || (command & 0xF) == 0 ||
        (window->style & WS_MAXIMIZE) != 0)
        return;
    const RECT began = window->rect;
    const MINMAXINFO limits = LimitsOf(handle);
    SetCapture(handle);
    SendMessageA(handle, WM_ENTERSIZEMOVE, 0, 0);
    MSG message;
    while (NextHeld(handle, message)) {
        const bool isCancelled = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
        if (isCancelled)
            PlaceDragged(handle, direction, began);
        else if (message.message == WM_MOUSEMOVE || message.message == WM_LBUTTONUP)
            PlaceDragged(
                handle, direction,
                Dragged(began, direction, message.pt.x - from.x, message.pt.y - from.y, limits));
        if (isCancelled || message.message == WM_LBUTTONUP) break;
    }
    if (!IsWindow(handle)) return;
    if (GetCapture() == handle) ReleaseCapture();
    SendMessageA(handle, WM_EXITSIZEMOVE, 0, 0);
}

bool RunBox(HWND handle, int part) {
    SetCapture(handle);
    MSG message;
    while (NextHeld(handle, message)) {
        if (message.message != WM_LBUTTONUP) continue;
        ReleaseCapture();
        const Window* const window = Find(handle);
        return window != nullptr && HitFrame(*window, message.pt) == part;
    }
    if (GetCapture() == handle) ReleaseCapture();
    return false;
}

}  // namespace brcore8::desktop
