// The system's own description of fonts, and its screen.
#ifndef BRCORE8_TESTS_SUPPORT_SYSTEM_FONTS_H
#define BRCORE8_TESTS_SUPPORT_SYSTEM_FONTS_H

#include <windows.h>

inline int ScreenDpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

#endif
