// The user in a menu.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_MENU_TRACKING_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_MENU_TRACKING_H

#include "platform/posix/desktop/menus/menu.h"

namespace brcore8::desktop {

// What the default procedure does about menus: WM_SYSCOMMAND that opens them, the keys and clicks
// that ask for that. Whether the message was one of those.
bool DoMenuDefault(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The procedure of the windows that popups open in.
LRESULT CALLBACK PopupMenuProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace brcore8::desktop

#endif
