// What of windows is to be painted again.

#include <brcore8/platform/posix/graphics_calls.h>

#include <algorithm>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

void Invalidate(Window& window, const RECT* rect, bool erase) {
    RECT part{0, 0, Width(window.client), Height(window.client)};
    if (rect != nullptr && !IntersectRect(&part, &part, rect)) return;
    UnionRect(&window.update, &window.update, &part);
    window.erase = window.erase || erase;
    if (window.thread != nullptr) Wake(*window.thread);
}

void Validate(Window& window, const RECT* rect) {
    RECT common;
    const bool coversAll = rect == nullptr || (IntersectRect(&common, &window.update, rect) &&
                                               EqualRect(&common, &window.update));
    if (!coversAll) return;
    SetRectEmpty(&window.update);
    window.erase = false;
}

// The window and what is below it, and for each where `rect` lies in it.
void InvalidateBelow(Window& top, const RECT* rect, bool erase) {
    for (Window* child = top.firstChild; child != nullptr; child = child->below) {
        RECT inside{};
        if ((child->style & WS_VISIBLE) == 0 ||
            (rect != nullptr && !IntersectRect(&inside, rect, &child->rect)))
            continue;
        child->isFrameDue = true;
        if (rect != nullptr) {
            inside = *rect;
            OffsetRect(&inside, -child->client.left, -child->client.top);
        }
        Invalidate(*child, rect != nullptr ? &inside : nullptr, erase);
        InvalidateBelow(*child, rect != nullptr ? &inside : nullptr, erase);
    }
}

// The windows below it that have something to paint.
void AddBelow(const Window& top, std::vector<HWND>& due) {
    for (const Window* child = top.firstChild; child != nullptr; child = child->below) {
        if (!IsRectEmpty(&child->update)) due.push_back(child->handle);
        AddBelow(*child, due);
    }
}

// Those of them that have something to paint do so now, parents first.
void PaintNow(const std::vector<HWND>& windows) {
    for (const HWND each : windows) {
        const Window* const window = IsWindow(each) ? Find(each) : nullptr;
        if (window != nullptr && !IsRectEmpty(&window->update) && IsShown(*window))
            SendMessageA(each, WM_PAINT, 0, 0);
    }
}

}  // namespace

BOOL RedrawWindow(HWND handle, const RECT* rect, HRGN region, UINT flags) {
    Window* const window = handle != nullptr ? Find(handle) : &Root();
    if (window == nullptr) return 0;
    RECT bounds;
    if (region != nullptr) {
        // What is to be painted is kept as a rectangle: of other regions that around them.
        const int kind = GetRgnBox(region, &bounds);
        if (kind == 0) return 0;
        if (kind != SIMPLEREGION) flags &= ~UINT{RDW_VALIDATE};
        rect = &bounds;
    }
    std::vector<HWND> due;
    {
        const std::lock_guard guard(Lock());
        const bool erase = (flags & RDW_ERASE) != 0;
        // What is painted under children that are not left out is painted over by them.
        const bool reachesChildren =
            (flags & RDW_ALLCHILDREN) != 0 ||
            ((flags & RDW_NOCHILDREN) == 0 && (window->style & WS_CLIPCHILDREN) == 0);
        if ((flags & RDW_VALIDATE) != 0) Validate(*window, rect);
        if ((flags & RDW_INVALIDATE) != 0) Invalidate(*window, rect, erase);
        if ((flags & RDW_INVALIDATE) != 0 && (flags & RDW_FRAME) != 0) window->isFrameDue = true;
        if ((flags & RDW_INVALIDATE) != 0 && reachesChildren) InvalidateBelow(*window, rect, erase);
        if ((flags & RDW_UPDATENOW) != 0) due.push_back(window->handle);
        if ((flags & RDW_UPDATENOW) != 0 && reachesChildren) AddBelow(*window, due);
    }
    PaintNow(due);
    return 1;
}

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase) {
    return RedrawWindow(
        window, rect, nullptr,
        RDW_INVALIDATE | (erase ? RDW_ERASE : 0) | (window == nullptr ? RDW_ALLCHILDREN : 0));
}

BOOL ValidateRect(HWND window, const RECT* rect) {
    return RedrawWindow(window, rect, nullptr, RDW_VALIDATE);
}

BOOL UpdateWindow(HWND window) {
    return Find(window) != nullptr &&
           RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

BOOL GetUpdateRect(HWND handle, RECT* rect, BOOL) {
    const Window* const window = Find(handle);
    if (window == nullptr) return 0;
    if (rect != nullptr) *rect = window->update;
    return !IsRectEmpty(&window->update);
}
