// How menus are entered.

#include "platform/posix/desktop/menus/menu_tracking.h"

#include <utility>

#include "platform/posix/desktop/menus/menu_view.h"
#include "platform/posix/desktop/menus/tracker.h"

namespace brcore8::desktop {

namespace {

// Alt went down and no other key since.
thread_local bool t_isAltAlone = false;

bool CanTrackBar(HWND window) {
    return Tracker::current == nullptr && GetMenuItemCount(GetMenu(window)) > 0 &&
           IsWindowEnabled(window);
}

void TrackBar(HWND window, char letter, const POINT* click) {
    if (!CanTrackBar(window)) return;
    UINT chosen = 0;
    {
        Tracker tracker(window, GetMenu(window), true, 0);
        tracker.Begin();
        if (click != nullptr) {
            RECT ignored{};
            GetMenuItemRect(window, GetMenu(window), 0, &ignored);
            tracker.HandleButton(*click);
        } else if (letter != 0) {
            tracker.HandleCharacter(letter);
        } else {
            tracker.SelectNext(1);
        }
        chosen = tracker.Run();
    }
    if (chosen != 0) PostMessageA(window, WM_COMMAND, chosen, 0);
}

HWND TopOf(HWND window) noexcept {
    return GetAncestor(window, GA_ROOT);
}

}  // namespace

bool DoMenuDefault(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SYSKEYDOWN:
            t_isAltAlone = wParam == VK_MENU;
            if (wParam != VK_F10) return false;
            [[fallthrough]];
        case WM_KEYDOWN:
            if (message == WM_KEYDOWN) t_isAltAlone = false;
            if (wParam != VK_F10 || GetKeyState(VK_SHIFT) < 0) return false;
            t_isAltAlone = false;
            SendMessageA(TopOf(window), WM_SYSCOMMAND, SC_KEYMENU, 0);
            return true;
        case WM_SYSKEYUP:
        case WM_KEYUP:
            if (wParam != VK_MENU || !std::exchange(t_isAltAlone, false)) return false;
            SendMessageA(TopOf(window), WM_SYSCOMMAND, SC_KEYMENU, 0);
            return true;
        case WM_SYSCHAR:
            t_isAltAlone = false;
            if (wParam <= ' ') return false;
            SendMessageA(TopOf(window), WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(wParam));
            return true;
        case WM_NCLBUTTONDOWN:
            if (wParam != HTMENU) return false;
            SendMessageA(window, WM_SYSCOMMAND, SC_MOUSEMENU | HTMENU, lParam);
            return true;
        case WM_SYSCOMMAND: {
            const UINT command = static_cast<UINT>(wParam) & 0xFFF0;
            const POINT point{
                static_cast<std::int16_t>(LOWORD(static_cast<std::uint64_t>(lParam))),
                static_cast<std::int16_t>(HIWORD(static_cast<std::uint64_t>(lParam)))};
            if (command == SC_KEYMENU) TrackBar(window, static_cast<char>(lParam), nullptr);
            if (command == SC_MOUSEMENU) TrackBar(window, 0, &point);
            return command == SC_KEYMENU || command == SC_MOUSEMENU;
        }
        case WM_CANCELMODE:
            EndMenu();
            return false;
        default:
            return false;
    }
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

BOOL TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND window, TPMPARAMS* keepClear) {
    if (!IsMenu(menu)) {
        SetLastError(ERROR_INVALID_MENU_HANDLE);
        return 0;
    }
    if (Find(window) == nullptr) return 0;
    if (Tracker::current != nullptr) {
        SetLastError(ERROR_POPUP_ALREADY_ACTIVE);
        return 0;
    }
    UINT chosen = 0;
    {
        Tracker tracker(window, menu, false, flags);
        tracker.Begin();
        if (!tracker.Open({x, y}, keepClear != nullptr ? &keepClear->rcExclude : nullptr))
            tracker.End();
        chosen = tracker.Run();
    }
    if ((flags & TPM_RETURNCMD) != 0) return static_cast<BOOL>(chosen);
    if (chosen != 0) PostMessageA(window, WM_COMMAND, chosen, 0);
    return 1;
}

BOOL TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int, HWND window, const RECT*) {
    return TrackPopupMenuEx(menu, flags, x, y, window, nullptr);
}

BOOL EndMenu() {
    if (Tracker::current == nullptr) return 0;
    Tracker::current->Leave();
    // The loop may be waiting for a message.
    PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
    return 1;
}
