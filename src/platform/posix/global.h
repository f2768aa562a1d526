// Global memory: moveable blocks behind handles. Each fails with null or 0. Any thread, one thread
// a block.
#ifndef BRCORE8_PLATFORM_POSIX_GLOBAL_H
#define BRCORE8_PLATFORM_POSIX_GLOBAL_H

#include <cstddef>

using HGLOBAL = void*;
using SIZE_T = std::size_t;
constexpr unsigned GMEM_MOVEABLE = 0x2;
constexpr unsigned GMEM_ZEROINIT = 0x40;

// A block of `size` bytes, all zero. Both flags are expected.
HGLOBAL GlobalAlloc(unsigned flags, SIZE_T size) noexcept;
// Changes the size, locked or not; bytes gained are zero. On failure the block is what it was.
// Returns the handle, which stays the same.
HGLOBAL GlobalReAlloc(HGLOBAL block, SIZE_T size, unsigned flags) noexcept;
// Null on success.
HGLOBAL GlobalFree(HGLOBAL block) noexcept;
// The address, which holds while the block is locked and not reallocated.
void* GlobalLock(HGLOBAL block) noexcept;
// 1 while locks remain; a block that is not locked is left alone.
int GlobalUnlock(HGLOBAL block) noexcept;
SIZE_T GlobalSize(HGLOBAL block) noexcept;

#endif
