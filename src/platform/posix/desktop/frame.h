// What a window is outside of its client area: border, caption, menu bar, scroll bars. Places are
// in the window's own coordinates, those of GetWindowDC.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_FRAME_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_FRAME_H

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

// How wide border and caption are on each side. Where a screen's own manager draws the frames of
// top-level windows, those have none.
RECT FrameMargins(DWORD style, DWORD exStyle) noexcept;
// Without the boxes' room taken off; empty without a caption.
RECT CaptionOf(const Window& window) noexcept;
// The box of HTCLOSE, HTMAXBUTTON or HTMINBUTTON; empty when the window has not got it.
RECT BoxOf(const Window& window, int part) noexcept;
// The part, HTCLIENT and the like, under a point of the screen.
LRESULT HitFrame(const Window& window, POINT screen) noexcept;

// What WM_NCPAINT paints.
void PaintFrame(const Window& window);
// Sends WM_NCPAINT when the window shows and its frame is due.
void PaintDueFrame(HWND handle);
// Sends it at once.
void RepaintFrame(HWND handle);

}  // namespace brcore8::desktop

#endif
