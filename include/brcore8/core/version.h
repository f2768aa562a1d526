// What this library is and what it runs on. Nothing here throws but the report, for want of memory;
// any thread may ask.
#ifndef BRCORE8_CORE_VERSION_H
#define BRCORE8_CORE_VERSION_H

#include <brcore8/platform/export.h>

#include <string>

// "8.0.0"
BRCORE8_API const char* SLibraryVersion() noexcept;

// A few lines for people, each ended by a line feed: the library's version, the platform's
// version and build, the code pages, and which parts of the platform this build has.
BRCORE8_API std::string SVersionReport();

// The platform's version as the library found it when it was loaded. Elsewhere than on Windows the
// numbers are those of the kernel's release: 6.1.140 is major 6, minor 1, build 140.
extern "C" BRCORE8_API unsigned long SMajorVersion() noexcept;
extern "C" BRCORE8_API unsigned long SMinorVersion() noexcept;
extern "C" BRCORE8_API unsigned long SBuildNumber() noexcept;

// Which platform it is: the number that Windows has for itself, or ours for the others.
enum SPlatformKind : unsigned long { SPlatformWindows = 2, SPlatformPosix = 10 };
extern "C" BRCORE8_API unsigned long SPlatform() noexcept;

#endif
