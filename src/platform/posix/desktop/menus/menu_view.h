// How menus look: where their items are, and how they are painted. All of it under the lock.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_MENU_VIEW_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_MENU_VIEW_H

#include <brcore8/platform/posix/drawing_calls.h>

#include "platform/posix/desktop/menus/menu.h"

namespace brcore8::desktop {

// The strip of a top-level window's menu, in the window's own coordinates; empty without one.
RECT MenuBarOf(const Window& window) noexcept;
// Places the items of the window's bar, in the window's own coordinates.
void LayOutBar(const Window& window, Menu& menu);
void PaintMenuBar(const Window& window, HDC context);
// Sends WM_NCPAINT for the bar to be painted anew.
void RepaintMenuBar(HWND window);

// Places the items of a popup in its client area, and tells how large that is.
SIZE LayOutPopup(Menu& menu);
void PaintPopup(const Menu& menu, HDC context, int width);

// The item under a point of what shows the menu, or kNoItem.
std::size_t ItemAt(const Menu& menu, POINT point) noexcept;
// The lower-case letter that chooses the item, 0 without one.
char MnemonicOf(const std::string& text) noexcept;

}  // namespace brcore8::desktop

#endif
