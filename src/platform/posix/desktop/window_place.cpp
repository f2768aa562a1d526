// Where windows are, and whether they show.

#include <algorithm>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/frame.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace brcore8::desktop {

RECT ClientOf(const Window& window, const RECT& rect) noexcept {
    const RECT margins = FrameMargins(window.style, window.exStyle);
    RECT client{rect.left + margins.left, rect.top + margins.top, rect.right - margins.right,
                rect.bottom - margins.bottom};
    if (IsTopLevel(window) && window.menu != nullptr) client.top += GetSystemMetrics(SM_CYMENU);
    if ((window.style & WS_VSCROLL) != 0) client.right -= GetSystemMetrics(SM_CXVSCROLL);
    if ((window.style & WS_HSCROLL) != 0) client.bottom -= GetSystemMetrics(SM_CYHSCROLL);
    client.right = std::max(client.right, client.left);
    client.bottom = std::max(client.bottom, client.top);
    return client;
}

UINT SizeKind(const Window& window) noexcept {
    if ((window.style & WS_MINIMIZE) != 0) return SIZE_MINIMIZED;
    return (window.style & WS_MAXIMIZE) != 0 ? SIZE_MAXIMIZED : SIZE_RESTORED;
}

void TellSize(HWND handle) {
    Window* const window = Find(handle);
    if (window == nullptr) return;
    window->wasSized = true;
    const RECT client = window->client;
    SendMessageA(handle, WM_SIZE, SizeKind(*window), MAKELPARAM(Width(client), Height(client)));
    SendMessageA(handle, WM_MOVE, 0, MAKELPARAM(client.left, client.top));
}

}  // namespace brcore8::desktop

namespace {

RECT PlaceOf(const WINDOWPOS& pos, const RECT& old) noexcept {
    const bool moves = (pos.flags & SWP_NOMOVE) == 0;
    const bool sizes = (pos.flags & SWP_NOSIZE) == 0;
    return PlaceAt(moves ? pos.x : old.left, moves ? pos.y : old.top, sizes ? pos.cx : Width(old),
                   sizes ? pos.cy : Height(old));
}

// Puts the window where `after` says: a sibling, or one of the ends.
void Restack(Window& window, HWND after) noexcept {
    Window& parent = *window.parent;
    if (after == HWND_BOTTOM) {
        Unlink(window);
        LinkLast(window, parent);
        return;
    }
    Window* const sibling = after != HWND_TOP && after != HWND_TOPMOST && after != HWND_NOTOPMOST
                                ? Find(after)
                                : nullptr;
    if (sibling == &window || (sibling != nullptr && sibling->parent != &parent)) return;
    Unlink(window);
    Link(window, parent, sibling);
}

// Has a window painted where it is now, and its parent where it was.
void RedrawPlace(Window& window, const RECT& old, bool wasSized, bool wasShowing) {
    constexpr UINT kAll = RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN;
    const bool isShowing = (window.style & WS_VISIBLE) != 0;
    const bool isChild = !IsTopLevel(window) && window.parent != nullptr;
    const bool hasNewPlace = isChild && !EqualRect(&old, &window.rect);
    if (isChild && wasShowing && (!isShowing || hasNewPlace))
        RedrawWindow(window.parent->handle, &old, nullptr, kAll & ~UINT{RDW_FRAME});
    if (wasSized || hasNewPlace || (isShowing && !wasShowing))
        RedrawWindow(window.handle, nullptr, nullptr, kAll);
}

}  // namespace

BOOL SetWindowPos(HWND handle, HWND after, int x, int y, int width, int height, UINT flags) {
    Window* window = Find(handle);
    if (window == nullptr) return 0;
    WINDOWPOS pos{handle, after, x, y, width, height, flags};
    if ((flags & SWP_NOSENDCHANGING) == 0)
        SendMessageA(handle, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&pos));
    if ((window = Find(handle)) == nullptr) return 0;

    const RECT oldRect = window->rect;
    const RECT oldClient = window->client;
    const bool isShowing = (window->style & WS_VISIBLE) != 0;
    {
        // Other threads look for the window under the mouse.
        const std::lock_guard guard(Lock());
        window->rect = PlaceOf(pos, oldRect);
        window->client = ClientOf(*window, window->rect);
        if ((pos.flags & SWP_NOZORDER) == 0 && window->parent != nullptr)
            Restack(*window, pos.hwndInsertAfter);
        if ((pos.flags & SWP_SHOWWINDOW) != 0) window->style |= WS_VISIBLE;
        if ((pos.flags & SWP_HIDEWINDOW) != 0) window->style &= ~DWORD{WS_VISIBLE};
    }

    const bool wasMoved =
        window->client.left != oldClient.left || window->client.top != oldClient.top;
    const bool wasSized =
        Width(window->client) != Width(oldClient) || Height(window->client) != Height(oldClient);
    if (!wasMoved) pos.flags |= SWP_NOMOVE;
    if (!wasSized) pos.flags |= SWP_NOSIZE;
    pos.x = window->rect.left;
    pos.y = window->rect.top;
    pos.cx = Width(window->rect);
    pos.cy = Height(window->rect);
    const bool wasWhole = wasSized || (flags & SWP_FRAMECHANGED) != 0 ||
                          Width(window->rect) != Width(oldRect) ||
                          Height(window->rect) != Height(oldRect);
    TellScreen(*window);
    if ((pos.flags & SWP_NOREDRAW) == 0) RedrawPlace(*window, oldRect, wasWhole, isShowing);
    SendMessageA(handle, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&pos));
    if ((pos.flags & SWP_NOACTIVATE) == 0 && (pos.flags & SWP_HIDEWINDOW) == 0) {
        window = Find(handle);
        if (window != nullptr && IsTopLevel(*window) && (window->style & WS_VISIBLE) != 0 &&
            (pos.flags & SWP_NOZORDER) == 0)
            SetActiveWindow(handle);
    }
    return 1;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
    return SetWindowPos(window, nullptr, x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0 : SWP_NOREDRAW));
}

BOOL BringWindowToTop(HWND window) {
    return SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

// --- Showing -------------------------------------------------------------------------------------

namespace {

// Changes between the three sizes of a top-level window.
void Resize(Window& window, int how) {
    const bool isMinimizing =
        how == SW_SHOWMINIMIZED || how == SW_MINIMIZE || how == SW_SHOWMINNOACTIVE;
    const bool isMaximizing = how == SW_SHOWMAXIMIZED;
    const bool isRestoring = how == SW_SHOWNORMAL || how == SW_RESTORE || how == SW_SHOWNOACTIVATE;
    const DWORD old = window.style & (WS_MINIMIZE | WS_MAXIMIZE);
    DWORD wanted = old;
    if (isMinimizing) wanted = WS_MINIMIZE;
    if (isMaximizing) wanted = WS_MAXIMIZE;
    if (isRestoring) wanted = 0;
    if (wanted == old) return;
    if (old == 0) window.restored = window.rect;
    window.style = (window.style & ~DWORD{WS_MINIMIZE | WS_MAXIMIZE}) | wanted;
    RECT place = window.restored;
    if (isMaximizing) place = window.parent->client;
    if (isMaximizing) OffsetRect(&place, -place.left, -place.top);
    SetWindowPos(window.handle, nullptr, place.left, place.top, Width(place), Height(place),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// Who is active once this window is not: its owner, or the topmost window of the thread that can.
HWND NextActive(HWND handle) {
    const std::lock_guard guard(Lock());
    const auto canBe = [handle](const Window& window) {
        return window.thread == &ThisThread() && window.handle != handle && !window.isDestroyed &&
               (window.style & (WS_VISIBLE | WS_DISABLED | WS_MINIMIZE)) == WS_VISIBLE;
    };
    const HWND owner = GetWindow(handle, GW_OWNER);
    if (owner != nullptr && canBe(*Find(owner))) return owner;
    for (const Window* top = Root().firstChild; top != nullptr; top = top->below)
        if (canBe(*top)) return top->handle;
    return nullptr;
}

}  // namespace

BOOL ShowWindow(HWND handle, int how) {
    Window* window = Find(handle);
    if (window == nullptr) return 0;
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    const bool isShowing = how != SW_HIDE;
    if (how == SW_SHOWDEFAULT) how = SW_SHOWNORMAL;
    if (isShowing != wasVisible) {
        SendMessageA(handle, WM_SHOWWINDOW, isShowing, 0);
        if ((window = Find(handle)) == nullptr) return wasVisible;
    }
    Resize(*window, how);
    if ((window = Find(handle)) == nullptr || isShowing == wasVisible) return wasVisible;

    const bool activates = isShowing && IsTopLevel(*window) && how != SW_SHOWNA &&
                           how != SW_SHOWNOACTIVATE && how != SW_SHOWMINNOACTIVE &&
                           how != SW_MINIMIZE;
    SetWindowPos(handle, HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | (isShowing ? SWP_SHOWWINDOW : SWP_HIDEWINDOW) |
                     (activates ? 0 : SWP_NOACTIVATE | SWP_NOZORDER));
    if ((window = Find(handle)) == nullptr) return wasVisible;
    if (isShowing && !window->wasSized) TellSize(handle);
    if (isShowing) return wasVisible;
    // A hidden window keeps neither focus nor activation.
    if (GetFocus() == handle || IsChild(handle, GetFocus())) SetFocus(GetParent(handle));
    if (GetActiveWindow() == handle) SetActiveWindow(NextActive(handle));
    return wasVisible;
}

BOOL IsWindowVisible(HWND handle) noexcept {
    const Window* const window = Find(handle);
    return window != nullptr && IsShown(*window);
}

BOOL IsIconic(HWND handle) noexcept {
    return (GetWindowLongA(handle, GWL_STYLE) & WS_MINIMIZE) != 0;
}

BOOL IsZoomed(HWND handle) noexcept {
    return (GetWindowLongA(handle, GWL_STYLE) & WS_MAXIMIZE) != 0;
}

BOOL EnableWindow(HWND handle, BOOL enable) {
    Window* window = Find(handle);
    if (window == nullptr) return 0;
    const bool wasDisabled = (window->style & WS_DISABLED) != 0;
    if (wasDisabled != (enable != 0)) return wasDisabled;
    if (!enable) SendMessageA(handle, WM_CANCELMODE, 0, 0);
    if ((window = Find(handle)) == nullptr) return wasDisabled;
    window->style = (window->style & ~DWORD{WS_DISABLED}) | (enable ? 0 : WS_DISABLED);
    if (!enable && GetFocus() == handle) SetFocus(nullptr);
    SendMessageA(handle, WM_ENABLE, enable != 0, 0);
    return wasDisabled;
}

BOOL IsWindowEnabled(HWND handle) noexcept {
    const Window* const window = Find(handle);
    return window != nullptr && (window->style & WS_DISABLED) == 0;
}

// --- Rectangles ----------------------------------------------------------------------------------

BOOL GetWindowRect(HWND handle, RECT* rect) noexcept {
    const Window* const window = Find(handle);
    if (window == nullptr) return 0;
    *rect = window->rect;
    if (window->parent != nullptr) {
        const POINT origin = ClientOrigin(*window->parent);
        OffsetRect(rect, origin.x, origin.y);
    }
    return 1;
}

BOOL GetClientRect(HWND handle, RECT* rect) noexcept {
    const Window* const window = Find(handle);
    if (window == nullptr) return 0;
    *rect = {0, 0, Width(window->client), Height(window->client)};
    return 1;
}

BOOL GetWindowPlacement(HWND handle, WINDOWPLACEMENT* placement) noexcept {
    const Window* const window = Find(handle);
    if (window == nullptr || placement->length != sizeof *placement) return 0;
    const bool isNormal = (window->style & (WS_MINIMIZE | WS_MAXIMIZE)) == 0;
    const bool isMinimized = (window->style & WS_MINIMIZE) != 0;
    *placement = {};
    placement->length = sizeof *placement;
    placement->showCmd = isNormal      ? SW_SHOWNORMAL
                         : isMinimized ? SW_SHOWMINIMIZED
                                       : SW_SHOWMAXIMIZED;
    placement->ptMinPosition = placement->ptMaxPosition = {-1, -1};
    placement->rcNormalPosition = isNormal ? window->rect : window->restored;
    return 1;
}

BOOL SetWindowPlacement(HWND handle, const WINDOWPLACEMENT* placement) {
    Window* const window = Find(handle);
    if (window == nullptr || placement->length != sizeof *placement) return 0;
    const RECT& place = placement->rcNormalPosition;
    if ((window->style & (WS_MINIMIZE | WS_MAXIMIZE)) == 0)
        SetWindowPos(handle, nullptr, place.left, place.top, Width(place), Height(place),
                     SWP_NOZORDER | SWP_NOACTIVATE);
    if (Find(handle) == nullptr) return 0;
    window->restored = place;
    ShowWindow(handle, static_cast<int>(placement->showCmd));
    return 1;
}

BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL menu, DWORD exStyle) noexcept {
    const RECT margins = FrameMargins(style, exStyle);
    rect->left -= margins.left;
    rect->top -= margins.top;
    rect->right += margins.right;
    rect->bottom += margins.bottom;
    if (menu) rect->top -= GetSystemMetrics(SM_CYMENU);
    return 1;
}

int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count) noexcept {
    const Window* const source = from != nullptr ? Find(from) : &Root();
    const Window* const target = to != nullptr ? Find(to) : &Root();
    if (source == nullptr || target == nullptr) return 0;
    const POINT here = ClientOrigin(*source);
    const POINT there = ClientOrigin(*target);
    const POINT shift{here.x - there.x, here.y - there.y};
    for (UINT i = 0; i < count; ++i) {
        points[i].x += shift.x;
        points[i].y += shift.y;
    }
    return MAKELONG(static_cast<WORD>(shift.x), static_cast<WORD>(shift.y));
}

BOOL ClientToScreen(HWND window, POINT* point) noexcept {
    if (Find(window) == nullptr) return 0;
    MapWindowPoints(window, nullptr, point, 1);
    return 1;
}

BOOL ScreenToClient(HWND window, POINT* point) noexcept {
    if (Find(window) == nullptr) return 0;
    MapWindowPoints(nullptr, window, point, 1);
    return 1;
}
