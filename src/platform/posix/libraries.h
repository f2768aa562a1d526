// Libraries loaded while the program runs.
#ifndef BRCORE8_PLATFORM_POSIX_LIBRARIES_H
#define BRCORE8_PLATFORM_POSIX_LIBRARIES_H

#include <brcore8/platform/types.h>

using HMODULE = HINSTANCE;
using FARPROC = int (*)();

// Loads a library: NAME or NAME.dll is libNAME.so, beside the program if it is there, else where
// the system finds it; a name with a folder is taken as it stands. Null on failure. The handle
// serves the two functions below; it is not the one under which a module's resources are found.
HMODULE LoadLibraryA(const char* name) noexcept;
FARPROC GetProcAddress(HMODULE library, const char* name) noexcept;
// 1, or 0 for what is no library. The library goes when it was freed as often as loaded.
int FreeLibrary(HMODULE library) noexcept;

#endif
