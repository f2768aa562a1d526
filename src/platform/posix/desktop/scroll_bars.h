// Scroll bars: those at a window's edges, and the control that is one.
//
// Places are in the client area's coordinates: a window's own bars lie just outside of it.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_SCROLL_BARS_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_SCROLL_BARS_H

#include <brcore8/platform/posix/control_calls.h>
#include <brcore8/platform/posix/drawing_calls.h>

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

// The window's bar of that kind, SB_HORZ, SB_VERT or SB_CTL; null for a window that is gone.
ScrollBar* ScrollBarOf(HWND window, int bar) noexcept;
// Where it is; empty when the window has none.
RECT ScrollBarRect(const Window& window, int bar) noexcept;
bool IsUpright(const Window& window, int bar) noexcept;

// What of a bar lies where, along its length.
struct ScrollParts {
    int begin;       // of the first arrow
    int trackBegin;  // behind it
    int thumbBegin;
    int thumbEnd;
    int trackEnd;
    int end;
    int lastPosition;  // of the thumb

    bool HasThumb() const noexcept { return thumbEnd > thumbBegin; }
};
ScrollParts PartsOf(const Window& window, int bar) noexcept;

void DrawScrollBar(HDC dc, const Window& window, int bar);
// The bars of a window's frame, on a context whose origin is the client area's.
void DrawScrollBars(HDC dc, const Window& window);
// Paints a bar at once, if it shows.
void ShowScrollBarAnew(HWND window, int bar);

// The user holds the mouse on a bar, from a point of the client area on: runs until the button is
// let go, and tells `target` what is scrolled.
void TrackScrollBar(HWND window, int bar, POINT point, HWND target);

}  // namespace brcore8::desktop

#endif
