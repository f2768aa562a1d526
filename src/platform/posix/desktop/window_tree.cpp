// Who stands where: parents, owners, and the order of siblings from the top down.

#include <algorithm>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

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
    return (window.style & WS_POPUP) != 0 ? window.owner : nullptr;
}

// The windows below a window, each before its own children.
std::vector<HWND> Descendants(const Window& top) {
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
    const Window* const window = Find(handle);
    return window != nullptr ? HandleOf(ParentOf(*window)) : nullptr;
}

HWND SetParent(HWND handle, HWND parentHandle) {
    Window* const window = Find(handle);
    Window* const parent = parentHandle != nullptr ? Find(parentHandle) : &Root();
    if (window == nullptr || parent == nullptr) return nullptr;
    for (const Window* at = parent; at != nullptr; at = at->parent) {
        if (at == window) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
    }
    const HWND old = HandleOf(window->parent);
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    if (wasVisible) ShowWindow(handle, SW_HIDE);
    if (!IsWindow(handle) || Find(HandleOf(parent)) == nullptr) return nullptr;
    Unlink(*window);
    Link(*window, *parent, nullptr);
    if (wasVisible) ShowWindow(handle, SW_SHOWNA);
    return old;
}

HWND GetAncestor(HWND handle, UINT which) noexcept {
    const Window* window = Find(handle);
    if (window == nullptr || window == &Root()) return nullptr;
    if (which == GA_PARENT) return HandleOf(window->parent);
    for (;;) {
        while (!IsTopLevel(*window) && window->parent != &Root())
            window = window->parent;
        const Window* const owner = which == GA_ROOTOWNER ? ParentOf(*window) : nullptr;
        if (owner == nullptr) return window->handle;
        window = owner;
    }
}

HWND GetWindow(HWND handle, UINT which) noexcept {
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
            answer = window->owner;
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
    for (const Window* at = Root().firstChild; at != nullptr; at = at->below)
        if (at->thread->id == thread) handles.push_back(at->handle);
    return VisitAll(handles, visit, param);
}

HWND FindWindowA(const char* className, const char* text) {
    for (const Window* at = Root().firstChild; at != nullptr; at = at->below) {
        if (className != nullptr &&
            FindClass(at->windowClass->info.hInstance, className) != at->windowClass)
            continue;
        if (text == nullptr || at->text == text) return at->handle;
    }
    return nullptr;
}

HWND WindowFromPoint(POINT point) {
    const Window* at = &Root();
    for (;;) {
        POINT inside = point;
        const POINT origin = ClientOrigin(*at);
        inside.x -= origin.x;
        inside.y -= origin.y;
        const Window* child = at->firstChild;
        while (child != nullptr &&
               ((child->style & WS_VISIBLE) == 0 || (child->style & WS_DISABLED) != 0 ||
                !PtInRect(&child->rect, inside)))
            child = child->below;
        if (child == nullptr) return at->handle;
        at = child;
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
