// Drawing that this desktop lacks: null or 0, and the code that says so.

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/last_error.h>

namespace {

// Whatever kind of nothing the call answers.
struct Absent {
    template <class T>
    operator T() const noexcept {
        SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
        return T{};
    }
};

}  // namespace

HBRUSH CreateHatchBrush(int, COLORREF) noexcept {
    return Absent();
}

HBRUSH CreatePatternBrush(HBITMAP) noexcept {
    return Absent();
}

HRGN CreateEllipticRgn(int, int, int, int) noexcept {
    return Absent();
}

BOOL DrawIcon(HDC, int, int, HICON) noexcept {
    return Absent();
}

HPALETTE CreatePalette(const LOGPALETTE*) noexcept {
    return Absent();
}

UINT GetPaletteEntries(HPALETTE, UINT, UINT, PALETTEENTRY*) noexcept {
    return Absent();
}

UINT SetPaletteEntries(HPALETTE, UINT, UINT, const PALETTEENTRY*) noexcept {
    return Absent();
}

UINT GetNearestPaletteIndex(HPALETTE, COLORREF) noexcept {
    return Absent();
}

BOOL ResizePalette(HPALETTE, UINT) noexcept {
    return Absent();
}

HPALETTE SelectPalette(HDC, HPALETTE, BOOL) noexcept {
    return Absent();
}

UINT RealizePalette(HDC) noexcept {
    return Absent();
}

HDC CreateEnhMetaFileA(HDC, const char*, const RECT*, const char*) noexcept {
    return Absent();
}

HENHMETAFILE CloseEnhMetaFile(HDC) noexcept {
    return Absent();
}

BOOL PlayEnhMetaFile(HDC, HENHMETAFILE, const RECT*) noexcept {
    return Absent();
}

BOOL DeleteEnhMetaFile(HENHMETAFILE) noexcept {
    return Absent();
}
