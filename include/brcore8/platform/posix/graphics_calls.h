// More drawing: regions, image lists, shapes of many points, and questions about what is selected.
//
// Palettes, metafiles, hatched and patterned brushes, regions that are no rectangles, and printers
// are missing: what makes one answers null with ERROR_CALL_NOT_IMPLEMENTED, and so do the calls
// that want one.
//
// Threads and errors: as in drawing_calls.h.
#ifndef BRCORE8_PLATFORM_POSIX_GRAPHICS_CALLS_H
#define BRCORE8_PLATFORM_POSIX_GRAPHICS_CALLS_H

#include <brcore8/platform/posix/drawing_calls.h>

struct HENHMETAFILE__;
using HENHMETAFILE = HENHMETAFILE__*;
struct _IMAGELIST;
using HIMAGELIST = _IMAGELIST*;

struct LOGPEN {
    UINT lopnStyle;
    POINT lopnWidth;  // x alone counts
    COLORREF lopnColor;
};
struct LOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch;
};
struct PALETTEENTRY {
    BYTE peRed, peGreen, peBlue, peFlags;
};
struct LOGPALETTE {
    WORD palVersion;
    WORD palNumEntries;
    PALETTEENTRY palPalEntry[1];
};

constexpr int LOGPIXELSX = 88;
constexpr int LOGPIXELSY = 90;
constexpr int NULLREGION = 1;
constexpr int SIMPLEREGION = 2;
constexpr int COMPLEXREGION = 3;
constexpr int RGN_AND = 1;
constexpr int RGN_OR = 2;
constexpr int RGN_XOR = 3;
constexpr int RGN_DIFF = 4;
constexpr int RGN_COPY = 5;
constexpr UINT OBJ_PEN = 1;
constexpr UINT OBJ_BRUSH = 2;
constexpr UINT OBJ_FONT = 6;
constexpr UINT OBJ_BITMAP = 7;
constexpr UINT BS_SOLID = 0;
constexpr UINT BS_NULL = 1;
constexpr DWORD PATCOPY = 0x00F00021;
constexpr DWORD DSTINVERT = 0x00550009;
constexpr DWORD BLACKNESS = 0x00000042;
constexpr DWORD WHITENESS = 0x00FF0062;
constexpr COLORREF CLR_NONE = 0xFFFFFFFF;
constexpr UINT ILC_MASK = 0x0001;
constexpr UINT ILC_COLOR32 = 0x0020;
constexpr UINT ILD_NORMAL = 0x0000;
constexpr UINT ILD_TRANSPARENT = 0x0001;

// --- Questions --------------------------------------------------------------------------------

// The record of a pen, brush, font or bitmap: how many bytes it has, or 0.
BRCORE8_API int GetObjectA(HGDIOBJ object, int size, void* out) noexcept;
// Pixels an inch (LOGPIXELSX, LOGPIXELSY); 0 for other questions.
BRCORE8_API int GetDeviceCaps(HDC context, int index) noexcept;
BRCORE8_API HGDIOBJ GetCurrentObject(HDC context, UINT kind) noexcept;
BRCORE8_API COLORREF GetTextColor(HDC context) noexcept;
BRCORE8_API COLORREF GetBkColor(HDC context) noexcept;
BRCORE8_API int GetBkMode(HDC context) noexcept;
BRCORE8_API BOOL GetCurrentPositionEx(HDC context, POINT* point) noexcept;
BRCORE8_API BOOL GetViewportOrgEx(HDC context, POINT* point) noexcept;
BRCORE8_API BOOL OffsetViewportOrgEx(HDC context, int dx, int dy, POINT* old) noexcept;

// --- Shapes -----------------------------------------------------------------------------------

BRCORE8_API BOOL Polyline(HDC context, const POINT* points, int count) noexcept;
// PATCOPY, DSTINVERT, BLACKNESS or WHITENESS; others fail.
BRCORE8_API BOOL PatBlt(HDC context, int x, int y, int width, int height, DWORD operation) noexcept;
// SRCCOPY alone; each pixel is the nearest one of the source.
BRCORE8_API BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX,
                            int fromY, int fromWidth, int fromHeight, DWORD operation) noexcept;
BRCORE8_API BOOL DrawIcon(HDC context, int x, int y, HICON icon) noexcept;

// --- Regions: sets of pixels ------------------------------------------------------------------

BRCORE8_API HRGN CreateRectRgn(int left, int top, int right, int bottom) noexcept;
BRCORE8_API HRGN CreateRectRgnIndirect(const RECT* rect) noexcept;
BRCORE8_API HRGN CreateEllipticRgn(int left, int top, int right, int bottom) noexcept;
BRCORE8_API BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom) noexcept;
// NULLREGION, SIMPLEREGION or COMPLEXREGION; 0 for what is no region.
BRCORE8_API int CombineRgn(HRGN to, HRGN a, HRGN b, int operation) noexcept;
BRCORE8_API int OffsetRgn(HRGN region, int dx, int dy) noexcept;
BRCORE8_API int GetRgnBox(HRGN region, RECT* box) noexcept;
BRCORE8_API BOOL PtInRegion(HRGN region, int x, int y) noexcept;
BRCORE8_API BOOL RectInRegion(HRGN region, const RECT* rect) noexcept;
BRCORE8_API BOOL EqualRgn(HRGN a, HRGN b) noexcept;
BRCORE8_API BOOL FillRgn(HDC context, HRGN region, HBRUSH brush) noexcept;
// Only this is painted, as far as it is visible; null is all that is visible.
BRCORE8_API int SelectClipRgn(HDC context, HRGN region) noexcept;
BRCORE8_API BOOL RectVisible(HDC context, const RECT* rect) noexcept;
BRCORE8_API BOOL PtVisible(HDC context, int x, int y) noexcept;

// --- What is missing --------------------------------------------------------------------------

BRCORE8_API HBRUSH CreateHatchBrush(int hatch, COLORREF color) noexcept;
BRCORE8_API HBRUSH CreatePatternBrush(HBITMAP bitmap) noexcept;
BRCORE8_API HPALETTE CreatePalette(const LOGPALETTE* info) noexcept;
BRCORE8_API UINT GetPaletteEntries(HPALETTE palette, UINT first, UINT count,
                                   PALETTEENTRY* entries) noexcept;
BRCORE8_API UINT SetPaletteEntries(HPALETTE palette, UINT first, UINT count,
                                   const PALETTEENTRY* entries) noexcept;
BRCORE8_API UINT GetNearestPaletteIndex(HPALETTE palette, COLORREF color) noexcept;
BRCORE8_API BOOL ResizePalette(HPALETTE palette, UINT count) noexcept;
BRCORE8_API HPALETTE SelectPalette(HDC context, HPALETTE palette, BOOL background) noexcept;
BRCORE8_API UINT RealizePalette(HDC context) noexcept;
BRCORE8_API HDC CreateEnhMetaFileA(HDC like, const char* file, const RECT* frame,
                                   const char* description) noexcept;
BRCORE8_API HENHMETAFILE CloseEnhMetaFile(HDC context) noexcept;
BRCORE8_API BOOL PlayEnhMetaFile(HDC context, HENHMETAFILE picture, const RECT* place) noexcept;
BRCORE8_API BOOL DeleteEnhMetaFile(HENHMETAFILE picture) noexcept;

// --- Image lists: pictures of one size, counted from 0 ------------------------------------------

BRCORE8_API HIMAGELIST ImageList_Create(int width, int height, UINT flags, int initial,
                                        int grow) noexcept;
BRCORE8_API BOOL ImageList_Destroy(HIMAGELIST list) noexcept;
BRCORE8_API int ImageList_GetImageCount(HIMAGELIST list) noexcept;
BRCORE8_API BOOL ImageList_GetIconSize(HIMAGELIST list, int* width, int* height) noexcept;
// As many images as fit side by side into the bitmap, which stays the caller's; where the mask is
// white, or the colour is the given one, they are transparent. The first's number, or -1.
BRCORE8_API int ImageList_Add(HIMAGELIST list, HBITMAP bitmap, HBITMAP mask) noexcept;
BRCORE8_API int ImageList_AddMasked(HIMAGELIST list, HBITMAP bitmap, COLORREF color) noexcept;
BRCORE8_API BOOL ImageList_Replace(HIMAGELIST list, int index, HBITMAP bitmap,
                                   HBITMAP mask) noexcept;
// -1 removes all.
BRCORE8_API BOOL ImageList_Remove(HIMAGELIST list, int index) noexcept;
// Under transparent pixels lies the background colour, or with CLR_NONE or ILD_TRANSPARENT what was
// there.
BRCORE8_API BOOL ImageList_Draw(HIMAGELIST list, int index, HDC context, int x, int y,
                                UINT flags) noexcept;
BRCORE8_API COLORREF ImageList_SetBkColor(HIMAGELIST list, COLORREF color) noexcept;
BRCORE8_API COLORREF ImageList_GetBkColor(HIMAGELIST list) noexcept;

#endif
