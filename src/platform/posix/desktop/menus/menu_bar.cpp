// The menus of windows.

#include "platform/posix/desktop/menus/menu_view.h"

using namespace brcore8::desktop;

HMENU GetMenu(HWND handle) noexcept {
    const Window* const window = Find(handle);
    return window != nullptr && IsTopLevel(*window) ? window->menu : nullptr;
}

BOOL SetMenu(HWND handle, HMENU menu) {
    Window* const window = Find(handle);
    if (window == nullptr) return 0;
    if (!IsTopLevel(*window)) {
        SetLastError(ERROR_CHILD_WINDOW_MENU);
        return 0;
    }
    if (menu != nullptr && !IsMenu(menu)) {
        SetLastError(ERROR_INVALID_MENU_HANDLE);
        return 0;
    }
    window->menu = menu;
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    RepaintMenuBar(handle);
    return 1;
}

BOOL DrawMenuBar(HWND handle) {
    if (Find(handle) == nullptr) return 0;
    RepaintMenuBar(handle);
    return 1;
}

BOOL GetMenuItemRect(HWND handle, HMENU menuHandle, UINT item, RECT* rect) {
    const std::lock_guard guard(Lock());
    Menu* const menu = FindMenu(menuHandle);
    if (menu == nullptr) return 0;
    if (handle == nullptr || (handle != menu->window && GetMenu(handle) != menuHandle))
        handle = menu->window;
    const Window* const window = handle != nullptr ? Find(handle) : nullptr;
    if (window == nullptr || item >= menu->items.size()) return 0;
    POINT origin{};
    if (handle == menu->window) {
        origin = ClientOrigin(*window);
        origin.y -= menu->scroll;
    } else {
        LayOutBar(*window, *menu);
        origin = {window->rect.left, window->rect.top};
    }
    *rect = menu->items[item].rect;
    OffsetRect(rect, origin.x, origin.y);
    return 1;
}

BOOL HiliteMenuItem(HWND window, HMENU menu, UINT item, UINT hilite) {
    {
        const std::lock_guard guard(Lock());
        const MenuPlace place = FindMenuItem(menu, item, (hilite & MF_BYPOSITION) != 0);
        if (!place) return 0;
        for (MenuItem& each : place.menu->items)
            each.state &= ~UINT{MFS_HILITE};
        place.Item().state |= hilite & MF_HILITE;
    }
    RepaintMenuBar(window);
    return 1;
}
