// The system's own header, or what it does to our names where there is none.
#ifndef BRCORE8_TESTS_PLATFORM_SYSTEM_HEADER_H
#define BRCORE8_TESTS_PLATFORM_SYSTEM_HEADER_H

#if defined(_WIN32)
#include <windows.h>
#else
#define GetClassInfo GetClassInfoA
#define LoadString LoadStringA
#endif

#endif
