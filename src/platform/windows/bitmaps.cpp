#include "platform/bitmaps.h"

#include "platform/platform.h"

bool brcore8::CopyBitmapRows(HBITMAP bitmap, int width, int height, int bits, void* rows) noexcept {
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colors[2];  // written by the system, for 1-bit pixels
    } info = {};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = width;
    info.header.biHeight = -height;  // from the top
    info.header.biPlanes = 1;
    info.header.biBitCount = static_cast<WORD>(bits);
    info.header.biCompression = BI_RGB;
    const HDC dc = CreateCompatibleDC(nullptr);
    if (dc == nullptr) return false;
    const int copied = GetDIBits(dc, bitmap, 0, static_cast<UINT>(height), rows,
                                 reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS);
    DeleteDC(dc);
    return copied == height;
}
