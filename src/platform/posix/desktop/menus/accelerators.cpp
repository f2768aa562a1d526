// Keys that stand for commands.

#include <algorithm>
#include <map>
#include <vector>

#include <brcore8/platform/posix/window_calls.h>

#include "platform/posix/desktop/menus/menu.h"

using namespace brcore8::desktop;

namespace {

using Table = std::vector<ACCEL>;

constexpr int kMostEntries = 32767;

struct Tables {
    std::map<HACCEL, Table> tables;
    std::uint32_t last = 0x20000;
};

// Never destroyed: tables may outlive static objects.
Tables& TheTables() {
    static Tables& tables = *new Tables;
    return tables;
}

const Table* FindTable(HACCEL handle) noexcept {
    const auto at = TheTables().tables.find(handle);
    if (at != TheTables().tables.end()) return &at->second;
    SetLastError(ERROR_INVALID_ACCEL_HANDLE);
    return nullptr;
}

bool Means(const ACCEL& entry, const MSG& message, int held) noexcept {
    if (entry.key != LOWORD(message.wParam)) return false;
    const bool isAlt = (entry.fVirt & FALT) != 0;
    if ((entry.fVirt & FVIRTKEY) != 0) {
        const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
        return isKey && (entry.fVirt & (FSHIFT | FCONTROL | FALT)) == held;
    }
    return message.message == static_cast<UINT>(isAlt ? WM_SYSCHAR : WM_CHAR);
}

// The command of the message's key, or -1.
int CommandOf(const Table& table, const MSG& message) noexcept {
    constexpr LPARAM kAltIsDown = 0x20000000;
    const bool isAlt = message.message == WM_SYSKEYDOWN && (message.lParam & kAltIsDown) != 0;
    const int held = (GetKeyState(VK_SHIFT) < 0 ? FSHIFT : 0) |
                     (GetKeyState(VK_CONTROL) < 0 ? FCONTROL : 0) |
                     (isAlt || GetKeyState(VK_MENU) < 0 ? FALT : 0);
    const auto at = std::find_if(table.begin(), table.end(),
                                 [&](const ACCEL& entry) { return Means(entry, message, held); });
    return at != table.end() ? at->cmd : -1;
}

struct InBar {
    UINT index = 0;         // in the bar, of the command or the popup that leads to it
    HMENU popup = nullptr;  // the one that has the command in it
    UINT popupIndex = 0;    // in the menu that opens the popup
    bool isThere = false;
};

// From the bar's popup to the one below that holds the command.
void Descend(InBar& found, UINT command, HMENU holder) {
    const auto leads = [=](const MenuItem& item) {
        return item.subMenu != nullptr &&
               FindMenuItem(item.subMenu, command, false).handle == holder;
    };
    while (found.popup != holder) {
        const std::vector<MenuItem>& items = FindMenu(found.popup)->items;
        const auto at = std::find_if(items.begin(), items.end(), leads);
        if (at == items.end()) return;
        found.popup = at->subMenu;
        found.popupIndex = static_cast<UINT>(at - items.begin());
    }
}

InBar FindInBar(HMENU bar, UINT command) {
    const std::lock_guard guard(Lock());
    const Menu* const menu = FindMenu(bar);
    for (std::size_t i = 0; menu != nullptr && i < menu->items.size(); ++i) {
        InBar found{static_cast<UINT>(i), menu->items[i].subMenu, static_cast<UINT>(i), true};
        if (found.popup == nullptr) {
            if (menu->items[i].id == command) return found;
            continue;
        }
        const MenuPlace place = FindMenuItem(found.popup, command, false);
        if (!place) continue;
        Descend(found, command, place.handle);
        return found;
    }
    return {};
}

bool IsOff(HMENU menu, UINT item, UINT flags) {
    const UINT state = GetMenuState(menu, item, flags);
    return state != static_cast<UINT>(-1) && (state & (MF_GRAYED | MF_DISABLED)) != 0;
}

// Lets the window bring its menu up to date as if it were opened, then asks the menu.
bool IsAllowed(HWND window, HMENU bar, UINT command) {
    if (!IsWindowEnabled(window)) return false;
    const InBar place = FindInBar(bar, command);
    if (!place.isThere) return true;
    SendMessageA(window, WM_INITMENU, reinterpret_cast<WPARAM>(bar), 0);
    if (place.popup != nullptr)
        SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(place.popup),
                     MAKELPARAM(place.popupIndex, 0));
    return IsWindow(window) && IsMenu(bar) && !IsOff(bar, command, MF_BYCOMMAND) &&
           !IsOff(bar, place.index, MF_BYPOSITION);
}

}  // namespace

HACCEL CreateAcceleratorTableA(ACCEL* table, int count) {
    const std::lock_guard guard(Lock());
    if (table == nullptr || count < 1 || count > kMostEntries) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    Tables& tables = TheTables();
    const auto handle = reinterpret_cast<HACCEL>(std::uintptr_t{tables.last + 4});
    try {
        tables.tables.emplace(handle, Table(table, table + count));
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    tables.last += 4;
    return handle;
}

BOOL DestroyAcceleratorTable(HACCEL table) {
    const std::lock_guard guard(Lock());
    return FindTable(table) != nullptr && TheTables().tables.erase(table) > 0;
}

int CopyAcceleratorTableA(HACCEL handle, ACCEL* out, int count) {
    const std::lock_guard guard(Lock());
    const Table* const table = FindTable(handle);
    if (table == nullptr) return 0;
    const int size = static_cast<int>(table->size());
    if (out == nullptr) return size;
    const int copied = std::clamp(count, 0, size);
    std::copy_n(table->begin(), copied, out);
    return copied;
}

int TranslateAcceleratorA(HWND window, HACCEL handle, MSG* message) {
    const UINT kind = message->message;
    if (kind != WM_KEYDOWN && kind != WM_SYSKEYDOWN && kind != WM_CHAR && kind != WM_SYSCHAR)
        return 0;
    if (Find(window) == nullptr) return 0;
    int command = -1;
    {
        const std::lock_guard guard(Lock());
        if (const Table* const table = FindTable(handle)) command = CommandOf(*table, *message);
    }
    if (command < 0) return 0;
    // While the mouse is held a key does not interfere.
    if (GetCapture() == nullptr && IsAllowed(window, GetMenu(window), static_cast<UINT>(command)))
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(command, 1), 0);
    return 1;
}
