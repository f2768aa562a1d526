// What bitmaps ask of the system beyond the names of platform.h. posix/bitmaps.cpp and
// windows/bitmaps.cpp answer.
#ifndef BRCORE8_PLATFORM_BITMAPS_H
#define BRCORE8_PLATFORM_BITMAPS_H

#include <brcore8/platform/types.h>

namespace brcore8 {

// The pixels of the whole bitmap, with 1 or 32 bits each, in rows from the top, each filled to
// whole 4 bytes. `rows` has room for them; what fills a row is anything. False on failure.
bool CopyBitmapRows(HBITMAP bitmap, int width, int height, int bits, void* rows) noexcept;

}  // namespace brcore8

#endif
