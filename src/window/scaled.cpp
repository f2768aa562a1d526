#include <brcore8/window/scaled.h>

#include "platform/platform.h"

// The device's resolution, which the system's fonts have too, rather than the window's own number:
// that one is missing from older systems, and differs from the fonts' on a second screen.
int SScaled(int pixels, HWND window) noexcept {
    const HDC context = ::GetDC(window);
    const int dpi = ::GetDeviceCaps(context, LOGPIXELSY);
    ::ReleaseDC(window, context);
    return dpi > 0 ? ::MulDiv(pixels, dpi, 96) : pixels;
}
