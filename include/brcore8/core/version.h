// What this library is and what it runs on.
#ifndef BRCORE8_CORE_VERSION_H
#define BRCORE8_CORE_VERSION_H

#include <brcore8/platform/export.h>

#include <string>

// "8.0.0"
BRCORE8_API const char* SLibraryVersion() noexcept;

// A few lines for people, each ended by a line feed: the library's version, the platform's
// version and build, the code pages, and which parts of the platform this build has.
BRCORE8_API std::string SVersionReport();

#endif
