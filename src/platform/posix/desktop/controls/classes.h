// The classes that every module finds without registering them.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_CLASSES_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_CLASSES_H

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

std::vector<std::unique_ptr<WindowClass>> SystemClasses();

}  // namespace brcore8::desktop

#endif
