// Owners of the drawing objects that are made of a few numbers: pens, brushes, regions, palettes.
// Each Create puts a new object in the place of the one held and answers 1; it answers 0, and
// changes nothing, when the platform refuses.
//
//     SPen pen(PS_SOLID, 1, RGB(255, 0, 0));
//     const SSelected selected(dc, pen);
//
// Threads and ownership: as SGdiObject.
#ifndef BRCORE8_GRAPHICS_DRAWING_OBJECTS_H
#define BRCORE8_GRAPHICS_DRAWING_OBJECTS_H

#include <brcore8/graphics/gdi_object.h>
#include <brcore8/platform/windows.h>

// What outlines are drawn with.
class BRCORE8_API SPen : public SGdiObject {
    SDECLARE_CREATABLE(SPen);

    SPen() noexcept = default;
    SPen(int style, int width, COLORREF color) { CreatePen(style, width, color); }

    int CreatePen(int style, int width, COLORREF color) {
        return Take(::CreatePen(style, width, color));
    }
    // 0 when none is held.
    int GetLogPen(LOGPEN* info) const {
        return !IsNull() && ::GetObjectA(GetHandle(), sizeof *info, info) != 0;
    }
};

// What areas are filled with.
class BRCORE8_API SBrush : public SGdiObject {
    SDECLARE_CREATABLE(SBrush);

    SBrush() noexcept = default;
    explicit SBrush(COLORREF color) { CreateSolidBrush(color); }

    int CreateSolidBrush(COLORREF color) { return Take(::CreateSolidBrush(color)); }
    // A colour of the system, as it is now.
    int CreateSysColorBrush(int index) { return CreateSolidBrush(::GetSysColor(index)); }
    int CreateHatchBrush(int hatch, COLORREF color) {
        return Take(::CreateHatchBrush(hatch, color));
    }
    int CreatePatternBrush(const SGdiObject& bitmap) {
        return Take(::CreatePatternBrush(static_cast<HBITMAP>(bitmap.GetHandle())));
    }
    int GetLogBrush(LOGBRUSH* info) const {
        return !IsNull() && ::GetObjectA(GetHandle(), sizeof *info, info) != 0;
    }
};

// A set of pixels. The operations with the platform's names answer as it does: NULLREGION,
// SIMPLEREGION or COMPLEXREGION, and 0 when there is no region.
class BRCORE8_API SRgn : public SGdiObject {
    SDECLARE_CREATABLE(SRgn);

    SRgn() noexcept = default;
    explicit SRgn(const RECT& rect) { CreateRectRgn(rect); }

    int CreateRectRgn(const RECT& rect) { return Take(::CreateRectRgnIndirect(&rect)); }
    int CreateEllipticRgn(const RECT& rect) {
        return Take(::CreateEllipticRgn(rect.left, rect.top, rect.right, rect.bottom));
    }
    HRGN GetRgn() const noexcept { return static_cast<HRGN>(GetHandle()); }

    // Becomes what `operation` (RGN_AND, ...) makes of the two; this one may be one of them.
    int CombineRgn(const SRgn& a, const SRgn& b, int operation) {
        return ::CombineRgn(GetRgn(), a.GetRgn(), b.GetRgn(), operation);
    }
    int CopyRgn(const SRgn& other) {
        return ::CombineRgn(GetRgn(), other.GetRgn(), nullptr, RGN_COPY);
    }
    BOOL SetRectRgn(const RECT& rect) {
        return ::SetRectRgn(GetRgn(), rect.left, rect.top, rect.right, rect.bottom);
    }
    int OffsetRgn(int dx, int dy) { return ::OffsetRgn(GetRgn(), dx, dy); }
    int GetRgnBox(RECT* box) const { return ::GetRgnBox(GetRgn(), box); }
    BOOL EqualRgn(const SRgn& other) const { return ::EqualRgn(GetRgn(), other.GetRgn()); }
    BOOL PtInRegion(int x, int y) const { return ::PtInRegion(GetRgn(), x, y); }
    BOOL RectInRegion(const RECT& rect) const { return ::RectInRegion(GetRgn(), &rect); }
};

// The colours of a device that has few.
class BRCORE8_API SPalette : public SGdiObject {
    SDECLARE_CREATABLE(SPalette);

    SPalette() noexcept = default;

    int CreatePalette(const LOGPALETTE* info) { return Take(::CreatePalette(info)); }
    HPALETTE GetPalette() const noexcept { return static_cast<HPALETTE>(GetHandle()); }
    // How many entries were had or set.
    UINT GetPaletteEntries(UINT first, UINT count, PALETTEENTRY* entries) const {
        return ::GetPaletteEntries(GetPalette(), first, count, entries);
    }
    UINT SetPaletteEntries(UINT first, UINT count, const PALETTEENTRY* entries) {
        return ::SetPaletteEntries(GetPalette(), first, count, entries);
    }
    UINT GetNearestPaletteIndex(COLORREF color) const {
        return ::GetNearestPaletteIndex(GetPalette(), color);
    }
    BOOL ResizePalette(UINT count) { return ::ResizePalette(GetPalette(), count); }
};

#endif
