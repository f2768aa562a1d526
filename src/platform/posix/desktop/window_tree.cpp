// Who stands where: parents, owners, and the order of siblings from the top down.

#include <algorithm>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

RECT PlaceAt(int x, int y, int width, int height) noexcept {
    x = std::clamp<int>(x, INT16_MIN, INT16_MAX);
    y = std::clamp<int>(y, INT16_MIN, INT16_MAX);
    return {x, y, x + std::clamp<int>(width, 0, INT16_MAX),
            y + std::clamp<int>(height, 0, INT16_MAX)};
}

Window* HolderOf(const Window& window) noexcept {
    if (window.parent != nullptr && window.parent != &Root()) return window.parent;
    return IsWindow(window.owner) ? Find(window.owner) : nullptr;
}

int DepthOf(const Window* window) noexcept {
    const std::lock_guard guard(Lock());
    int depth = 0;
    for (; window != nullptr; window = HolderOf(*window))
        ++depth;
    return depth;
}

bool IsHeldBy(const Window* held, const Window& window) noexcept {
    const std::lock_guard guard(Lock());
    while (held != nullptr && held != &window)
        held = HolderOf(*held);
    return held != nullptr;
}

void Unlink(Window& window) noexcept {
    if (window.above != nullptr)
        window.above->below = window.below;
    else if (window.parent != nullptr)
        window.parent->firstChild = window.below;
    if (window.below != nullptr) window.below->above = window.above;
    window.parent = window.above = window.below = nullptr;
}

void Link(Window& window, Window& parent, Window* after) noexcept {
    window.parent = &parent;
    window.above = after;
    window.below = after != nullptr ? after->below : parent.firstChild;
    if (window.below != nullptr) window.below->above = &window;
    (after != nullptr ? after->below : parent.firstChild) = &window;
}

void LinkLast(Window& window, Window& parent) noexcept {
    Window* last = parent.firstChild;
    while (last != nullptr && last->below != nullptr)
        last = last->below;
    Link(window, parent, last);
}

POINT ClientOrigin(const Window& window) noexcept {
    POINT origin{0, 0};
    for (const Window* at = &window; at != nullptr && at->parent != nullptr; at = at->parent) {
        origin.x += at->client.left;
        origin.y += at->client.top;
    }
    return origin;
}

bool IsShown(const Window& window) noexcept {
    for (const Window* at = &window; at != nullptr; at = at->parent)
        if ((at->style & WS_VISIBLE) == 0) return false;
    return true;
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

namespace {

HWND HandleOf(const Window* window) noexcept {
    return window != nullptr ? window->handle : nullptr;
}

// The parent of a child, the owner of a popup; an overlapped window has none.
Window* ParentOf(const Window& window) noexcept {
    if (!IsTopLevel(window)) return window.parent;
    return (window.style & WS_POPUP) != 0 ? HolderOf(window) : nullptr;
}

// The windows below a window, each before its own children.
std::vector<HWND> Descendants(const Window& top) {
    const std::lock_guard guard(Lock());
    std::vector<HWND> handles;
    const Window* at = top.firstChild;
    while (at != nullptr) {
        handles.push_back(at->handle);
        if (at->firstChild != nullptr) {
            at = at->firstChild;
            continue;
        }
        while (at != &top && at->below == nullptr)
            at = at->parent;
        if (at == &top) break;
        at = at->below;
    }
    return handles;
}

BOOL VisitAll(const std::vector<HWND>& handles, WNDENUMPROC visit, LPARAM param) {
    return std::all_of(handles.begin(), handles.end(),
                       [&](HWND handle) { return !IsWindow(handle) || visit(handle, param); });
}

}  // namespace

HWND GetDesktopWindow() noexcept {
    return Root().handle;
}

HWND GetParent(HWND handle) noexcept {
    const std::lock_guard guard(Lock());
    const Window* const window = Find(handle);
    return window != nullptr ? HandleOf(ParentOf(*window)) : nullptr;
}

namespace {

// How deep the windows below this one nest.
int HeightOf(const Window& top) {
    int deepest = 0;
    for (const HWND handle : Descendants(top))
        deepest = std::max(deepest, DepthOf(Find(handle)));
    return deepest > 0 ? deepest - DepthOf(&top) : 0;
}

bool CanHold(const Window& parent, const Window& window) {
    return !parent.isLeaving && !IsHeldBy(&parent, window) &&
           DepthOf(&parent) + 1 + HeightOf(window) <= kDeepest;
}

// Moves the window to its new parent, and answers the old one; null where it cannot be there.
HWND Move(HWND handle, HWND parentHandle) {
    const std::lock_guard guard(Lock());
    Window* const window = Find(handle);
    Window* const parent = Find(parentHandle);
    if (window == nullptr || parent == nullptr) return nullptr;
    if (window == &Root() || !CanHold(*parent, *window)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const HWND old = HandleOf(window->parent);
    if (parent != &Root()) window->owner = nullptr;
    Unlink(*window);
    Link(*window, *parent, nullptr);
    return old;
}

}  // namespace

HWND SetParent(HWND handle, HWND parent) {
    const Window* const window = Find(handle);
    if (parent == nullptr) parent = GetDesktopWindow();
    if (window == nullptr || Find(parent) == nullptr) return nullptr;
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    if (wasVisible) ShowWindow(handle, SW_HIDE);
    const HWND old = Move(handle, parent);
    Screen* const screen = TheScreen();
    if (old != nullptr && screen != nullptr && parent != GetDesktopWindow()) screen->Remove(handle);
    if (wasVisible) ShowWindow(handle, SW_SHOWNA);
    return old;
}

HWND GetAncestor(HWND handle, UINT which) noexcept {
    const std::lock_guard guard(Lock());
    const Window* window = Find(handle);
    if (window == nullptr || window == &Root()) return nullptr;
    if (which == GA_PARENT) return HandleOf(window->parent);
    for (;;) {
        while (!IsTopLevel(*window) && window->parent != nullptr && window->parent != &Root())
            window = window->parent;
        const Window* const owner = which == GA_ROOTOWNER ? ParentOf(*window) : nullptr;
        if (owner == nullptr) return window->handle;
        window = owner;
    }
}

HWND GetWindow(HWND handle, UINT which) noexcept {
    const std::lock_guard guard(Lock());
    const Window* const window = Find(handle);
    if (window == nullptr) return nullptr;
    const Window* answer = nullptr;
    switch (which) {
        case GW_HWNDNEXT:
            answer = window->below;
            break;
        case GW_HWNDPREV:
            answer = window->above;
            break;
        case GW_CHILD:
            answer = window->firstChild;
            break;
        case GW_OWNER:
            answer = window->parent == &Root() ? HolderOf(*window) : nullptr;
            break;
        case GW_HWNDFIRST:
            answer = window->parent != nullptr ? window->parent->firstChild : window;
            break;
        case GW_HWNDLAST:
            for (answer = window; answer->below != nullptr;)
                answer = answer->below;
            break;
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
    }
    return HandleOf(answer);
}

HWND GetTopWindow(HWND parent) noexcept {
    return GetWindow(parent != nullptr ? parent : GetDesktopWindow(), GW_CHILD);
}

BOOL IsChild(HWND parent, HWND handle) noexcept {
    const std::lock_guard guard(Lock());
    const Window* window = Find(handle);
    while (window != nullptr && !IsTopLevel(*window)) {
        window = window->parent;
        if (HandleOf(window) == parent) return parent != nullptr;
    }
    return 0;
}

BOOL EnumChildWindows(HWND parent, WNDENUMPROC visit, LPARAM param) {
    const Window* const top = parent != nullptr ? Find(parent) : &Root();
    return top != nullptr && VisitAll(Descendants(*top), visit, param);
}

BOOL EnumThreadWindows(DWORD thread, WNDENUMPROC visit, LPARAM param) {
    std::vector<HWND> handles;
    {
        const std::lock_guard guard(Lock());
        for (const Window* at = Root().firstChild; at != nullptr; at = at->below)
            if (at->thread->id == thread) handles.push_back(at->handle);
    }
    return VisitAll(handles, visit, param);
}

HWND FindWindowA(const char* className, const char* text) {
    const std::lock_guard guard(Lock());
    for (const Window* at = Root().firstChild; at != nullptr; at = at->below) {
        if (className != nullptr &&
            FindClass(at->windowClass->info.hInstance, className) != at->windowClass)
            continue;
        if (text == nullptr || at->text == text) return at->handle;
    }
    return nullptr;
}

HWND WindowFromPoint(POINT point) {
    const std::lock_guard guard(Lock());
    const Window* at = &Root();
    POINT inside = point;
    for (;;) {
        const Window* child = at->firstChild;
        while (child != nullptr &&
               ((child->style & WS_VISIBLE) == 0 || (child->style & WS_DISABLED) != 0 ||
                !PtInRect(&child->rect, inside)))
            child = child->below;
        if (child == nullptr) return at->handle;
        at = child;
        inside.x -= at->client.left;
        inside.y -= at->client.top;
    }
}

HWND ChildWindowFromPoint(HWND parent, POINT point) noexcept {
    const Window* const window = Find(parent);
    if (window == nullptr) return nullptr;
    for (const Window* child = window->firstChild; child != nullptr; child = child->below)
        if (PtInRect(&child->rect, point)) return child->handle;
    const RECT client{0, 0, Width(window->client), Height(window->client)};
    return PtInRect(&client, point) ? parent : nullptr;
}

// --- Controls by their numbers -------------------------------------------------------------------

HWND GetDlgItem(HWND parent, int id) noexcept {
    const Window* const window = Find(parent);
    if (window == nullptr) return nullptr;
    for (const Window* child = window->firstChild; child != nullptr; child = child->below)
        if (child->id == id) return child->handle;
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int GetDlgCtrlID(HWND handle) noexcept {
    const Window* const window = Find(handle);
    return window != nullptr ? static_cast<int>(window->id) : 0;
}

LRESULT SendDlgItemMessageA(HWND parent, int id, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND item = GetDlgItem(parent, id);
    return item != nullptr ? SendMessageA(item, message, wParam, lParam) : 0;
}
