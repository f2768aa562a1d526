// Drawing: device contexts, the objects selected into them, and what they draw.
//
// Windows are drawn in memory; a display shows them. Where the part of the library that draws is
// not installed, there are no contexts: the calls that make one answer null.
//
// Threads: a context is used by the thread that made it. Errors: 0, null or -1.
#ifndef BRCORE8_PLATFORM_POSIX_DRAWING_CALLS_H
#define BRCORE8_PLATFORM_POSIX_DRAWING_CALLS_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/font_info.h>
#include <brcore8/platform/posix/window_types.h>

constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;
constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int SYSTEM_FONT = 13;
constexpr int DEFAULT_GUI_FONT = 17;
constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_NULL = 5;
constexpr unsigned SRCCOPY = 0x00CC0020;
constexpr unsigned SRCINVERT = 0x00660046;
constexpr unsigned DT_TOP = 0x0000;
constexpr unsigned DT_LEFT = 0x0000;
constexpr unsigned DT_CENTER = 0x0001;
constexpr unsigned DT_RIGHT = 0x0002;
constexpr unsigned DT_VCENTER = 0x0004;
constexpr unsigned DT_BOTTOM = 0x0008;
constexpr unsigned DT_WORDBREAK = 0x0010;
constexpr unsigned DT_SINGLELINE = 0x0020;
constexpr unsigned DT_EXPANDTABS = 0x0040;
constexpr unsigned DT_NOCLIP = 0x0100;
constexpr unsigned DT_CALCRECT = 0x0400;
constexpr unsigned DT_NOPREFIX = 0x0800;
constexpr unsigned DT_END_ELLIPSIS = 0x8000;
constexpr unsigned ETO_OPAQUE = 0x0002;
constexpr unsigned ETO_CLIPPED = 0x0004;
constexpr unsigned EDGE_RAISED = 0x0005;
constexpr unsigned EDGE_SUNKEN = 0x000A;
constexpr unsigned EDGE_ETCHED = 0x0006;
constexpr unsigned BDR_SUNKENOUTER = 0x0002;
constexpr unsigned BDR_RAISEDINNER = 0x0004;
constexpr unsigned BF_RECT = 0x000F;
constexpr unsigned CLR_INVALID = 0xFFFFFFFF;

// --- Contexts ---------------------------------------------------------------------------------

// For the client area; a null window is the screen, on which nothing may be drawn. Released, or
// the context stays.
BRCORE8_API HDC GetDC(HWND window) noexcept;
BRCORE8_API HDC GetWindowDC(HWND window) noexcept;
BRCORE8_API int ReleaseDC(HWND window, HDC context) noexcept;
// For what WM_PAINT is to paint; the background is erased first when that was asked for. EndPaint
// releases it.
BRCORE8_API HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BRCORE8_API BOOL EndPaint(HWND window, const PAINTSTRUCT* paint) noexcept;
// In memory, one pixel large until a bitmap is selected.
BRCORE8_API HDC CreateCompatibleDC(HDC like) noexcept;
BRCORE8_API BOOL DeleteDC(HDC context) noexcept;
BRCORE8_API HBITMAP CreateCompatibleBitmap(HDC like, int width, int height) noexcept;
BRCORE8_API int SaveDC(HDC context) noexcept;
BRCORE8_API BOOL RestoreDC(HDC context, int state) noexcept;
BRCORE8_API int IntersectClipRect(HDC context, int left, int top, int right, int bottom) noexcept;
BRCORE8_API int ExcludeClipRect(HDC context, int left, int top, int right, int bottom) noexcept;
BRCORE8_API int GetClipBox(HDC context, RECT* box) noexcept;
BRCORE8_API BOOL SetViewportOrgEx(HDC context, int x, int y, POINT* old) noexcept;

// --- Objects ----------------------------------------------------------------------------------

// The object of that kind that was selected before.
BRCORE8_API HGDIOBJ SelectObject(HDC context, HGDIOBJ object) noexcept;
BRCORE8_API HGDIOBJ GetStockObject(int which) noexcept;
BRCORE8_API HBRUSH CreateSolidBrush(COLORREF color) noexcept;
BRCORE8_API HBRUSH GetSysColorBrush(int index) noexcept;
BRCORE8_API HPEN CreatePen(int style, int width, COLORREF color) noexcept;
BRCORE8_API HFONT CreateFontIndirectA(const LOGFONTA* info) noexcept;
BRCORE8_API BOOL DeleteObject(HGDIOBJ object) noexcept;

// --- Shapes -----------------------------------------------------------------------------------

// A brush may be a system colour plus one.
BRCORE8_API int FillRect(HDC context, const RECT* rect, HBRUSH brush) noexcept;
BRCORE8_API int FrameRect(HDC context, const RECT* rect, HBRUSH brush) noexcept;
BRCORE8_API BOOL InvertRect(HDC context, const RECT* rect) noexcept;
BRCORE8_API BOOL Rectangle(HDC context, int left, int top, int right, int bottom) noexcept;
BRCORE8_API BOOL Ellipse(HDC context, int left, int top, int right, int bottom) noexcept;
BRCORE8_API BOOL MoveToEx(HDC context, int x, int y, POINT* old) noexcept;
// Up to the point, which stays unpainted.
BRCORE8_API BOOL LineTo(HDC context, int x, int y) noexcept;
BRCORE8_API COLORREF SetPixel(HDC context, int x, int y, COLORREF color) noexcept;
BRCORE8_API COLORREF GetPixel(HDC context, int x, int y) noexcept;
BRCORE8_API BOOL BitBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY,
                        DWORD operation) noexcept;
BRCORE8_API BOOL DrawEdge(HDC context, RECT* rect, UINT edge, UINT flags) noexcept;
BRCORE8_API BOOL DrawFocusRect(HDC context, const RECT* rect) noexcept;

// --- Text ---------------------------------------------------------------------------------------

BRCORE8_API COLORREF SetTextColor(HDC context, COLORREF color) noexcept;
BRCORE8_API COLORREF SetBkColor(HDC context, COLORREF color) noexcept;
BRCORE8_API int SetBkMode(HDC context, int mode) noexcept;
BRCORE8_API BOOL TextOutA(HDC context, int x, int y, const char* text, int length) noexcept;
BRCORE8_API BOOL ExtTextOutA(HDC context, int x, int y, UINT options, const RECT* rect,
                             const char* text, UINT length, const int* widths) noexcept;
// The height of the text; with DT_CALCRECT the rectangle becomes as large and nothing is drawn. An
// ampersand underlines the next character unless DT_NOPREFIX is given. DT_WORDBREAK breaks lines
// between words to fit the rectangle; DT_EXPANDTABS puts tabs at every eighth average character.
BRCORE8_API int DrawTextA(HDC context, const char* text, int length, RECT* rect,
                          UINT format) noexcept;
BRCORE8_API BOOL GetTextExtentPoint32A(HDC context, const char* text, int length,
                                       SIZE* size) noexcept;
BRCORE8_API BOOL GetTextMetricsA(HDC context, TEXTMETRICA* metrics) noexcept;

#endif
