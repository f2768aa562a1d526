// How the items of menus change.

#include <algorithm>
#include <cstring>

#include "platform/posix/desktop/menus/menu.h"

using namespace brcore8::desktop;

namespace {

constexpr UINT kTypeBits = MF_BITMAP | MFT_OWNERDRAW | MFT_MENUBARBREAK | MFT_MENUBREAK |
                           MFT_RADIOCHECK | MFT_SEPARATOR | MFT_RIGHTJUSTIFY;
constexpr UINT kStateBits = MFS_GRAYED | MFS_CHECKED | MFS_HILITE | MFS_DEFAULT;
constexpr UINT kPlainTypeBits = MF_BITMAP | MFT_OWNERDRAW | MFT_SEPARATOR;
constexpr std::size_t kMostItems = 30000;

// What AppendMenuA and its like are told of an item; false when its popup may not be there. An item
// whose popup is none is a plain one.
bool Describe(HMENU menu, UINT flags, UINT_PTR id, const char* text, MenuItem& item) {
    item = {};
    item.type = flags & kTypeBits & ~UINT{MFT_RADIOCHECK | MFT_RIGHTJUSTIFY};
    item.state = flags & (MF_GRAYED | MF_DISABLED | MF_CHECKED | MF_HILITE);
    item.id = static_cast<UINT>(id);
    if (Menu* const sub =
            (flags & MF_POPUP) != 0 ? FindMenu(reinterpret_cast<HMENU>(id)) : nullptr) {
        item.subMenu = reinterpret_cast<HMENU>(id);
        if (!CanHold(menu, item.subMenu)) return false;
        sub->isPopup = true;
    }
    const auto value = reinterpret_cast<std::uintptr_t>(text);
    if ((item.type & MFT_OWNERDRAW) != 0)
        item.data = value;
    else if ((item.type & MF_BITMAP) != 0)
        item.bitmap = reinterpret_cast<HBITMAP>(value);
    else if (text == nullptr)
        item.type |= MFT_SEPARATOR;
    else if (!item.IsSeparator())
        item.text = text;
    return true;
}

bool Fits(const MENUITEMINFOA& info) noexcept {
    constexpr UINT kWithoutBitmap = offsetof(MENUITEMINFOA, hbmpItem);
    return info.cbSize == sizeof info || info.cbSize == kWithoutBitmap;
}

// Takes what the mask names from the record.
bool Apply(HMENU menu, const MENUITEMINFOA& info, MenuItem& item) {
    if ((info.fMask & MIIM_SUBMENU) != 0 && info.hSubMenu != nullptr) {
        Menu* const sub = FindMenu(info.hSubMenu);
        if (sub == nullptr || !CanHold(menu, info.hSubMenu)) return false;
        sub->isPopup = true;
    }
    if ((info.fMask & MIIM_SUBMENU) != 0) item.subMenu = info.hSubMenu;
    if ((info.fMask & (MIIM_TYPE | MIIM_FTYPE)) != 0) item.type = info.fType & kTypeBits;
    if ((info.fMask & MIIM_STATE) != 0) item.state = info.fState & kStateBits;
    if ((info.fMask & MIIM_ID) != 0) item.id = info.wID;
    if ((info.fMask & MIIM_DATA) != 0) item.data = info.dwItemData;
    if ((info.fMask & MIIM_CHECKMARKS) != 0) {
        item.checked = info.hbmpChecked;
        item.unchecked = info.hbmpUnchecked;
    }
    if ((info.fMask & MIIM_BITMAP) != 0 && info.cbSize == sizeof info) item.bitmap = info.hbmpItem;
    const bool hasText = (info.fMask & MIIM_STRING) != 0 ||
                         ((info.fMask & MIIM_TYPE) != 0 && (item.type & kPlainTypeBits) == 0);
    if (hasText) item.text = info.dwTypeData != nullptr ? info.dwTypeData : "";
    return true;
}

// Before the item of that position or command, else at the end.
BOOL Insert(HMENU handle, UINT before, bool isByPosition, const MenuItem& item) {
    MenuPlace place;
    if (before != static_cast<UINT>(-1)) place = FindMenuItem(handle, before, isByPosition);
    if (!place) place = {handle, FindMenu(handle), kNoItem};
    if (!place) return 0;
    std::vector<MenuItem>& items = place.menu->items;
    if (items.size() >= kMostItems) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    const std::size_t index = std::min(place.index, items.size());
    items.insert(items.begin() + static_cast<std::ptrdiff_t>(index), item);
    return 1;
}

// Takes the item out and answers its popup.
bool TakeOut(HMENU handle, UINT item, UINT flags, HMENU& subMenu) {
    const std::lock_guard guard(Lock());
    const MenuPlace place = FindMenuItem(handle, item, (flags & MF_BYPOSITION) != 0);
    if (!place) return false;
    subMenu = place.Item().subMenu;
    place.menu->items.erase(place.menu->items.begin() + static_cast<std::ptrdiff_t>(place.index));
    return true;
}

}  // namespace

// --- Adding and taking out --------------------------------------------------------------------

BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR id, const char* text) {
    return InsertMenuA(menu, static_cast<UINT>(-1), flags | MF_BYPOSITION, id, text);
}

BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, const char* text) {
    const std::lock_guard guard(Lock());
    MenuItem made;
    return FindMenu(menu) != nullptr && Describe(menu, flags, id, text, made) &&
           Insert(menu, item, (flags & MF_BYPOSITION) != 0, made);
}

BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, const char* text) {
    HMENU old = nullptr;
    {
        const std::lock_guard guard(Lock());
        const MenuPlace place = FindMenuItem(menu, item, (flags & MF_BYPOSITION) != 0);
        MenuItem made;
        if (!place || !Describe(place.handle, flags, id, text, made)) return 0;
        if (place.Item().subMenu != made.subMenu) old = place.Item().subMenu;
        made.checked = place.Item().checked;
        made.unchecked = place.Item().unchecked;
        place.Item() = std::move(made);
    }
    if (old != nullptr) DestroyMenu(old);
    return 1;
}

BOOL RemoveMenu(HMENU menu, UINT item, UINT flags) {
    HMENU subMenu = nullptr;
    return TakeOut(menu, item, flags, subMenu);
}

BOOL DeleteMenu(HMENU menu, UINT item, UINT flags) {
    HMENU subMenu = nullptr;
    if (!TakeOut(menu, item, flags, subMenu)) return 0;
    if (subMenu != nullptr) DestroyMenu(subMenu);
    return 1;
}

BOOL InsertMenuItemA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info) {
    const std::lock_guard guard(Lock());
    MenuItem made;
    if (FindMenu(menu) == nullptr) return 0;
    if (!Fits(*info)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return Apply(menu, *info, made) && Insert(menu, item, byPosition != 0, made);
}

// --- The whole of an item ---------------------------------------------------------------------

BOOL SetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info) {
    HMENU old = nullptr;
    {
        const std::lock_guard guard(Lock());
        const MenuPlace place = FindMenuItem(menu, item, byPosition != 0);
        if (!place) return 0;
        if (!Fits(*info)) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
        }
        MenuItem changed = place.Item();
        if (!Apply(place.handle, *info, changed)) return 0;
        if (changed.subMenu != place.Item().subMenu) old = place.Item().subMenu;
        place.Item() = std::move(changed);
    }
    if (old != nullptr) DestroyMenu(old);
    return 1;
}

BOOL GetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, MENUITEMINFOA* info) {
    const std::lock_guard guard(Lock());
    const MenuPlace place = FindMenuItem(menu, item, byPosition != 0);
    if (!place) return 0;
    if (!Fits(*info)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const MenuItem& found = place.Item();
    if ((info->fMask & (MIIM_TYPE | MIIM_FTYPE)) != 0) info->fType = found.type;
    if ((info->fMask & MIIM_STATE) != 0) info->fState = found.state;
    if ((info->fMask & MIIM_ID) != 0) info->wID = found.id;
    if ((info->fMask & MIIM_SUBMENU) != 0) info->hSubMenu = found.subMenu;
    if ((info->fMask & MIIM_DATA) != 0) info->dwItemData = found.data;
    if ((info->fMask & MIIM_CHECKMARKS) != 0) {
        info->hbmpChecked = found.checked;
        info->hbmpUnchecked = found.unchecked;
    }
    if ((info->fMask & MIIM_BITMAP) != 0 && info->cbSize == sizeof *info)
        info->hbmpItem = found.bitmap;
    if ((info->fMask & (MIIM_TYPE | MIIM_STRING)) == 0) return 1;
    const std::size_t length = found.text.size();
    if (info->dwTypeData == nullptr || info->cch == 0) {
        info->cch = static_cast<UINT>(length);
        return 1;
    }
    info->cch = static_cast<UINT>(std::min<std::size_t>(length, info->cch - 1));
    std::memcpy(info->dwTypeData, found.text.data(), info->cch);
    info->dwTypeData[info->cch] = '\0';
    return 1;
}

// --- Questions --------------------------------------------------------------------------------

int GetMenuItemCount(HMENU handle) noexcept {
    const std::lock_guard guard(Lock());
    const Menu* const menu = FindMenu(handle);
    return menu != nullptr ? static_cast<int>(menu->items.size()) : -1;
}

UINT GetMenuItemID(HMENU handle, int position) noexcept {
    const std::lock_guard guard(Lock());
    const Menu* const menu = FindMenu(handle);
    if (menu == nullptr || static_cast<std::size_t>(position) >= menu->items.size())
        return static_cast<UINT>(-1);
    const MenuItem& item = menu->items[static_cast<std::size_t>(position)];
    return item.subMenu == nullptr ? item.id : static_cast<UINT>(-1);
}

HMENU GetSubMenu(HMENU handle, int position) noexcept {
    const std::lock_guard guard(Lock());
    const Menu* const menu = FindMenu(handle);
    if (menu == nullptr || static_cast<std::size_t>(position) >= menu->items.size()) return nullptr;
    return menu->items[static_cast<std::size_t>(position)].subMenu;
}

int GetMenuStringA(HMENU menu, UINT item, char* text, int size, UINT flags) {
    const std::lock_guard guard(Lock());
    if (text != nullptr && size > 0) text[0] = '\0';
    const MenuPlace place = FindMenuItem(menu, item, (flags & MF_BYPOSITION) != 0);
    if (!place) return 0;
    const std::string& whole = place.Item().text;
    if (text == nullptr || size <= 0) return static_cast<int>(whole.size());
    const std::size_t length = std::min(whole.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(text, whole.data(), length);
    text[length] = '\0';
    return static_cast<int>(length);
}

UINT GetMenuState(HMENU menu, UINT item, UINT flags) {
    const std::lock_guard guard(Lock());
    const MenuPlace place = FindMenuItem(menu, item, (flags & MF_BYPOSITION) != 0);
    if (!place) return static_cast<UINT>(-1);
    const MenuItem& found = place.Item();
    const UINT bits = found.type | found.state;
    if (found.subMenu == nullptr) return bits;
    const Menu* const sub = FindMenu(found.subMenu);
    const std::size_t count = sub != nullptr ? sub->items.size() : 0;
    return static_cast<UINT>(count << 8) | ((bits | MF_POPUP) & 0xFF);
}

// --- States -----------------------------------------------------------------------------------

namespace {

// Exchanges some bits of an item's state; -1 where there is none.
DWORD ExchangeState(HMENU menu, UINT item, UINT flags, UINT bits) {
    const std::lock_guard guard(Lock());
    const MenuPlace place = FindMenuItem(menu, item, (flags & MF_BYPOSITION) != 0);
    if (!place) return static_cast<DWORD>(-1);
    UINT& state = place.Item().state;
    const UINT old = state & bits;
    state = (state & ~bits) | (flags & bits);
    return old;
}

}  // namespace

DWORD CheckMenuItem(HMENU menu, UINT item, UINT check) {
    return ExchangeState(menu, item, check, MF_CHECKED);
}

BOOL EnableMenuItem(HMENU menu, UINT item, UINT enable) {
    return static_cast<BOOL>(ExchangeState(menu, item, enable, MF_GRAYED | MF_DISABLED));
}

BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT check, UINT flags) {
    const std::lock_guard guard(Lock());
    const bool isByPosition = (flags & MF_BYPOSITION) != 0;
    const MenuPlace chosen = FindMenuItem(menu, check, isByPosition);
    if (!chosen || check < first || check > last) return 0;
    std::vector<MenuItem>& items = chosen.menu->items;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::size_t key = isByPosition ? i : items[i].id;
        if (key < first || key > last || items[i].IsSeparator()) continue;
        items[i].state &= ~UINT{MFS_CHECKED};
    }
    chosen.Item().type |= MFT_RADIOCHECK;
    chosen.Item().state |= MFS_CHECKED;
    return 1;
}

BOOL SetMenuDefaultItem(HMENU handle, UINT item, UINT byPosition) {
    const std::lock_guard guard(Lock());
    Menu* const menu = FindMenu(handle);
    if (menu == nullptr) return 0;
    std::size_t chosen = kNoItem;
    for (std::size_t i = 0; i < menu->items.size(); ++i)
        if ((byPosition ? i : menu->items[i].id) == item && chosen == kNoItem) chosen = i;
    for (MenuItem& each : menu->items)
        each.state &= ~UINT{MFS_DEFAULT};
    if (item == static_cast<UINT>(-1)) return 1;
    if (chosen == kNoItem) {
        SetLastError(ERROR_MENU_ITEM_NOT_FOUND);
        return 0;
    }
    menu->items[chosen].state |= MFS_DEFAULT;
    return 1;
}

UINT GetMenuDefaultItem(HMENU handle, UINT byPosition, UINT flags) {
    const std::lock_guard guard(Lock());
    // Popups that are the default item themselves may have one of their own.
    UINT answer = static_cast<UINT>(-1);
    for (int depth = 0; depth <= 25; ++depth) {
        const Menu* const menu = FindMenu(handle);
        if (menu == nullptr) return answer;
        const auto at =
            std::find_if(menu->items.begin(), menu->items.end(),
                         [](const MenuItem& item) { return (item.state & MFS_DEFAULT) != 0; });
        if (at == menu->items.end()) return answer;
        if (at->IsDisabled() && (flags & GMDI_USEDISABLED) == 0) return answer;
        answer = byPosition ? static_cast<UINT>(at - menu->items.begin()) : at->id;
        if (at->subMenu == nullptr || (flags & GMDI_GOINTOPOPUPS) == 0) return answer;
        handle = at->subMenu;
    }
    return answer;
}
