// The platform seam. Library code is written once against the platform's own names: on Windows
// they come from the system, elsewhere posix/posix.h declares the few that this library calls,
// each with its promise. No other folder asks which system it is on.
#ifndef BRCORE8_PLATFORM_PLATFORM_H
#define BRCORE8_PLATFORM_PLATFORM_H

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <shellapi.h>
#undef GetClassInfo
#undef LoadString
#else
#include "platform/posix/posix.h"
#endif

#endif
