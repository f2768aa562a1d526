// Global memory: moveable blocks behind handles, which the clipboard takes and gives. Each call
// fails with null or 0. Any thread, one thread a block.
#ifndef BRCORE8_PLATFORM_POSIX_GLOBAL_CALLS_H
#define BRCORE8_PLATFORM_POSIX_GLOBAL_CALLS_H

#include <brcore8/platform/export.h>

#include <cstddef>

using HGLOBAL = void*;
using SIZE_T = std::size_t;
constexpr unsigned GMEM_MOVEABLE = 0x2;
constexpr unsigned GMEM_ZEROINIT = 0x40;

// A block of `size` bytes, all zero. Both flags are expected.
BRCORE8_API HGLOBAL GlobalAlloc(unsigned flags, SIZE_T size) noexcept;
// Changes the size, locked or not; bytes gained are zero. On failure the block is what it was.
// Returns the handle, which stays the same.
BRCORE8_API HGLOBAL GlobalReAlloc(HGLOBAL block, SIZE_T size, unsigned flags) noexcept;
// Null on success.
BRCORE8_API HGLOBAL GlobalFree(HGLOBAL block) noexcept;
// The address, which holds while the block is locked and not reallocated.
BRCORE8_API void* GlobalLock(HGLOBAL block) noexcept;
// 1 while locks remain; a block that is not locked is left alone.
BRCORE8_API int GlobalUnlock(HGLOBAL block) noexcept;
BRCORE8_API SIZE_T GlobalSize(HGLOBAL block) noexcept;

#endif
