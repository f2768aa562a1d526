// The table of menus, and how items are found.

#include "platform/posix/desktop/menus/menu.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>

namespace brcore8::desktop {

namespace {

constexpr int kDeepestMenu = 25;
constexpr std::size_t kMostMenus = 65000;

struct MenuTable {
    std::map<HMENU, std::unique_ptr<Menu>> menus;
    std::uint32_t last = 0x10000;
};

// Never destroyed: menus may outlive static objects.
MenuTable& TheMenus() {
    static MenuTable& table = *new MenuTable;
    return table;
}

HMENU NewMenu(bool isPopup) {
    const std::lock_guard guard(Lock());
    MenuTable& table = TheMenus();
    try {
        if (table.menus.size() >= kMostMenus) throw std::bad_alloc();
        auto menu = std::make_unique<Menu>();
        menu->isPopup = isPopup;
        const auto handle = reinterpret_cast<HMENU>(std::uintptr_t{table.last + 4});
        table.menus.emplace(handle, std::move(menu));
        table.last += 4;
        return handle;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}

// The menus in and below one, each once, with how deep they lie.
std::map<HMENU, int> Below(HMENU top) {
    std::map<HMENU, int> depths{{top, 0}};
    std::vector<HMENU> open{top};
    while (!open.empty()) {
        const HMENU handle = open.back();
        open.pop_back();
        const Menu* const menu = FindMenu(handle);
        if (menu == nullptr) continue;
        const int depth = depths[handle] + 1;
        for (const MenuItem& item : menu->items) {
            if (item.subMenu == nullptr || depth > kDeepestMenu) continue;
            const auto [at, isNew] = depths.try_emplace(item.subMenu, depth);
            if (!isNew && at->second >= depth) continue;
            at->second = depth;
            open.push_back(item.subMenu);
        }
    }
    return depths;
}

int DepthOf(HMENU menu) {
    int deepest = 0;
    for (const auto& [handle, depth] : Below(menu))
        deepest = std::max(deepest, depth);
    return deepest;
}

// How deep a menu lies in those that hold it.
int HeightOf(HMENU menu) {
    int height = 0;
    std::set<HMENU> level{menu};
    for (; height <= kDeepestMenu; ++height) {
        std::set<HMENU> above;
        for (const auto& [handle, each] : TheMenus().menus)
            for (const MenuItem& item : each->items)
                if (item.subMenu != nullptr && level.contains(item.subMenu)) above.insert(handle);
        if (above.empty()) break;
        level = std::move(above);
    }
    return height;
}

}  // namespace

Menu* FindMenu(HMENU handle) noexcept {
    const auto at = TheMenus().menus.find(handle);
    if (at != TheMenus().menus.end()) return at->second.get();
    SetLastError(ERROR_INVALID_MENU_HANDLE);
    return nullptr;
}

bool CanHold(HMENU menu, HMENU sub) {
    if (Below(sub).contains(menu) || HeightOf(menu) + 1 + DepthOf(sub) > kDeepestMenu) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    return true;
}

// Items with the command come before popups that have it as theirs.
MenuPlace FindMenuItem(HMENU handle, UINT item, bool isByPosition) {
    Menu* const top = FindMenu(handle);
    if (top == nullptr) return {};
    if (isByPosition) {
        if (item < top->items.size()) return {handle, top, item};
        SetLastError(ERROR_MENU_ITEM_NOT_FOUND);
        return {};
    }
    MenuPlace popup;
    std::set<HMENU> seen{handle};
    std::vector<HMENU> open{handle};
    while (!open.empty()) {
        const HMENU at = open.back();
        open.pop_back();
        Menu* const menu = FindMenu(at);
        if (menu == nullptr) continue;
        std::vector<HMENU> below;
        for (std::size_t i = 0; i < menu->items.size(); ++i) {
            const MenuItem& each = menu->items[i];
            if (each.subMenu != nullptr && seen.insert(each.subMenu).second)
                below.push_back(each.subMenu);
            if (each.id != item) continue;
            if (each.subMenu == nullptr) return {at, menu, i};
            if (!popup) popup = {at, menu, i};
        }
        open.insert(open.end(), below.rbegin(), below.rend());
    }
    if (!popup) SetLastError(ERROR_MENU_ITEM_NOT_FOUND);
    return popup;
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

HMENU CreateMenu() {
    return NewMenu(false);
}

HMENU CreatePopupMenu() {
    return NewMenu(true);
}

BOOL IsMenu(HMENU menu) noexcept {
    const std::lock_guard guard(Lock());
    return TheMenus().menus.contains(menu);
}

BOOL DestroyMenu(HMENU top) {
    std::vector<HWND> windows;
    {
        const std::lock_guard guard(Lock());
        if (FindMenu(top) == nullptr) return 0;
        std::vector<HMENU> leaving{top};
        while (!leaving.empty()) {
            const auto at = TheMenus().menus.find(leaving.back());
            leaving.pop_back();
            if (at == TheMenus().menus.end()) continue;
            for (const MenuItem& item : at->second->items)
                if (item.subMenu != nullptr) leaving.push_back(item.subMenu);
            if (at->second->window != nullptr) windows.push_back(at->second->window);
            TheMenus().menus.erase(at);
        }
    }
    for (const HWND window : windows)
        DestroyWindow(window);
    return 1;
}
