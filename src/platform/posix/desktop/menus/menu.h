// What stands behind a menu's handle.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_MENU_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_MENU_H

#include <brcore8/platform/posix/menu_calls.h>

#include <string>
#include <vector>

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

struct MenuItem {
    UINT type = 0;   // MFT_ bits
    UINT state = 0;  // MFS_ bits
    UINT id = 0;
    HMENU subMenu = nullptr;
    std::string text;
    ULONG_PTR data = 0;
    HBITMAP checked = nullptr;
    HBITMAP unchecked = nullptr;
    HBITMAP bitmap = nullptr;
    RECT rect{};  // in the window that shows it, once that laid it out

    bool IsSeparator() const noexcept { return (type & MFT_SEPARATOR) != 0; }
    bool IsDisabled() const noexcept { return (state & (MF_GRAYED | MF_DISABLED)) != 0; }
};

struct Menu {
    bool isPopup = false;
    std::vector<MenuItem> items;
    HWND window = nullptr;  // of a popup that is open
    int scroll = 0;         // how far that is scrolled, in pixels
};

constexpr std::size_t kNoItem = static_cast<std::size_t>(-1);

// An item, by its menu and place; no menu where there is none.
struct MenuPlace {
    HMENU handle = nullptr;
    Menu* menu = nullptr;
    std::size_t index = kNoItem;

    explicit operator bool() const noexcept { return menu != nullptr; }
    MenuItem& Item() const noexcept { return menu->items[index]; }
};

// All of these under the lock.
// The menu of a handle, or null with ERROR_INVALID_MENU_HANDLE.
Menu* FindMenu(HMENU handle) noexcept;
// By position, or by command in the menu and the popups below; none with
// ERROR_MENU_ITEM_NOT_FOUND.
MenuPlace FindMenuItem(HMENU handle, UINT item, bool isByPosition);
// Whether `sub` may open from `menu`: neither in a circle nor too deep.
bool CanHold(HMENU menu, HMENU sub);

}  // namespace brcore8::desktop

#endif
