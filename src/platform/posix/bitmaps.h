// Bitmaps and icons in memory. Each call fails with 0 or null. Any thread, one thread an object.
#ifndef BRCORE8_PLATFORM_POSIX_BITMAPS_H
#define BRCORE8_PLATFORM_POSIX_BITMAPS_H

#include <brcore8/platform/types.h>

#include <cstdint>

// What GetObjectA tells of a bitmap.
struct BITMAP {
    std::int32_t bmType;  // 0
    std::int32_t bmWidth;
    std::int32_t bmHeight;
    std::int32_t bmWidthBytes;  // of a row, filled to whole 2 bytes
    std::uint16_t bmPlanes;     // 1
    std::uint16_t bmBitsPixel;
    void* bmBits;  // null
};

struct ICONINFO {
    int fIcon;
    std::uint32_t xHotspot;
    std::uint32_t yHotspot;
    HBITMAP hbmMask;
    HBITMAP hbmColor;
};

// A bitmap of one plane and 1 or 32 bits a pixel, whose rows, from the top, are filled to whole 2
// bytes. A null `rows` fails.
HBITMAP CreateBitmap(int width, int height, unsigned planes, unsigned bits,
                     const void* rows) noexcept;

// An icon with copies of both bitmaps; without colours the mask holds them in its lower half. The
// hot spot of an icon (fIcon is not 0) is its middle.
HICON CreateIconIndirect(ICONINFO* info) noexcept;
// Fills `info`, whose bitmaps are new and the caller's.
int GetIconInfo(HICON icon, ICONINFO* info) noexcept;
int DestroyIcon(HICON icon) noexcept;

#endif
