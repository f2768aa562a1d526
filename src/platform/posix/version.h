// What the system says of itself.
#ifndef BRCORE8_PLATFORM_POSIX_VERSION_H
#define BRCORE8_PLATFORM_POSIX_VERSION_H

#include "platform/posix/files.h"

struct OSVERSIONINFOA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
};

// Major, minor and build number are the first three numbers of the kernel's release, 0 where it
// has fewer; the platform is SPlatformPosix. Any thread.
BOOL GetVersionExA(OSVERSIONINFOA* version) noexcept;

#endif
