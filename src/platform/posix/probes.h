// Probes of memory: not 0 when the range or string cannot be used. They change nothing and never
// touch what they do not know to be mapped. Where the system does not tell its mappings, only the
// null page is bad. Any thread; a mapping made or removed meanwhile may be missed.
#ifndef BRCORE8_PLATFORM_POSIX_PROBES_H
#define BRCORE8_PLATFORM_POSIX_PROBES_H

#include "platform/posix/files.h"

#include <cstddef>

// An empty range is good.
BOOL IsBadReadPtr(const void* address, std::size_t size) noexcept;
BOOL IsBadWritePtr(void* address, std::size_t size) noexcept;
// Up to the terminator or `most` characters.
BOOL IsBadStringPtrA(const char* text, std::size_t most) noexcept;
BOOL IsBadStringPtrW(const wchar_t* text, std::size_t most) noexcept;

#endif
