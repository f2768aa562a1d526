// Fonts and the screen without a window system. Any thread.
#ifndef BRCORE8_PLATFORM_POSIX_FONTS_H
#define BRCORE8_PLATFORM_POSIX_FONTS_H

#include <brcore8/platform/font_info.h>
#include <brcore8/platform/types.h>

struct HWND__;
using HWND = HWND__*;
struct HDC__;
using HDC = HDC__*;
struct HFONT__;
using HFONT = HFONT__*;

constexpr int LOGPIXELSY = 90;
constexpr int FW_NORMAL = 400;
constexpr int FW_BOLD = 700;

// A font that keeps its description for GetObjectA; null without memory.
HFONT CreateFontIndirectA(const LOGFONTA* info) noexcept;

// There is no screen to ask, so its context is null and its pixels per inch are 96.
HDC GetDC(HWND window) noexcept;
int ReleaseDC(HWND window, HDC context) noexcept;
int GetDeviceCaps(HDC context, int index) noexcept;

// number * numerator / denominator, rounded to the nearest, halves away from zero; -1 when that
// is no 32-bit number.
int MulDiv(int number, int numerator, int denominator) noexcept;

#endif
