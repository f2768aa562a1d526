// What stands in for the system's description of fonts, and its screen.
#ifndef BRCORE8_TESTS_SUPPORT_SYSTEM_FONTS_H
#define BRCORE8_TESTS_SUPPORT_SYSTEM_FONTS_H

#include <brcore8/platform/font_info.h>

inline int ScreenDpi() {
    return 96;
}

#endif
