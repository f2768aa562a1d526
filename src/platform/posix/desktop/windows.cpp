// How windows are made and go.

#include <brcore8/platform/posix/menu_calls.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

// A place that is left to the desktop: the next step down the screen, three quarters of it.
void ChoosePlace(CREATESTRUCTA& create) noexcept {
    static constinit std::atomic<int> last = 0;
    const RECT& screen = Root().rect;
    if ((create.style & WS_CHILD) != 0) {
        if (create.x == CW_USEDEFAULT) create.x = create.y = 0;
        if (create.cx == CW_USEDEFAULT) create.cx = create.cy = 0;
        return;
    }
    if (create.x == CW_USEDEFAULT) {
        create.x = create.y = (++last & 7) * Scaled(26);
    }
    if (create.cx == CW_USEDEFAULT) {
        create.cx = Width(screen) * 3 / 4;
        create.cy = Height(screen) * 3 / 4;
    }
}

// Puts a new window into the tree: children under their siblings, others on top.
void Enter(Window& window, Window* parent) noexcept {
    const std::lock_guard guard(Lock());
    if (!IsTopLevel(window)) {
        LinkLast(window, *parent);
    } else {
        while (parent != nullptr && !IsTopLevel(*parent))
            parent = parent->parent;
        window.owner = parent != nullptr && parent != &Root() ? parent->handle : nullptr;
        Link(window, Root(), nullptr);
    }
}

// Asks hooks and the new window whether it may be.
bool MayBegin(HWND handle, CREATESTRUCTA& create) {
    CBT_CREATEWNDA hooked{&create, nullptr};
    if (CallHooks(HCBT_CREATEWND, reinterpret_cast<WPARAM>(handle),
                  reinterpret_cast<LPARAM>(&hooked)) != 0)
        return false;
    return Call(handle, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&create)) != 0;
}

// Tells the new window that it is; false when it refuses, or is gone.
bool Introduce(HWND handle, CREATESTRUCTA& create) {
    Window* const window = Find(handle);
    if (window == nullptr) return false;
    window->client = ClientOf(*window, window->rect);
    return Call(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&create)) != -1 && IsWindow(handle);
}

void TellParent(HWND handle, UINT event) {
    const Window* const window = Find(handle);
    if (window == nullptr || IsTopLevel(*window) || (window->exStyle & WS_EX_NOPARENTNOTIFY) != 0)
        return;
    SendMessageA(window->parent->handle, WM_PARENTNOTIFY,
                 MAKEWPARAM(event, static_cast<WORD>(window->id)),
                 reinterpret_cast<LPARAM>(handle));
}

// The window and what is below it, parents first.
std::vector<HWND> Family(HWND top) {
    std::vector<HWND> family{top};
    EnumChildWindows(
        top,
        [](HWND child, LPARAM list) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
            return 1;
        },
        reinterpret_cast<LPARAM>(&family));
    return family;
}

// The windows that this one owns, and those that they own, which come first.
std::vector<HWND> OwnedBy(HWND owner) {
    const std::lock_guard guard(Lock());
    std::vector<HWND> owned{owner};
    for (std::size_t i = 0; i < owned.size(); ++i) {
        const std::size_t known = owned.size();
        for (const Window* at = Root().firstChild; at != nullptr; at = at->below)
            if (at->owner == owned[i] && !at->isDestroyed) owned.push_back(at->handle);
        std::reverse(owned.begin() + static_cast<std::ptrdiff_t>(known), owned.end());
    }
    owned.erase(owned.begin());
    std::reverse(owned.begin(), owned.end());
    return owned;
}

// The last messages, children first; those that came while the others were told too.
void EndFamily(HWND handle, const std::vector<HWND>& told) {
    const std::vector<HWND> leaving = Family(handle);
    for (const HWND each : leaving)
        if (Window* const member = Find(each)) member->isDestroyed = member->isLeaving = true;
    // Whom a procedure has taken elsewhere meanwhile lives on.
    for (const HWND each : told)
        if (IsWindow(each) && !Find(each)->isLeaving) Find(each)->isDestroyed = false;
    for (auto each = leaving.rbegin(); each != leaving.rend(); ++each) {
        SendMessageA(*each, WM_NCDESTROY, 0, 0);
        Window* const member = IsWindow(*each) ? Find(*each) : nullptr;
        if (member != nullptr) RemoveWindow(*member);
    }
}

// Finds the class and the place of the new window; null with the error.
Window* Make(const CREATESTRUCTA& create) try {
    const std::lock_guard guard(Lock());
    WindowClass* const windowClass =
        create.lpszClass != nullptr ? FindClass(create.hInstance, create.lpszClass) : nullptr;
    if (windowClass == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    Window* const parent = create.hwndParent != nullptr ? Find(create.hwndParent) : nullptr;
    if (create.hwndParent != nullptr && parent == nullptr) return nullptr;
    const bool isChild = (create.style & WS_CHILD) != 0;
    if (isChild && (parent == nullptr || parent->isLeaving)) {
        SetLastError(parent == nullptr ? ERROR_TLW_WITH_WSCHILD : ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    std::vector<char> extra(static_cast<std::size_t>(std::max(windowClass->info.cbWndExtra, 0)));
    Window* const window = DepthOf(parent) < kDeepest ? NewWindow(&ThisThread()) : nullptr;
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    ++windowClass->windows;
    window->windowClass = windowClass;
    window->procedure = windowClass->info.lpfnWndProc;
    // An overlapped window has a caption, whatever it asks for.
    window->style = static_cast<DWORD>(create.style) & ~DWORD{WS_VISIBLE};
    if (!isChild && (create.style & WS_POPUP) == 0) window->style |= WS_CAPTION | WS_CLIPSIBLINGS;
    window->exStyle = create.dwExStyle;
    window->instance = create.hInstance;
    if (isChild)
        window->id = reinterpret_cast<LONG_PTR>(create.hMenu);
    else
        window->menu = create.hMenu;
    window->extra = std::move(extra);
    window->rect = PlaceAt(create.x, create.y, create.cx, create.cy);
    window->client = window->rect;
    Enter(*window, parent);
    return window;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

}  // namespace

HWND CreateWindowExA(DWORD exStyle, const char* className, const char* text, DWORD style, int x,
                     int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                     void* param) {
    CREATESTRUCTA create{
        param, instance,  menu,   parent, height, width, y, x, static_cast<LONG>(style),
        text,  className, exStyle};
    ChoosePlace(create);
    const Window* const window = Make(create);
    if (window == nullptr) return nullptr;
    const HWND handle = window->handle;
    if (!MayBegin(handle, create)) {
        // It never was: only its last message comes.
        if (IsWindow(handle)) EndFamily(handle, {});
        return nullptr;
    }
    if (!Introduce(handle, create)) {
        DestroyWindow(handle);
        return nullptr;
    }
    if ((style & WS_CHILD) != 0) TellSize(handle);
    TellParent(handle, WM_CREATE);
    if ((style & WS_VISIBLE) != 0 && IsWindow(handle)) ShowWindow(handle, SW_SHOW);
    return IsWindow(handle) ? handle : nullptr;
}

void brcore8::desktop::RemoveWindow(Window& window) noexcept {
    if (Screen* const screen = TheScreen()) screen->Remove(window.handle);
    ForgetWindow(window);
    if (window.menu != nullptr) DestroyMenu(std::exchange(window.menu, nullptr));
    const std::lock_guard guard(Lock());
    while (window.firstChild != nullptr)
        Unlink(*window.firstChild);
    Unlink(window);
    FreeWindow(&window);
}

BOOL DestroyWindow(HWND handle) {
    Window* window = Find(handle);
    if (window == nullptr || window == &Root()) return 0;
    if (window->thread != &ThisThread()) {
        SetLastError(ERROR_ACCESS_DENIED);
        return 0;
    }
    if (window->isDestroyed) return 1;
    window->isDestroyed = true;
    for (const HWND owned : OwnedBy(handle))
        if (IsWindow(owned)) DestroyWindow(owned);
    TellParent(handle, WM_DESTROY);
    if ((window = Find(handle)) == nullptr) return 1;
    if ((window->style & WS_VISIBLE) != 0) ShowWindow(handle, SW_HIDE);

    const std::vector<HWND> family = Family(handle);
    for (const HWND each : family) {
        Window* const member = IsWindow(each) ? Find(each) : nullptr;
        if (!IsHeldBy(member, *window)) continue;
        member->isDestroyed = true;
        SendMessageA(each, WM_DESTROY, 0, 0);
    }
    EndFamily(handle, family);
    return 1;
}
