// String resources without the platform's string tables.
#ifndef BRCORE8_PLATFORM_POSIX_RESOURCES_H
#define BRCORE8_PLATFORM_POSIX_RESOURCES_H

#include <brcore8/platform/types.h>

// Copies the string `id` of a module into a buffer of `size` bytes, cut to size - 1 bytes, and
// terminates it. Returns the bytes copied without the terminator; 0, and an empty text, when the
// module has no such string; -1, and nothing done, when `size` is not positive. Any thread.
int LoadStringA(HINSTANCE module, unsigned id, char* buffer, int size);

#endif
