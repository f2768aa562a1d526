// Global memory, which is public since the clipboard speaks in it.
#ifndef BRCORE8_PLATFORM_POSIX_GLOBAL_H
#define BRCORE8_PLATFORM_POSIX_GLOBAL_H

#include <brcore8/platform/posix/global_calls.h>

#endif
