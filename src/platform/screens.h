// The screens that windows stand on.
#ifndef BRCORE8_SRC_PLATFORM_SCREENS_H
#define BRCORE8_SRC_PLATFORM_SCREENS_H

#include <brcore8/platform/windows.h>

namespace brcore8 {

// The part of a screen that windows may take, of the one on which most of `place` lies, or which is
// nearest to it.
RECT ScreenNear(const RECT& place) noexcept;

// Where on the screen the window stands while it is neither minimised nor maximised.
RECT RestoredPlace(HWND window) noexcept;

}  // namespace brcore8

#endif
