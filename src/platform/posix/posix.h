// The platform's names on POSIX systems: what the library calls, with the meaning that the
// platform gives it, and nothing more. One header a family; see there for each promise.
#ifndef BRCORE8_PLATFORM_POSIX_POSIX_H
#define BRCORE8_PLATFORM_POSIX_POSIX_H

#include <brcore8/platform/posix/window_calls.h>
#include <brcore8/platform/types.h>

#include "platform/posix/bitmaps.h"
#include "platform/posix/files.h"
#include "platform/posix/find.h"
#include "platform/posix/fonts.h"
#include "platform/posix/gdi.h"
#include "platform/posix/global.h"
#include "platform/posix/libraries.h"
#include "platform/posix/messages.h"
#include "platform/posix/probes.h"
#include "platform/posix/profile.h"
#include "platform/posix/registry.h"
#include "platform/posix/resources.h"
#include "platform/posix/shell.h"
#include "platform/posix/times.h"
#include "platform/posix/version.h"

#endif
