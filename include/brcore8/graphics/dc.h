// SDC: the wrapper of a device context, in which windows and pictures are drawn.
//
//     SDC memory;
//     memory.CreateCompatibleDC(&screen);
//     SGdiObject* const old = memory.SelectObject(&picture);
//     memory.FillSolidRect(box, RGB(255, 255, 255));
//     memory.DrawText("Hello", box, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
//     memory.SelectObject(old);
//
// The operations that bear the platform's names are the platform's calls for this context, with
// their results; wrappers stand in the place of handles, null for null. An object that is returned
// is a wrapper that may be temporary.
//
// Threads: the one that runs the user interface.
// Ownership: CreateCompatibleDC's context is this wrapper's, which gives it back at its end; any
// other belongs to whom it came from. A selected object must outlive its selection.
#ifndef BRCORE8_GRAPHICS_DC_H
#define BRCORE8_GRAPHICS_DC_H

#include <brcore8/graphics/gdi_object.h>
#include <brcore8/platform/windows.h>

#include <string_view>

class BRCORE8_API SDC : public SObject {
    SDECLARE_CLASS(SDC);

    SDC() noexcept = default;
    SDC(const SDC&) = delete;
    SDC& operator=(const SDC&) = delete;
    ~SDC() override;

    // --- Handles, as SWnd's ---------------------------------------------------------------------

    HDC GetHandle() const noexcept { return brcore8::LiveHandle(handle_); }
    static SDC* FromHandle(HDC handle);
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();
    int Attach(HDC handle);
    HDC Detach();

    // A context in memory, one pixel large until a bitmap is selected: 1 or 0. This wrapper has
    // none yet.
    int CreateCompatibleDC(const SDC* like);
    // Gives the context back. 0 when there is none.
    int DeleteDC();

    // --- What is selected -----------------------------------------------------------------------

    int SaveDC() { return ::SaveDC(handle_); }
    BOOL RestoreDC(int state = -1) { return ::RestoreDC(handle_, state); }
    // The object of that kind that was selected before; null for a null object.
    HGDIOBJ SelectObject(HGDIOBJ object) {
        return object != nullptr ? ::SelectObject(handle_, object) : nullptr;
    }
    SGdiObject* SelectObject(const SGdiObject* object) {
        return SGdiObject::FromHandle(
            SelectObject(object != nullptr ? object->GetHandle() : nullptr));
    }
    SGdiObject* SelectStockObject(int which) {
        return SGdiObject::FromHandle(SelectObject(::GetStockObject(which)));
    }
    // Of the kind OBJ_PEN, OBJ_BRUSH, OBJ_FONT or OBJ_BITMAP.
    SGdiObject* GetCurrentObject(UINT kind) const {
        return SGdiObject::FromHandle(::GetCurrentObject(handle_, kind));
    }
    SGdiObject* SelectPalette(const SGdiObject* palette, BOOL background = 0) {
        return SGdiObject::FromHandle(
            ::SelectPalette(handle_, static_cast<HPALETTE>(HandleOf(palette)), background));
    }
    UINT RealizePalette() { return ::RealizePalette(handle_); }
    int GetDeviceCaps(int index) const { return ::GetDeviceCaps(handle_, index); }

    // --- Coordinates and clip -------------------------------------------------------------------

    BOOL GetViewportOrg(POINT* point) const { return ::GetViewportOrgEx(handle_, point); }
    BOOL SetViewportOrg(int x, int y, POINT* old = nullptr) {
        return ::SetViewportOrgEx(handle_, x, y, old);
    }
    BOOL OffsetViewportOrg(int dx, int dy, POINT* old = nullptr) {
        return ::OffsetViewportOrgEx(handle_, dx, dy, old);
    }
    int GetClipBox(RECT* box) const { return ::GetClipBox(handle_, box); }
    int IntersectClipRect(const RECT& rect) {
        return ::IntersectClipRect(handle_, rect.left, rect.top, rect.right, rect.bottom);
    }
    int ExcludeClipRect(const RECT& rect) {
        return ::ExcludeClipRect(handle_, rect.left, rect.top, rect.right, rect.bottom);
    }
    // Null is everything that is visible.
    int SelectClipRgn(const SGdiObject* region) {
        return ::SelectClipRgn(handle_, static_cast<HRGN>(HandleOf(region)));
    }
    BOOL RectVisible(const RECT& rect) const { return ::RectVisible(handle_, &rect); }
    BOOL PtVisible(int x, int y) const { return ::PtVisible(handle_, x, y); }

    // --- Areas
    // ------------------------------------------------------------------------------------

    int FillRect(const RECT& rect, const SGdiObject* brush) {
        return ::FillRect(handle_, &rect, static_cast<HBRUSH>(HandleOf(brush)));
    }
    int FrameRect(const RECT& rect, const SGdiObject* brush) {
        return ::FrameRect(handle_, &rect, static_cast<HBRUSH>(HandleOf(brush)));
    }
    BOOL InvertRect(const RECT& rect) { return ::InvertRect(handle_, &rect); }
    // In that colour, without a brush; the background colour stays.
    void FillSolidRect(const RECT& rect, COLORREF color);
    void FrameSolidRect(const RECT& rect, COLORREF color);
    // A line around it, light at the left and top, dark at the right and bottom.
    void Draw3dRect(const RECT& rect, COLORREF leftTop, COLORREF rightBottom);
    BOOL FillRgn(const SGdiObject* region, const SGdiObject* brush) {
        return ::FillRgn(handle_, static_cast<HRGN>(HandleOf(region)),
                         static_cast<HBRUSH>(HandleOf(brush)));
    }
    BOOL Rectangle(const RECT& rect) {
        return ::Rectangle(handle_, rect.left, rect.top, rect.right, rect.bottom);
    }
    BOOL Ellipse(const RECT& rect) {
        return ::Ellipse(handle_, rect.left, rect.top, rect.right, rect.bottom);
    }
    BOOL PatBlt(int x, int y, int width, int height, DWORD operation) {
        return ::PatBlt(handle_, x, y, width, height, operation);
    }
    BOOL BitBlt(int x, int y, int width, int height, const SDC& from, int fromX, int fromY,
                DWORD operation = SRCCOPY) {
        return ::BitBlt(handle_, x, y, width, height, from.handle_, fromX, fromY, operation);
    }
    BOOL StretchBlt(const RECT& to, const SDC& from, const RECT& part, DWORD operation = SRCCOPY) {
        return ::StretchBlt(handle_, to.left, to.top, to.right - to.left, to.bottom - to.top,
                            from.handle_, part.left, part.top, part.right - part.left,
                            part.bottom - part.top, operation);
    }
    BOOL DrawEdge(RECT* rect, UINT edge, UINT flags) {
        return ::DrawEdge(handle_, rect, edge, flags);
    }
    BOOL DrawFocusRect(const RECT& rect) { return ::DrawFocusRect(handle_, &rect); }
    BOOL DrawIcon(int x, int y, HICON icon) { return ::DrawIcon(handle_, x, y, icon); }

    // --- Lines and points
    // -------------------------------------------------------------------------

    BOOL MoveTo(int x, int y, POINT* old = nullptr) { return ::MoveToEx(handle_, x, y, old); }
    BOOL LineTo(int x, int y) { return ::LineTo(handle_, x, y); }
    BOOL GetCurrentPosition(POINT* point) const { return ::GetCurrentPositionEx(handle_, point); }
    BOOL Polyline(const POINT* points, int count) { return ::Polyline(handle_, points, count); }
    COLORREF SetPixel(int x, int y, COLORREF color) { return ::SetPixel(handle_, x, y, color); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(handle_, x, y); }

    // --- Text
    // -------------------------------------------------------------------------------------

    COLORREF SetTextColor(COLORREF color) { return ::SetTextColor(handle_, color); }
    COLORREF GetTextColor() const { return ::GetTextColor(handle_); }
    COLORREF SetBkColor(COLORREF color) { return ::SetBkColor(handle_, color); }
    COLORREF GetBkColor() const { return ::GetBkColor(handle_); }
    int SetBkMode(int mode) { return ::SetBkMode(handle_, mode); }
    int GetBkMode() const { return ::GetBkMode(handle_); }
    BOOL TextOut(int x, int y, std::string_view text) {
        return ::TextOutA(handle_, x, y, text.data(), static_cast<int>(text.size()));
    }
    BOOL ExtTextOut(int x, int y, UINT options, const RECT* rect, std::string_view text) {
        return ::ExtTextOutA(handle_, x, y, options, rect, text.data(),
                             static_cast<UINT>(text.size()), nullptr);
    }
    // With DT_CALCRECT the rectangle becomes as large as the text.
    int DrawText(std::string_view text, RECT& rect, UINT format) {
        return ::DrawTextA(handle_, text.data(), static_cast<int>(text.size()), &rect, format);
    }
    // Zero where the platform refuses.
    SIZE GetTextExtent(std::string_view text) const;
    BOOL GetTextMetrics(TEXTMETRICA* metrics) const { return ::GetTextMetricsA(handle_, metrics); }

protected:
    static HGDIOBJ HandleOf(const SGdiObject* object) noexcept {
        return object != nullptr ? object->GetHandle() : nullptr;
    }

private:
    template <class>
    friend class brcore8::WrapperMap;

    HDC handle_ = nullptr;
    bool isOwn_ = false;  // CreateCompatibleDC's
};

// Selects an object while it lives, and puts the one before back.
class SSelected {
public:
    SSelected(SDC& dc, HGDIOBJ object) : dc_(dc), old_(dc.SelectObject(object)) {}
    SSelected(SDC& dc, const SGdiObject& object) : SSelected(dc, object.GetHandle()) {}
    SSelected(const SSelected&) = delete;
    SSelected& operator=(const SSelected&) = delete;
    ~SSelected() { dc_.SelectObject(old_); }

private:
    SDC& dc_;
    HGDIOBJ old_;
};

#endif
