// The screen of an X server.
#ifndef BRCORE8_SRC_DISPLAY_X_SCREEN_H
#define BRCORE8_SRC_DISPLAY_X_SCREEN_H

#include "platform/posix/desktop/screen.h"

namespace brcore8::desktop {

// That which DISPLAY names; null when it cannot be reached, or lacks what is needed.
Screen* OpenXScreen(ScreenListener& listener) noexcept;

}  // namespace brcore8::desktop

#endif
