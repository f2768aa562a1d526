// How windows are made and go.

#include <brcore8/platform/posix/menu_calls.h>

#include <algorithm>
#include <utility>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

// Windows nest no deeper: procedures call those of their children.
constexpr int kDeepest = 100;

int DepthOf(const Window* window) noexcept {
    int depth = 0;
    for (; window != nullptr; window = window->parent)
        ++depth;
    return depth;
}

// A place that is left to the desktop: the next step down the screen, three quarters of it.
void ChoosePlace(CREATESTRUCTA& create) noexcept {
    static constinit int step = 0;
    const RECT& screen = Root().rect;
    if ((create.style & WS_CHILD) != 0) {
        if (create.x == CW_USEDEFAULT) create.x = create.y = 0;
        if (create.cx == CW_USEDEFAULT) create.cx = create.cy = 0;
        return;
    }
    if (create.x == CW_USEDEFAULT) {
        step = (step + 1) % 8;
        create.x = create.y = step * Scaled(26);
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
        window.owner = parent != &Root() ? parent : nullptr;
        Link(window, Root(), nullptr);
    }
}

// Tells the new window of itself; false when it refuses, or is gone.
bool Introduce(HWND handle, CREATESTRUCTA& create) {
    CBT_CREATEWNDA hooked{&create, nullptr};
    if (CallHooks(HCBT_CREATEWND, reinterpret_cast<WPARAM>(handle),
                  reinterpret_cast<LPARAM>(&hooked)) != 0)
        return false;
    const auto param = reinterpret_cast<LPARAM>(&create);
    if (Call(handle, WM_NCCREATE, 0, param) == 0) return false;
    Window* const window = Find(handle);
    if (window == nullptr) return false;
    window->client = ClientOf(*window, window->rect);
    return Call(handle, WM_CREATE, 0, param) != -1 && IsWindow(handle);
}

void TellParent(HWND handle, UINT event) {
    const Window* const window = Find(handle);
    if (window == nullptr || IsTopLevel(*window) || (window->exStyle & WS_EX_NOPARENTNOTIFY) != 0)
        return;
    SendMessageA(window->parent->handle, WM_PARENTNOTIFY,
                 MAKEWPARAM(event, static_cast<WORD>(window->id)),
                 reinterpret_cast<LPARAM>(handle));
}

}  // namespace

HWND CreateWindowExA(DWORD exStyle, const char* className, const char* text, DWORD style, int x,
                     int y, int width, int height, HWND parentHandle, HMENU menu,
                     HINSTANCE instance, void* param) {
    WindowClass* const windowClass =
        className != nullptr ? FindClass(instance, className) : nullptr;
    if (windowClass == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    Window* const parent = parentHandle != nullptr ? Find(parentHandle) : nullptr;
    if (parentHandle != nullptr && parent == nullptr) return nullptr;
    const bool isChild = (style & WS_CHILD) != 0;
    if (isChild && parent != nullptr && parent->isLeaving) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    if (isChild && parent == nullptr) {
        SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    Window* const window = DepthOf(parent) < kDeepest ? NewWindow(&ThisThread()) : nullptr;
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    CREATESTRUCTA create{
        param, instance,  menu,   parentHandle, height, width, y, x, static_cast<LONG>(style),
        text,  className, exStyle};
    ChoosePlace(create);

    const HWND handle = window->handle;
    ++windowClass->windows;
    window->windowClass = windowClass;
    window->procedure = windowClass->info.lpfnWndProc;
    // An overlapped window has a caption, whatever it asks for.
    window->style = style & ~DWORD{WS_VISIBLE};
    if (!isChild && (style & WS_POPUP) == 0) window->style |= WS_CAPTION | WS_CLIPSIBLINGS;
    window->exStyle = exStyle;
    window->instance = instance;
    if (isChild)
        window->id = reinterpret_cast<LONG_PTR>(menu);
    else
        window->menu = menu;
    window->extra.resize(static_cast<std::size_t>(std::max(windowClass->info.cbWndExtra, 0)));
    window->rect = {create.x, create.y, create.x + std::max(create.cx, 0),
                    create.y + std::max(create.cy, 0)};
    window->client = window->rect;
    Enter(*window, parent);

    if (!Introduce(handle, create)) {
        DestroyWindow(handle);
        return nullptr;
    }
    if (isChild) TellSize(handle);
    TellParent(handle, WM_CREATE);
    if ((style & WS_VISIBLE) != 0 && IsWindow(handle)) ShowWindow(handle, SW_SHOW);
    return IsWindow(handle) ? handle : nullptr;
}

namespace {

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

std::vector<HWND> OwnedBy(const Window& owner) {
    std::vector<HWND> owned;
    for (const Window* at = Root().firstChild; at != nullptr; at = at->below)
        if (at->owner == &owner) owned.push_back(at->handle);
    return owned;
}

}  // namespace

BOOL DestroyWindow(HWND handle) {
    Window* window = Find(handle);
    if (window == nullptr || window == &Root()) return 0;
    if (window->thread != &ThisThread()) {
        SetLastError(ERROR_ACCESS_DENIED);
        return 0;
    }
    if (window->isDestroyed) return 1;
    window->isDestroyed = true;
    for (const HWND owned : OwnedBy(*window))
        DestroyWindow(owned);
    TellParent(handle, WM_DESTROY);
    if ((window = Find(handle)) == nullptr) return 1;
    if ((window->style & WS_VISIBLE) != 0) ShowWindow(handle, SW_HIDE);

    const std::vector<HWND> family = Family(handle);
    for (const HWND each : family) {
        if (Window* const member = Find(each)) member->isDestroyed = true;
        Call(each, WM_DESTROY, 0, 0);
    }
    // Children first; those that came meanwhile too.
    const std::vector<HWND> leaving = Family(handle);
    for (const HWND each : leaving)
        if (Window* const member = Find(each)) member->isLeaving = true;
    for (auto each = leaving.rbegin(); each != leaving.rend(); ++each) {
        Call(*each, WM_NCDESTROY, 0, 0);
        Window* const member = Find(*each);
        if (member == nullptr) continue;
        if (IsTopLevel(*member))
            if (Screen* const screen = TheScreen()) screen->Remove(*each);
        ForgetWindow(*member);
        if (member->menu != nullptr) DestroyMenu(std::exchange(member->menu, nullptr));
        const std::lock_guard guard(Lock());
        while (member->firstChild != nullptr)
            Unlink(*member->firstChild);
        Unlink(*member);
        FreeWindow(member);
    }
    return 1;
}
